#include <string>

#include "entry/failure_report.h"
#include "format/error_codes.h"
#include "generate/generate_data_file.h"
#include "generate/repeat_count.h"
#include "korvex/korvex.h"
#include "platform/user_interface.h"

namespace {

using namespace korvex;

constexpr std::int32_t cannot_run = -1;

// The host is C: whatever happens inside, it gets a number.
template <typename Work>
std::int32_t guarded(Work work) noexcept {
  try {
    return work();
  } catch (...) {
    return error::out_of_memory;
  }
}

std::string path_of(const char* path) { return path != nullptr ? path : ""; }

std::int32_t report_unavailable(const char* function) {
  return guarded([function] {
    platform::user_interface().show_message(
        platform::MessageKind::stop, std::string(function) + " is not available in this build.");
    return cannot_run;
  });
}

}  // namespace

int32_t DGCreateFile(const char*, void*, int32_t) { return report_unavailable("DGCreateFile"); }

int32_t DGCreateFormat(const char*, void*, int32_t) { return report_unavailable("DGCreateFormat"); }

int32_t DGReplaceData(const char*, void*) { return report_unavailable("DGReplaceData"); }

int32_t DGCheckRepeatCnt(const char* control_file_path) {
  return guarded([&] {
    ClRepeatCalcMain calculation;
    calculation.main.control_path = path_of(control_file_path);
    calculation.main.set_run_mode(run_mode::settings_only);
    return calculation.run() == 1 ? 0 : cannot_run;
  });
}

int32_t DGCreateData(const char* control_file_path, int32_t output_option, void* parent,
                     uint64_t repeat_item_count) {
  return guarded([&] {
    ClGenerateDataFile generator;
    generator.main.control_path = path_of(control_file_path);
    generator.output_option = output_option;
    generator.parent = parent;
    generator.repeat_item_count = repeat_item_count;
    const std::int32_t result = guarded([&] { return generator.run(); });
    return result < 0 ? report_failure(result, generator.main) : result;
  });
}
