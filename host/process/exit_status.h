#pragma once

namespace korvex::host {

// What the program tells its caller.
namespace exit_status {
inline constexpr int done = 0;
inline constexpr int failed = 1;       // the module, a database, or a file that was to be shown
inline constexpr int wrong_usage = 2;  // command line or layout
inline constexpr int cancelled = 130;
}  // namespace exit_status

}  // namespace korvex::host
