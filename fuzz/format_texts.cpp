// A format with its values, from the texts that a person types: a line of numbers (attribute, sign,
// length, digits, decimals, layout kind), then the format, the start, end and increment texts, a
// line each.
#include <cstddef>
#include <sstream>
#include <string>

#include "formatlang/default_settings.h"
#include "run.h"
#include "settings/fmt_file.h"
#include "support/table.h"

namespace korvex::fuzz {
namespace {

constexpr std::int32_t records = 120;

struct Entry {
  ItemAttributes item;
  LayoutKind layout_kind{};
  RangeTexts texts;
};

Entry read_entry(std::string input) {
  std::istringstream lines(std::move(input));
  std::string numbers;
  std::getline(lines, numbers);
  std::vector<std::int32_t> more = test::numbers(numbers);
  more.resize(6);
  Entry entry = {test::item_of(numbers), LayoutKind{more[5]}, {}};
  for (std::string* text :
       {&entry.texts.format, &entry.texts.start, &entry.texts.end, &entry.texts.increment}) {
    std::getline(lines, *text);
  }
  return entry;
}

// Whether the settings file could be written with the entry's values.
bool save(const Entry& entry) {
  ClFmtFile file;
  file.set_paths(settings_path, work_folder);
  if (!file.load(SettingsLevel{1}, StoredRecords{records}, entry.layout_kind)) return false;
  file.edited().texts = entry.texts;
  if (file.check_and_store(ItemNumber{1}, entry.item) != error::none) return false;
  require(file.save(quotation::double_mark) == error::none, "what was accepted can be saved");
  return true;
}

// What the settings file shows of the item.
RangeTexts load(const Entry& entry) {
  ClFmtFile file;
  file.set_paths(settings_path, work_folder);
  require(file.load(SettingsLevel{1}, StoredRecords{records}, entry.layout_kind) == 1,
          "what was saved can be loaded");
  require(file.read_item(ItemNumber{1}) == true, "the item has its settings");
  return file.edited().texts;
}

}  // namespace
}  // namespace korvex::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvex;
  using namespace korvex::fuzz;
  const Entry entry = read_entry({reinterpret_cast<const char*>(data), size});
  static_cast<void>(default_settings(entry.item));
  World world;
  if (!save(entry)) return 0;
  load(entry);
  const ErrorCode result = generate(world, {.records = records, .layout_kind = entry.layout_kind});
  require(result == error::none, "what was accepted can be generated");
  return 0;
}
