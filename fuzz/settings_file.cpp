// A settings file of either version: a byte of choices, then the file. It is shown,
// loaded, generated from, counted and saved; what was saved reads back the same.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <string>

#include "host/commands/show.h"
#include "korvex/control_file.h"
#include "run.h"
#include "run/repeat_count.h"
#include "values/record_text.h"

namespace korvex::fuzz {
namespace {

constexpr std::int32_t records = 60;
constexpr std::size_t most_items = 40;
constexpr std::size_t most_bytes = 64 * 1024;

struct Choices {
  SettingsLevel level;
  OutputOption output_option;
  int cancel_at_poll;
  bool takes_items_twice;
  bool changes_layout;

  explicit Choices(unsigned bits)
      : level(static_cast<SettingsLevel>(bits & 3u)),
        output_option((bits & 4u) != 0 ? OutputOption::guarded : OutputOption::plain),
        cancel_at_poll((bits & 8u) != 0 ? records / 2 : 0),
        takes_items_twice((bits & 16u) != 0),
        changes_layout((bits & 32u) != 0) {}
};

Result<std::size_t> load(ClFmtFile& file, SettingsLevel level, LayoutKind layout_kind) {
  file.set_paths(settings_path, work_folder);
  return file.load(level, StoredRecords{records}, layout_kind);
}

// The items as the settings know them, so that the control file fits.
std::vector<korvex_control_item> read_items(ClFmtFile& file) {
  std::vector<korvex_control_item> items;
  for (const auto& column : file.current_level()->columns) {
    if (items.size() == most_items) break;
    require(file.read_item(column->record.item_number) == true, "an item that is there is found");
    korvex_control_item item = {};
    item.item_number = number_of(column->record.item_number);
    item.attribute = number_of(column->record.attribute);
    item.signed_flag = number_of(column->record.signed_flag);
    item.length = column->record.length;
    item.digits = column->record.digits;
    item.decimals = column->record.decimals;
    item.null_allowed = 1;
    items.push_back(item);
  }
  return items;
}

// Loads the file, saves it and loads it again: the same items with the same bytes. Answers the
// items.
std::vector<korvex_control_item> save_and_compare(World& world, SettingsLevel level,
                                                  LayoutKind layout_kind) {
  std::vector<korvex_control_item> items;
  {
    ClFmtFile file;
    const Result<std::size_t> loaded = load(file, level, layout_kind);
    if (!loaded || *loaded == 0) return {};
    items = read_items(file);
    const std::string before = world.files.get(settings_path);
    if (file.save(file.quotation()) != error::none) {
      require(world.files.get(settings_path) == before, "a failed save changes nothing");
      return items;
    }
  }
  const std::string saved = world.files.get(settings_path);
  {
    ClFmtFile file;
    require(load(file, level, layout_kind).code() == error::none, "what was saved can be loaded");
    if (!file.current_level()->has_settings()) return items;
    require(file.save(file.quotation()) == error::none, "what was saved can be saved again");
  }
  require(world.files.get(settings_path) == saved, "saving again changes nothing");
  return items;
}

void count_repeats(World& world, const RunRequest& request,
                   const std::vector<korvex_control_item>& items) {
  put_control_file(world, request, items.size(), bytes_of(items));
  ClRepeatCalcMain calculation;
  calculation.main.control_path = control_path;
  calculation.main.set_run_mode(run_mode::settings_only);
  calculation.run();
}

void run(std::string_view bytes, const Choices& choices) {
  std::ostringstream shown;
  if (host::is_settings_file(bytes)) host::print_settings_file(bytes, shown);

  World world;
  world.files.put(settings_path, bytes);
  world.files.put(list_path, "1\n22\n\n333\n");
  LayoutKind layout_kind{};
  if (bytes.size() >= sizeof(FmtHeadRec)) {
    std::memcpy(&layout_kind, bytes.data() + offsetof(FmtHeadRec, layout_kind), sizeof layout_kind);
  }
  if (choices.changes_layout) layout_kind = LayoutKind{number_of(layout_kind) ^ 1};

  const std::vector<korvex_control_item> items =
      save_and_compare(world, choices.level, layout_kind);
  RunRequest request;
  request.records = records;
  request.layout_kind = layout_kind;
  request.level = choices.level;
  request.output_option = choices.output_option;
  request.cancel_at_poll = choices.cancel_at_poll;
  request.items = {};
  for (const korvex_control_item& item : items) {
    request.items.push_back(ItemNumber{item.item_number});
    if (choices.takes_items_twice) request.items.push_back(ItemNumber{item.item_number});
  }
  generate(world, request);
  count_repeats(world, request, items);
}

}  // namespace
}  // namespace korvex::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > korvex::fuzz::most_bytes) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  korvex::fuzz::run(input.substr(1), korvex::fuzz::Choices(data[0]));
  return 0;
}
