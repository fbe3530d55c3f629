#pragma once

#include <cerrno>

namespace korvex::platform {

// A call interrupted this many times in a row is a failure: no run may hang on it.
inline constexpr int max_interruptions = 100;

// Makes a system call again when a signal came in between.
template <typename Call>
auto retry_interrupted(Call call) {
  auto result = call();
  for (int i = 0; result < 0 && errno == EINTR && i < max_interruptions; ++i) result = call();
  return result;
}

}  // namespace korvex::platform
