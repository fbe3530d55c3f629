// Each file call of each operation fails in turn, in every way and for every length of time.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>

#include "reliability/operations.h"
#include "support/faulty_file_calls.h"

namespace korvex::test {
namespace {

using Files = std::map<std::string, std::string>;

constexpr int error_numbers[] = {EIO, ENOSPC, EDQUOT, EINTR, EACCES, Fault::short_write};
constexpr FaultSpan spans[] = {FaultSpan::once, FaultSpan::same_kind, FaultSpan::everything};

bool is_disk_full(int error_number) { return error_number == ENOSPC || error_number == EDQUOT; }

// Calls that are tried again when a signal comes in between.
bool may_be_interrupted(std::string_view kind) {
  constexpr std::string_view kinds[] = {"open",  "read",  "write",    "close",
                                        "flock", "fsync", "ftruncate"};
  return std::find(std::begin(kinds), std::end(kinds), kind) != std::end(kinds);
}

// Short, where the bytes themselves would fill pages.
std::string describe(const Files& files) {
  std::string text;
  for (const auto& [name, bytes] : files) {
    text += name + ": " + std::to_string(bytes.size()) + " bytes\n";
  }
  return text;
}

template <typename List, typename Value>
bool holds(const List& list, const Value& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

std::size_t open_descriptors() {
  namespace fs = std::filesystem;
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

class FaultTest : public testing::TestWithParam<Operation> {
 protected:
  struct Outcome {
    std::int32_t code = 0;
    Files before;
    Files after;
    std::vector<std::string_view> calls;
    std::string_view kind;        // of the call that met the fault
    bool removal_failed = false;  // what was to be removed had to stay
  };

  Outcome attempt(const Fault& fault) const {
    Place place(operation.crosses_file_systems);
    Outcome outcome;
    const std::size_t descriptors = open_descriptors();
    {
      const auto run = operation.prepare(place);
      outcome.before = place.files();
      const FaultyFileCalls calls(fault);
      outcome.code = run();
      outcome.calls = calls.calls();
      outcome.kind = calls.kind_of_fault();
      outcome.removal_failed = calls.failed_in("unlink") || fault.span == FaultSpan::everything;
    }
    EXPECT_EQ(open_descriptors(), descriptors);
    outcome.after = place.files();
    return outcome;
  }

  // What must hold whatever happened: each file has its old or its new bytes, whole; only success
  // has made it new.
  void expect_nothing_lost(const Outcome& outcome, const Files& finished) const {
    if (outcome.code == operation.success && !outcome.removal_failed) {
      EXPECT_TRUE(outcome.after == finished) << describe(outcome.after);
      return;
    }
    for (const auto& [name, bytes] : outcome.after) {
      const auto old = outcome.before.find(name);
      const auto fresh = finished.find(name);
      const bool is_old = old != outcome.before.end() && old->second == bytes;
      const bool is_new = fresh != finished.end() && fresh->second == bytes;
      const bool may_be_new = outcome.code == operation.success || holds(operation.may_stay, name);
      const bool is_left_over =
          outcome.removal_failed && (old == outcome.before.end() || holds(operation.may_go, name));
      EXPECT_TRUE(is_old || (is_new && may_be_new) || is_left_over ||
                  name == operation.may_be_partial)
          << name << " has " << bytes.size() << " bytes";
    }
    for (const auto& [name, bytes] : outcome.before) {
      EXPECT_TRUE(outcome.after.contains(name) || holds(operation.may_go, name)) << name;
    }
  }

  void expect_code(const Outcome& outcome, const Fault& fault) const {
    const std::int32_t write_code =
        is_disk_full(fault.error_number) ? operation.disk_full : operation.write_failed;
    const bool is_harmless = fault.error_number == Fault::short_write ||
                             (fault.error_number == EINTR && fault.span == FaultSpan::once &&
                              may_be_interrupted(outcome.kind));
    if (is_harmless) {
      EXPECT_EQ(outcome.code, operation.success);
    } else if (outcome.kind == "write") {
      EXPECT_EQ(outcome.code, write_code);
    } else {
      EXPECT_TRUE(outcome.code == operation.success || outcome.code == write_code ||
                  holds(operation.codes, outcome.code))
          << outcome.code;
    }
  }

  const Operation& operation = GetParam();
};

TEST_P(FaultTest, LeavesOldOrNew) {
  if (operation.crosses_file_systems && !Place(true).crosses_file_systems()) {
    GTEST_SKIP() << "no second file system";
  }
  const Outcome finished = attempt({});
  ASSERT_EQ(finished.code, operation.success);
  int cases = 0;
  for (const int error_number : error_numbers) {
    for (const FaultSpan span : spans) {
      if (error_number == Fault::short_write && span == FaultSpan::everything) continue;
      for (std::size_t i = 0; i < finished.calls.size(); ++i) {
        if (error_number == Fault::short_write && finished.calls[i] != "write") continue;
        const Fault fault = {static_cast<int>(i) + 1, error_number, span};
        SCOPED_TRACE(testing::Message()
                     << "call " << fault.call << ", " << finished.calls[i] << ", errno "
                     << error_number << ", span " << static_cast<int>(span));
        const Outcome outcome = attempt(fault);
        expect_code(outcome, fault);
        expect_nothing_lost(outcome, finished.after);
        ++cases;
      }
    }
  }
  EXPECT_GT(cases, 0);
  std::printf("%s: %zu calls, %d cases\n", operation.name.c_str(), finished.calls.size(), cases);
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, testing::ValuesIn(operations()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace korvex::test
