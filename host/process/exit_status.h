#pragma once

#include <algorithm>

namespace korvex::host {

// What the program tells its caller. A signal that ended it makes a status of its own.
enum class ExitStatus : int {
  done = 0,
  failed = 1,       // the module, a database, or a file that was to be shown
  wrong_usage = 2,  // command line or layout
  first_signal = 129,
  cancelled = 130,  // by the user; also the status of the signal of Ctrl-C
};

// As shells count.
constexpr ExitStatus status_of_signal(int signal) { return ExitStatus{128 + signal}; }

// The status of several things that were done in a row. What ended the program stands, whatever
// came before or after it; else the worse one does.
constexpr ExitStatus worst_of(ExitStatus first, ExitStatus second) {
  return first >= ExitStatus::first_signal ? first : std::max(first, second);
}

}  // namespace korvex::host
