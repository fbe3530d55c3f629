#include <ostream>

#include "host/commands/commands.h"
#include "host/commands/common_options.h"
#include "host/engine/control_writer.h"
#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/layout/failure_text.h"
#include "host/process/exit_status.h"
#include "host/process/scratch_folder.h"
#include "host/process/signals.h"
#include "host/records/module_count.h"
#include "platform/printable_text.h"
#include "run/generate_data_file.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace {

ExitStatus print_exact_size(const Layout& layout, std::ostream& out, std::ostream& messages) {
  TemporaryControlFile control_file;
  ClGenerateDataFile generator;
  const auto measure = [&]() -> Result<ByteCount> {
    const ErrorCode code = control_file.write(layout, ControlForm::short_form);
    if (code != error::none) return code;
    generator.main.control_path = control_file.path();
    return generator.measure();
  };
  const Result<ByteCount> bytes = measure();
  if (!bytes) {
    check_interruption();
    if (bytes.code() == error::cancelled) return ExitStatus::cancelled;
    messages << failure_text(bytes.code(), generator.main, generator.bad_line) << "\n";
    return ExitStatus::failed;
  }
  out << "Records to generate: " << layout.records.number() << "\n"
      << "Exact file size:     " << decimal_text(*bytes) << " bytes" << std::endl;
  return ExitStatus::done;
}

ExitStatus count(const Layout& layout, bool has_repeats, CheckRepeatCount check, std::ostream& out,
                 std::ostream& messages) {
  TemporaryControlFile control_file;
  if (const ErrorCode code = control_file.write(layout, ControlForm::long_form);
      code != error::none) {
    messages << platform::printable(layout.work) << ": " << numbered_message(code, layout) << "\n";
    return ExitStatus::failed;
  }
  const std::int32_t verdict = check(control_file.path().c_str());
  check_interruption();
  if (verdict == 0) {
    if (const auto counted = module_count(layout, has_repeats)) {
      out << "Data items:          " << counted->data_items << "\n"
          << "Predicted size:      " << predicted_size_text(*counted) << "\n";
    }
  }
  out << "DGCheckRepeatCnt:    " << verdict
      << (verdict == 0 ? " (the settings can be evaluated)" : " (the settings cannot be evaluated)")
      << std::endl;
  return verdict == 0 ? print_exact_size(layout, out, messages) : ExitStatus::failed;
}

}  // namespace

ExitStatus run_count(const CountOptions& options, CheckRepeatCount check, std::ostream& out,
                     std::ostream& messages) {
  const LayoutReading reading =
      read_module_layout(options.layout, options.records, MissingLists::refused);
  if (print_layout_errors(reading, messages)) return ExitStatus::wrong_usage;
  print_warnings(reading.layout, messages);
  choose_interface(options.window);
  const ScratchFolder scratch;
  const std::optional<Layout> layout = copy_layout(reading.layout, scratch, messages);
  if (!layout) return ExitStatus::failed;
  const SettingsResult settings = write_settings_of(*layout);
  if (print_failures(settings, reading.layout, messages)) return ExitStatus::failed;
  return count(*layout, settings.repeated_items > 0, check, out, messages);
}

}  // namespace korvex::host
