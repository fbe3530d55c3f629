#include <exception>
#include <iostream>

#include "host/exit_status.h"
#include "host/interruption.h"
#include "host/program.h"
#include "korvex/korvex.h"

int main(int argc, char** argv) {
  korvex::host::watch_interruptions();
  try {
    constexpr korvex::host::ModuleFunctions functions = {.create_data = DGCreateData,
                                                         .check_repeat_count = DGCheckRepeatCnt,
                                                         .create_file = DGCreateFile,
                                                         .create_format = DGCreateFormat,
                                                         .replace_data = DGReplaceData};
    return korvex::host::run_program(argc, argv, functions, std::cout, std::cerr);
  } catch (const std::exception& failure) {
    std::cerr << "korvex: " << failure.what() << std::endl;
    return korvex::host::exit_status::failed;
  }
}
