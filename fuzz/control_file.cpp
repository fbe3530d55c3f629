// A control file, as each of the five functions reads it: shown, loaded in every run mode, counted
// and generated from, with settings for its first items in place.
#include "korvex/control_file.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <string>

#include "control/reconcile.h"
#include "entry/failure_report.h"
#include "host/commands/show.h"
#include "run.h"
#include "run/generate_data_file.h"
#include "run/repeat_count.h"
#include "values/record_text.h"

namespace korvex::fuzz {
namespace {

constexpr std::int32_t most_records = 200;
constexpr std::size_t most_items = 8;

// Takes the header's places for the world's, so that its settings are found, and keeps the run
// short; everything else stays as it is.
std::string anchor(std::string_view input) {
  std::string bytes(input);
  if (bytes.size() < sizeof(korvex_control_header)) return bytes;
  korvex_control_header header;
  std::memcpy(&header, bytes.data(), sizeof header);
  header.records = std::min(header.records, most_records);
  if (header.settings_path[0] == '\0') store_field(header.settings_path, settings_path);
  if (header.work_folder[0] == '\0') store_field(header.work_folder, work_folder);
  if (header.data_path[0] == '\0') store_field(header.data_path, data_path);
  std::memcpy(bytes.data(), &header, sizeof header);
  return bytes;
}

void load_in_mode(RunMode mode) {
  ClColMain main;
  main.control_path = control_path;
  main.set_run_mode(mode);
  const ErrorCode result = main.load();
  require(result == error::none || result == error::cannot_open || result == error::cannot_read,
          "loading ends in one of its codes");
  require(main.offending_names().size() <= 128, "the names end at their limit");
  if (result != error::none) return;
  main.select_item(main.items.size() - 1);
  main.build_default_settings();
  if (mode != run_mode::generator) static_cast<void>(reconcile(main));
}

// Gives the first items what their attributes propose.
void put_settings(World& world) {
  ClColMain main;
  main.control_path = control_path;
  main.set_run_mode(run_mode::settings_only);
  if (main.load() != error::none) return;
  ClFmtFile file;
  file.set_paths(settings_path, work_folder);
  if (!file.load(main.level(), main.records(), main.layout_kind())) return;
  for (std::size_t i = 0; i < std::min(most_items, main.items.size()); ++i) {
    ClDGCol& item = *main.select_item(static_cast<std::int32_t>(i));
    if (main.build_default_settings()) {
      file.edited().texts = main.default_texts;
      file.check_and_store(item.item_number, item.attributes());
    } else {
      file.set_initial_value(item.item_number, item.attributes());
    }
  }
  file.save(quotation::double_mark);
  require(file.is_held() || world.files.open_descriptors() == 0, "a save lets go of the file");
}

void generate_and_report() {
  ClGenerateDataFile generator;
  generator.main.control_path = control_path;
  const ErrorCode result = generator.run();
  if (result != error::none) report_failure(result, generator.main);
}

void run(std::string_view input) {
  std::ostringstream shown;
  if (host::is_control_file(input)) host::print_control_file(input, shown);
  if (host::is_log_file(input)) host::print_log_file(input, shown);

  World world;
  world.files.put(control_path, anchor(input));
  for (const RunMode mode :
       {run_mode::data_file_dialog, run_mode::settings_only, run_mode::generator}) {
    load_in_mode(mode);
  }
  put_settings(world);
  load_in_mode(run_mode::settings_only);
  ClRepeatCalcMain calculation;
  calculation.main.control_path = control_path;
  calculation.main.set_run_mode(run_mode::settings_only);
  calculation.run();
  generate_and_report();
}

}  // namespace
}  // namespace korvex::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  korvex::fuzz::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
