#include <cerrno>
#include <string>

#include "entry/desktop_interface.h"
#include "entry/failure_report.h"
#include "korvex/korvex.h"
#include "platform/file.h"
#include "platform/printable_text.h"
#include "platform/quiet_write.h"
#include "platform/user_interface.h"
#include "run/generate_data_file.h"
#include "run/repeat_count.h"
#include "values/error_codes.h"

namespace {

using namespace korvex;

constexpr std::int32_t cannot_run = -1;
constexpr std::int32_t out_of_memory = number_of(error::out_of_memory);

// The host is C: whatever happens inside, it gets a number.
template <typename Work, typename Answer>
Answer guarded(Work work, Answer on_failure) noexcept {
  try {
    return work();
  } catch (...) {
    return on_failure;
  }
}

std::string path_of(const char* path) { return path != nullptr ? path : ""; }

// Whoever loads the library gets its choice of interface.
[[maybe_unused]] const bool is_provided = [] {
  platform::set_interface_provider(choose_interface);
  return true;
}();

template <typename Run>
std::int32_t run_dialog(const char* function, Run run) {
  return guarded(
      [&] {
        std::string reason;
        const korvex_dialogs* desktop = open_desktop(reason);
        if (desktop != nullptr) return run(*desktop);
        platform::print_error(std::string(function) +
                              " cannot show its window: " + platform::printable(reason) + "\n");
        return cannot_run;
      },
      out_of_memory);
}

std::int32_t run_data_generation(const char* function, const char* path, void* parent, RunMode mode,
                                 std::int32_t quotation_lock) {
  return run_dialog(function, [&](const korvex_dialogs& desktop) {
    return desktop.run_data_generation(path_of(path).c_str(), parent, number_of(mode),
                                       quotation_lock);
  });
}

}  // namespace

int32_t DGCreateFile(const char* control_file_path, void* parent, int32_t quotation_lock) {
  return run_data_generation("DGCreateFile", control_file_path, parent, run_mode::data_file_dialog,
                             quotation_lock);
}

int32_t DGCreateFormat(const char* control_file_path, void* parent, int32_t quotation_lock) {
  return run_data_generation("DGCreateFormat", control_file_path, parent, run_mode::settings_only,
                             quotation_lock);
}

int32_t DGReplaceData(const char* control_file_path, void* parent) {
  return run_dialog("DGReplaceData", [&](const korvex_dialogs& desktop) {
    return desktop.run_item_value_update(path_of(control_file_path).c_str(), parent);
  });
}

int32_t DGCheckRepeatCnt(const char* control_file_path) {
  return guarded(
      [&] {
        ClRepeatCalcMain calculation;
        calculation.main.control_path = path_of(control_file_path);
        calculation.main.set_run_mode(run_mode::settings_only);
        return calculation.run() ? 0 : cannot_run;
      },
      out_of_memory);
}

int32_t DGCreateData(const char* control_file_path, int32_t output_option, void* parent,
                     uint64_t repeat_item_count) {
  int reason = 0;
  const std::int32_t answer = guarded(
      [&] {
        ClGenerateDataFile generator;
        generator.main.control_path = path_of(control_file_path);
        generator.output_option = OutputOption{output_option};
        generator.parent = parent;
        generator.repeat_item_count = repeat_item_count;
        const ErrorCode result = guarded([&] { return generator.run(); }, error::out_of_memory);
        reason = platform::last_file_error();
        return result != error::none ? report_failure(result, generator.main) : 0;
      },
      out_of_memory);
  errno = reason;
  return answer;
}
