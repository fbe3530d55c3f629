#include <ostream>

#include "host/commands/commands.h"
#include "host/commands/common_options.h"
#include "host/layout/failure_text.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/module_count.h"
#include "host/records/prepared_layout.h"
#include "platform/printable_text.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace {

// What the module says of the layout's settings, and what it counts.
ExitStatus print_verdict(const Layout& layout, bool has_repeats, CheckRepeatCount check,
                         std::ostream& out, std::ostream& messages) {
  TemporaryControlFile control_file;
  if (const ErrorCode code = control_file.write(layout, ControlForm::long_form);
      code != error::none) {
    messages << platform::printable(layout.work) << ": " << numbered_message(code, layout) << "\n";
    return ExitStatus::failed;
  }
  const std::int32_t verdict = check(control_file.path().c_str());
  check_interruption();
  if (verdict == 0) {
    if (const auto count = module_count(layout, has_repeats)) {
      out << "Data items:          " << count->data_items << "\n"
          << "Predicted size:      " << predicted_size_text(*count) << "\n";
    }
  }
  out << "DGCheckRepeatCnt:    " << verdict
      << (verdict == 0 ? " (the settings can be evaluated)" : " (the settings cannot be evaluated)")
      << std::endl;
  return verdict == 0 ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus print_exact_size(PreparedLayout& prepared, std::ostream& out, std::ostream& messages) {
  const Layout& layout = prepared.layout();
  const Result<ByteCount> bytes = prepared.run().measure(layout.records);
  if (!bytes) {
    check_interruption();
    if (bytes.code() == error::cancelled) return ExitStatus::cancelled;
    messages << prepared.message_of(bytes.code()) << "\n";
    return ExitStatus::failed;
  }
  out << "Records to generate: " << layout.records.number() << "\n"
      << "Exact file size:     " << decimal_text(*bytes) << " bytes" << std::endl;
  return ExitStatus::done;
}

}  // namespace

ExitStatus run_count(const CountOptions& options, CheckRepeatCount check, std::ostream& out,
                     std::ostream& messages) {
  choose_interface(options.window);
  PreparedLayout prepared;
  const auto ask_module = [&](const Layout& copy, const SettingsResult& settings) {
    return print_verdict(copy, settings.repeated_items > 0, check, out, messages);
  };
  const ExitStatus status =
      prepared.prepare(options.layout, options.records, messages,
                       {.made_by = MadeBy::module_at_once, .look_at_settings = ask_module});
  return status == ExitStatus::done ? print_exact_size(prepared, out, messages) : status;
}

}  // namespace korvex::host
