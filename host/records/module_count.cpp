#include "host/records/module_count.h"

#include "host/engine/control_writer.h"

namespace korvex::host {

std::optional<RepeatCount> module_count(const Layout& copy, bool has_repeats) {
  TemporaryControlFile control_file;
  if (control_file.write(copy, ControlForm::long_form) != error::none) return std::nullopt;
  ClColMain main;
  main.control_path = control_file.path();
  main.set_run_mode(run_mode::settings_only);
  return count_control_file(main, has_repeats);
}

std::string predicted_size_text(const RepeatCount& count) {
  if (count.predicted_bytes == too_large) return "too large (above CheckFileSizeMax)";
  return std::to_string(count.predicted_bytes) + " bytes (data items x item lengths)";
}

}  // namespace korvex::host
