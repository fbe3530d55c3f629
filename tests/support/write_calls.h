#pragma once

#include <cerrno>
#include <cstdint>

#include "platform/file_calls.h"

namespace korvex::test {

// While it lives, writing to a file fails with the error number or, with 0, succeeds without
// storing anything. One at a time.
class WriteCalls {
 public:
  explicit WriteCalls(int error_number) : override_(table()) {
    error_number_ = error_number;
    bytes_ = 0;
  }

  std::uint64_t bytes() const { return bytes_; }

 private:
  static const platform::FileCalls& table() {
    static const platform::FileCalls calls = [] {
      platform::FileCalls replaced = platform::system_file_calls();
      replaced.write = [](int, const void*, size_t size) -> ssize_t {
        errno = error_number_;
        if (error_number_ != 0) return -1;
        bytes_ += size;
        return static_cast<ssize_t>(size);
      };
      replaced.write_to_device = replaced.write;
      return replaced;
    }();
    return calls;
  }

  static inline int error_number_ = 0;
  static inline std::uint64_t bytes_ = 0;

  platform::FileCallsOverride override_;
};

}  // namespace korvex::test
