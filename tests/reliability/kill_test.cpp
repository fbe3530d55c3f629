// A process that is killed before each of its file calls, or in the middle of a write.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>

#include "reliability/operations.h"
#include "support/faulty_file_calls.h"

namespace korvex::test {
namespace {

// How the operation's process ends: at which call, and after which short write, if any.
struct Death {
  int call = 0;
  Fault fault;
};

// Runs the operation in a process of its own, which is killed on the way. Whether it was.
bool run_and_die(const Operation& operation, Place& place, const Death& death) {
  const pid_t child = ::fork();
  if (child == 0) {
    const auto run = operation.prepare(place);
    FaultyFileCalls calls(death.fault);
    calls.before_each([&](int number) {
      if (number == death.call) ::raise(SIGKILL);
    });
    run();
    ::_exit(0);
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFSIGNALED(status) &&
         WTERMSIG(status) == SIGKILL;
}

bool is_temporary(const std::string& name) {
  return name == "temporary" || name.ends_with(".w") || name.ends_with(".new") ||
         name.ends_with(".lock");
}

Files without_temporaries(Files files) {
  std::erase_if(files, [](const auto& file) { return is_temporary(file.first); });
  return files;
}

struct Undisturbed {
  Files before;
  Files after;
  std::vector<std::string_view> calls;
};

Undisturbed run_undisturbed(const Operation& operation, Place& place) {
  Undisturbed result;
  const auto run = operation.prepare(place);
  result.before = without_temporaries(place.files());
  const FaultyFileCalls calls;
  EXPECT_EQ(run(), operation.success);
  result.calls = calls.calls();
  result.after = without_temporaries(place.files());
  return result;
}

class KillTest : public testing::TestWithParam<Operation> {
 protected:
  void expect_no_harm(const Undisturbed& expected, const Death& death) const {
    Place place(operation.crosses_file_systems);
    ASSERT_TRUE(run_and_die(operation, place, death));
    const Files left = without_temporaries(place.files());
    EXPECT_TRUE(left == expected.before || left == expected.after);
    // What is left over does no harm to the next run.
    EXPECT_TRUE(run_undisturbed(operation, place).after == expected.after);
  }

  const Operation& operation = GetParam();
};

TEST_P(KillTest, LeavesOldOrNew) {
  if (operation.crosses_file_systems && !Place(true).crosses_file_systems()) {
    GTEST_SKIP() << "no second file system";
  }
  Place first_place(operation.crosses_file_systems);
  const Undisturbed expected = run_undisturbed(operation, first_place);
  int cases = 0;
  for (std::size_t i = 0; i < expected.calls.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "call " << i + 1 << ", " << expected.calls[i]);
    const int call = static_cast<int>(i) + 1;
    expect_no_harm(expected, {call, {}});
    ++cases;
    if (expected.calls[i] == "write") {
      expect_no_harm(expected, {call + 1, {call, Fault::short_write, FaultSpan::once}});
      ++cases;
    }
  }
  std::printf("%s: killed %d times\n", operation.name.c_str(), cases);
}

std::vector<Operation> replacing_operations() {
  std::vector<Operation> chosen;
  std::copy_if(operations().begin(), operations().end(), std::back_inserter(chosen),
               [](const Operation& operation) { return operation.replaces_in_one_step; });
  return chosen;
}

INSTANTIATE_TEST_SUITE_P(Operations, KillTest, testing::ValuesIn(replacing_operations()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace korvex::test
