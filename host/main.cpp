#include <exception>
#include <iostream>

#include "host/commands/program.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "korvex/korvex.h"
#include "platform/printable_text.h"

int main(int argc, char** argv) {
  korvex::host::watch_interruptions();
  try {
    constexpr korvex::host::ModuleFunctions functions = {.create_data = DGCreateData,
                                                         .check_repeat_count = DGCheckRepeatCnt,
                                                         .create_file = DGCreateFile,
                                                         .create_format = DGCreateFormat,
                                                         .replace_data = DGReplaceData};
    const korvex::host::ExitStatus status =
        korvex::host::run_program(argc, argv, functions, std::cout, std::cerr);
    const bool is_done = status == korvex::host::ExitStatus::done;
    const bool is_printed = !std::cout.flush().fail();
    // What failed then may have failed for it.
    if (!is_done || !is_printed) korvex::host::check_interruption();
    if (!is_done || is_printed) return static_cast<int>(status);
    std::cerr << "standard output: cannot be written" << std::endl;
    return static_cast<int>(korvex::host::ExitStatus::failed);
  } catch (const korvex::host::Interrupted& interrupted) {
    return static_cast<int>(korvex::host::status_of_signal(interrupted.signal));
  } catch (const std::exception& failure) {
    std::cerr << "korvex: " << korvex::platform::printable_lines(failure.what()) << std::endl;
    return static_cast<int>(korvex::host::ExitStatus::failed);
  }
}
