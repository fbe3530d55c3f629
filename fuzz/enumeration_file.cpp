// A value list: a line of numbers (attribute, sign, length, digits, decimals, layout kind,
// end-exceeded action), then the list. Checking and loading it agree, and it is generated from.
#include <algorithm>
#include <cstddef>
#include <string>

#include "lists/enumeration_check.h"
#include "run.h"
#include "support/table.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex::fuzz {
namespace {

constexpr std::int32_t records = 100;
constexpr const char* report_path = "list.txt.err";

struct Entry {
  ItemAttributes item;
  LayoutKind layout_kind{};
  ExceededAction exceeded_action{};
};

Entry read_entry(const std::string& line) {
  std::vector<std::int32_t> more = test::numbers(line);
  more.resize(7);
  return {test::item_of(line), LayoutKind{more[5]}, ExceededAction{more[6]}};
}

FmtColRec settings_of(const Entry& entry) {
  FmtColRec settings = {};
  settings.item_number = ItemNumber{1};
  settings.attribute = entry.item.attribute;
  settings.signed_flag = entry.item.signed_flag;
  settings.length = entry.item.length;
  settings.digits = entry.item.digits;
  settings.decimals = entry.item.decimals;
  return settings;
}

// Whether the list is good, as far as both ways of reading it say.
bool check_and_load(const World& world, const Entry& entry) {
  const FmtColRec settings = settings_of(entry);
  ClColMain main;
  ListLine bad_line = ListLine::none;
  const Result<std::size_t> checked = check_enumeration(main, list_path, settings, bad_line);
  require(!world.files.exists(report_path), "a check writes no report");
  ClEnumDataList values;
  const Result<std::size_t> loaded = load_enumeration(main, list_path, settings, values);
  const bool is_bad = loaded.code() == error::enumeration_bad_lines;
  require(is_bad ? !checked && bad_line != ListLine::none : checked == loaded,
          "check and load agree");
  require(world.files.exists(report_path) == is_bad, "a report stands for bad lines");
  if (loaded) require(values.count() == *loaded, "as many values as counted");
  return loaded.code() == error::none;
}

void save_settings(const Entry& entry) {
  ClFmtFile file;
  file.set_paths(settings_path, work_folder);
  require(file.load(SettingsLevel{1}, StoredRecords{records}, entry.layout_kind) == 0,
          "there are no settings yet");
  require(file.set_initial_value(ItemNumber{1}, entry.item) == error::none,
          "the item gets settings");
  FmtColRec& settings = file.find_column(ItemNumber{1})->record;
  settings.generation_type = generation_type::enumeration;
  settings.exceeded_action = entry.exceeded_action;
  store_field(settings.enumeration_path, list_path);
  require(file.save(quotation::double_mark) == error::none, "settings can be saved");
}

}  // namespace
}  // namespace korvex::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvex;
  using namespace korvex::fuzz;
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t end_of_numbers = std::min(input.find('\n'), input.size());
  const Entry entry = read_entry(input.substr(0, end_of_numbers));
  World world;
  world.files.put(list_path, std::string_view(input).substr(std::min(end_of_numbers + 1, size)));
  const bool is_good = check_and_load(world, entry);
  save_settings(entry);
  const ErrorCode result = generate(world, {.records = records, .layout_kind = entry.layout_kind});
  require((result == error::none) == is_good,
          "a good list can be generated from, a bad one cannot");
  return 0;
}
