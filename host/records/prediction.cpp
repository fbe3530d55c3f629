#include "host/records/prediction.h"

#include "format/reconcile.h"

namespace korvex::host {

std::optional<RepeatCount> predict(const std::string& control_path, bool has_repeats) {
  ClColMain main;
  main.control_path = control_path;
  main.set_run_mode(run_mode::settings_only);
  if (main.load() != 0 || reconcile(main) <= 0 || main.mismatch) return std::nullopt;
  RepeatCount count;
  if (count_data_items(main, has_repeats, count) != 0) return std::nullopt;
  return count;
}

std::string predicted_size_text(const RepeatCount& count) {
  if (count.predicted_bytes == too_large) return "too large (above CheckFileSizeMax)";
  return std::to_string(count.predicted_bytes) + " bytes (data items x item lengths)";
}

}  // namespace korvex::host
