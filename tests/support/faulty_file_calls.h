#pragma once

#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/file_calls.h"

namespace korvex::test {

// How long a fault lasts.
enum class FaultSpan {
  once,        // the one call
  same_kind,   // it and every later call of its kind
  everything,  // it and every later call
};

// What happens to the n-th file call, or to the n-th of a kind, counted from 1; none with 0.
struct Fault {
  static constexpr int short_write = 0;  // in place of an error number: half is written

  int call = 0;
  int error_number = 0;
  FaultSpan span = FaultSpan::once;
  std::string_view kind = "";  // "open", "write", …; empty for calls of every kind
};

// The name of a kind of call, as an argument of a template.
template <std::size_t Size>
struct CallName {
  char text[Size];
  constexpr CallName(const char (&name)[Size]) { std::copy_n(name, Size, text); }
  constexpr std::string_view view() const { return {text, Size - 1}; }
};

// While it lives, file calls go to the system, are written down by the name of their kind, and meet
// the fault. One at a time.
class FaultyFileCalls {
 public:
  explicit FaultyFileCalls(const Fault& fault = {}) : override_(table) {
    state = {};
    state.fault = fault;
  }

  // Called before each call with its number.
  void before_each(std::function<void(int)> visit) { state.before_each = std::move(visit); }

  // The kinds of all calls so far: "open", "write", …
  const std::vector<std::string_view>& calls() const { return state.calls; }

  // Whether a call of the kind has failed.
  bool failed_in(std::string_view kind) const {
    return std::find(state.failed.begin(), state.failed.end(), kind) != state.failed.end();
  }

  // Which kind of call met the fault first; empty when none did.
  std::string_view kind_of_fault() const { return state.failed.empty() ? "" : state.failed[0]; }

 private:
  struct State {
    Fault fault;
    std::vector<std::string_view> calls;
    std::vector<std::string_view> failed;
    std::function<void(int)> before_each;
  };
  static inline State state;

  static bool meets_fault(std::string_view kind) {
    state.calls.push_back(kind);
    int number = static_cast<int>(state.calls.size());
    if (state.before_each) state.before_each(number);
    const Fault& fault = state.fault;
    if (!fault.kind.empty()) {
      if (kind != fault.kind) return false;
      number = static_cast<int>(std::ranges::count(state.calls, kind));
    }
    if (fault.call == 0 || number < fault.call) return false;
    const auto first = static_cast<std::size_t>(fault.call - 1);
    const bool is_met =
        number == fault.call || fault.span == FaultSpan::everything ||
        (fault.span == FaultSpan::same_kind && (kind == fault.kind || kind == state.calls[first]));
    if (is_met) state.failed.push_back(kind);
    return is_met;
  }

  using Calls = platform::FileCalls;

  template <auto Member, CallName Kind>
  struct Wrapped {
    template <typename... Arguments>
    static auto call(Arguments... arguments) -> decltype((Calls().*Member)(arguments...)) {
      const auto system = platform::system_file_calls().*Member;
      if (!meets_fault(Kind.view())) return system(arguments...);
      if constexpr (Kind.view() == "write") {
        if (state.fault.error_number == Fault::short_write) return write_half(arguments...);
      }
      // The system closes a descriptor also when it reports a failure.
      if constexpr (Kind.view() == "close") system(arguments...);
      errno = state.fault.error_number;
      return -1;
    }
  };

  static ssize_t write_half(int descriptor, const void* data, size_t size) {
    return platform::system_file_calls().write(descriptor, data, (size + 1) / 2);
  }

  static constexpr Calls table = {
      .open = Wrapped<&Calls::open, "open">::call,
      .close = Wrapped<&Calls::close, "close">::call,
      .read = Wrapped<&Calls::read, "read">::call,
      .write = Wrapped<&Calls::write, "write">::call,
      .write_to_device = Wrapped<&Calls::write_to_device, "write">::call,
      .lseek = Wrapped<&Calls::lseek, "lseek">::call,
      .fstat = Wrapped<&Calls::fstat, "fstat">::call,
      .lstat = Wrapped<&Calls::lstat, "lstat">::call,
      .fstatat = Wrapped<&Calls::fstatat, "fstatat">::call,
      .fchmod = Wrapped<&Calls::fchmod, "fchmod">::call,
      .fchown = Wrapped<&Calls::fchown, "fchown">::call,
      .ftruncate = Wrapped<&Calls::ftruncate, "ftruncate">::call,
      .fsync = Wrapped<&Calls::fsync, "fsync">::call,
      .flock = Wrapped<&Calls::flock, "flock">::call,
      .rename = Wrapped<&Calls::rename, "rename">::call,
      .unlink = Wrapped<&Calls::unlink, "unlink">::call,
      .readlink = Wrapped<&Calls::readlink, "readlink">::call,
      .mkdir = Wrapped<&Calls::mkdir, "mkdir">::call,
      .fsetxattr = Wrapped<&Calls::fsetxattr, "fsetxattr">::call,
      .getxattr = Wrapped<&Calls::getxattr, "getxattr">::call,
  };

  platform::FileCallsOverride override_;
};

}  // namespace korvex::test
