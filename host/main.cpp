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
    const int status = korvex::host::run_program(argc, argv, functions, std::cout, std::cerr);
    const bool is_done = status == korvex::host::exit_status::done;
    const bool is_printed = !std::cout.flush().fail();
    // What failed then may have failed for it.
    if (!is_done || !is_printed) korvex::host::check_interruption();
    if (!is_done || is_printed) return status;
    std::cerr << "standard output: cannot be written" << std::endl;
    return korvex::host::exit_status::failed;
  } catch (const korvex::host::Interrupted& interrupted) {
    return interrupted.exit_status;
  } catch (const std::exception& failure) {
    std::cerr << "korvex: " << korvex::platform::printable_lines(failure.what()) << std::endl;
    return korvex::host::exit_status::failed;
  }
}
