#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <initializer_list>
#include <type_traits>

#include "platform/file_calls.h"

namespace korvex::test {

// What the wrapped calls of one FailingFileCalls share.
struct FileCallCount {
  int calls = 0;
  int failing = 0;
  const void* only = nullptr;  // the kind of call that counts, else every kind does
  int error_number = 0;
  bool failed_in_unlink = false;
  int writes = 0;
};
inline FileCallCount file_call_count;

template <auto Member>
inline constexpr char call_kind = 0;

template <auto Member>
struct WrappedCall;

template <typename Result, typename... Arguments,
          Result (*platform::FileCalls::*Member)(Arguments...)>
struct WrappedCall<Member> {
  template <auto Other>
  static constexpr bool is = std::is_same_v<WrappedCall, WrappedCall<Other>>;

  static Result call(Arguments... arguments) {
    FileCallCount& count = file_call_count;
    if (is<&platform::FileCalls::write>) ++count.writes;
    const bool counts = count.only == nullptr || count.only == &call_kind<Member>;
    if (!counts || ++count.calls != count.failing) {
      return (platform::system_file_calls().*Member)(arguments...);
    }
    // The system closes a descriptor also when it reports a failure.
    if (is<&platform::FileCalls::close>) (platform::system_file_calls().*Member)(arguments...);
    count.failed_in_unlink = is<&platform::FileCalls::unlink>;
    errno = count.error_number;
    if constexpr (std::is_pointer_v<Result>) {
      return nullptr;
    } else {
      return -1;
    }
  }
};

// While it lives, the n-th file call of whatever kind fails with the error number. n counts from 1;
// with 0 all calls succeed and are only counted; `only` counts the calls of one call_kind. One at a
// time.
class FailingFileCalls {
 public:
  FailingFileCalls(int n, int error_number, const void* only = nullptr) : override_(table) {
    file_call_count = {.failing = n, .only = only, .error_number = error_number};
  }

  bool failed() const { return file_call_count.calls >= file_call_count.failing; }
  bool failed_in_unlink() const { return file_call_count.failed_in_unlink; }
  int writes() const { return file_call_count.writes; }

 private:
  using Calls = platform::FileCalls;
  static constexpr Calls table = {
      .open = WrappedCall<&Calls::open>::call,
      .close = WrappedCall<&Calls::close>::call,
      .read = WrappedCall<&Calls::read>::call,
      .write = WrappedCall<&Calls::write>::call,
      .lseek = WrappedCall<&Calls::lseek>::call,
      .fstat = WrappedCall<&Calls::fstat>::call,
      .lstat = WrappedCall<&Calls::lstat>::call,
      .fchmod = WrappedCall<&Calls::fchmod>::call,
      .ftruncate = WrappedCall<&Calls::ftruncate>::call,
      .fsync = WrappedCall<&Calls::fsync>::call,
      .flock = WrappedCall<&Calls::flock>::call,
      .rename = WrappedCall<&Calls::rename>::call,
      .unlink = WrappedCall<&Calls::unlink>::call,
      .readlink = WrappedCall<&Calls::readlink>::call,
      .mkdir = WrappedCall<&Calls::mkdir>::call,
  };

  platform::FileCallsOverride override_;
};

// Runs `attempt` over and over, its first file call failing in the first run, its second in the
// second and so on, until a run makes fewer calls than that; this for each error number. `prepare`
// comes before each run and `check` behind it, with the outcome of the attempt, the error number
// and whether a removal was what failed, the one case in which a file may be left behind.
template <typename Prepare, typename Attempt, typename Check>
void with_each_call_failing(std::initializer_list<int> error_numbers, Prepare prepare,
                            Attempt attempt, Check check) {
  for (const int error_number : error_numbers) {
    bool failed = true;
    for (int n = 1; failed; ++n) {
      SCOPED_TRACE(testing::Message() << "call " << n << " with errno " << error_number);
      prepare();
      bool in_unlink = false;
      const auto outcome = [&] {
        const FailingFileCalls failing(n, error_number);
        const auto result = attempt();
        failed = failing.failed();
        in_unlink = failing.failed_in_unlink();
        return result;
      }();
      check(outcome, error_number, in_unlink);
    }
  }
}

}  // namespace korvex::test
