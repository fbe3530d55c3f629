// Each file call of each operation fails in turn, in every way and for every length of time, and
// each of them is a process's last.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "reliability/operations.h"
#include "support/faulty_file_calls.h"

namespace korvex::test {
namespace {

constexpr int error_numbers[] = {EIO, ENOSPC, EDQUOT, EINTR, EACCES, Fault::short_write};
constexpr FaultSpan spans[] = {FaultSpan::once, FaultSpan::same_kind, FaultSpan::everything};

// Calls that are made again when a signal comes in between.
bool may_be_interrupted(std::string_view kind) {
  constexpr std::string_view kinds[] = {"open",  "read",  "write",    "close",
                                        "flock", "fsync", "ftruncate"};
  return std::find(std::begin(kinds), std::end(kinds), kind) != std::end(kinds);
}

struct FaultOutcome : Outcome {
  std::vector<std::string_view> calls;
  std::string_view kind;  // of the call that met the fault
};

FaultOutcome attempt_in(Place& place, const Operation& operation, const Fault& fault = {}) {
  FaultOutcome outcome;
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

FaultOutcome attempt(const Operation& operation, const Fault& fault = {}) {
  Place place(operation.crosses_file_systems);
  return attempt_in(place, operation, fault);
}

void expect_code(const Operation& operation, const FaultOutcome& outcome, const Fault& fault) {
  const bool is_full = fault.error_number == ENOSPC || fault.error_number == EDQUOT;
  const std::int32_t write_code = is_full ? operation.disk_full : operation.write_failed;
  const bool is_harmless = fault.error_number == Fault::short_write ||
                           (fault.error_number == EINTR && fault.span == FaultSpan::once &&
                            may_be_interrupted(outcome.kind));
  if (is_harmless) {
    EXPECT_EQ(outcome.code, operation.success);
  } else if (outcome.kind == "write") {
    EXPECT_EQ(outcome.code, write_code);
  } else {
    const auto& codes = operation.codes;
    EXPECT_TRUE(outcome.code == operation.success || outcome.code == write_code ||
                std::find(codes.begin(), codes.end(), outcome.code) != codes.end())
        << outcome.code;
  }
}

// A file that takes another one's name must be on the disk by then, or a power cut takes both.
void expect_synchronised(const std::vector<std::string_view>& calls) {
  bool is_on_disk = false;
  for (const std::string_view call : calls) {
    if (call == "rename") {
      EXPECT_TRUE(is_on_disk);
    } else if (call == "write" || call == "fsync") {
      is_on_disk = call == "fsync";
    }
  }
}

class FaultTest : public testing::TestWithParam<Operation> {
 protected:
  void SetUp() override {
    if (operation.crosses_file_systems && !Place(true).crosses_file_systems()) {
      GTEST_SKIP() << "no second file system";
    }
    finished = attempt(operation);
    ASSERT_EQ(finished.code, operation.success);
  }

  const Operation& operation = GetParam();
  FaultOutcome finished;  // of an attempt without a fault
};

TEST_P(FaultTest, LeavesOldOrNew) {
  if (operation.replaces_in_one_step) expect_synchronised(finished.calls);
  int cases = 0;
  for (const int error_number : error_numbers) {
    for (const FaultSpan span : spans) {
      const bool is_short = error_number == Fault::short_write;
      if (is_short && span == FaultSpan::everything) continue;
      for (std::size_t i = 0; i < finished.calls.size(); ++i) {
        if (is_short && finished.calls[i] != "write") continue;
        const Fault fault = {static_cast<int>(i) + 1, error_number, span};
        SCOPED_TRACE(testing::Message()
                     << "call " << fault.call << ", " << finished.calls[i] << ", errno "
                     << error_number << ", span " << static_cast<int>(span));
        const FaultOutcome outcome = attempt(operation, fault);
        expect_code(operation, outcome, fault);
        expect_nothing_lost(operation, outcome, finished.after);
        ++cases;
      }
    }
  }
  EXPECT_GT(cases, 0);
  std::printf("%s: %zu calls, %d cases\n", operation.name.c_str(), finished.calls.size(), cases);
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, testing::ValuesIn(operations()),
                         [](const auto& row) { return row.param.name; });

// Runs the operation in a process of its own, which is killed at a call, after a short write if
// there is one. Whether it was.
bool run_and_die(const Operation& operation, Place& place, int call, const Fault& fault) {
  const pid_t child = ::fork();
  if (child == 0) {
    const auto run = operation.prepare(place);
    FaultyFileCalls calls(fault);
    calls.before_each([&](int number) {
      if (number == call) ::raise(SIGKILL);
    });
    run();
    ::_exit(0);
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFSIGNALED(status) &&
         WTERMSIG(status) == SIGKILL;
}

Files without_temporaries(Files files) {
  std::erase_if(files, [](const auto& file) {
    const std::string& name = file.first;
    return name == "temporary" || name.ends_with(".w") || name.ends_with(".new") ||
           name.ends_with(".lock");
  });
  return files;
}

class KillTest : public FaultTest {
 protected:
  void expect_no_harm(int call, const Fault& fault = {}) const {
    Place place(operation.crosses_file_systems);
    ASSERT_TRUE(run_and_die(operation, place, call, fault));
    const Files left = without_temporaries(place.files());
    const Files after = without_temporaries(finished.after);
    EXPECT_TRUE(left == without_temporaries(finished.before) || left == after);
    // What is left over does no harm to the next run.
    const FaultOutcome next = attempt_in(place, operation);
    EXPECT_EQ(next.code, operation.success);
    EXPECT_TRUE(without_temporaries(next.after) == after);
  }
};

TEST_P(KillTest, LeavesOldOrNew) {
  int cases = 0;
  for (std::size_t i = 0; i < finished.calls.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "call " << i + 1 << ", " << finished.calls[i]);
    const int call = static_cast<int>(i) + 1;
    expect_no_harm(call);
    ++cases;
    if (finished.calls[i] != "write") continue;
    expect_no_harm(call + 1, {call, Fault::short_write, FaultSpan::once});
    ++cases;
  }
  std::printf("%s: killed %d times\n", operation.name.c_str(), cases);
}

std::vector<Operation> replacing_operations() {
  std::vector<Operation> chosen = operations();
  std::erase_if(chosen, [](const Operation& each) { return !each.replaces_in_one_step; });
  return chosen;
}

INSTANTIATE_TEST_SUITE_P(Operations, KillTest, testing::ValuesIn(replacing_operations()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace korvex::test
