#include "platform/process.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/file.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::platform {
namespace {

// While it lives, the standard input is the descriptor.
class StandardInput {
 public:
  explicit StandardInput(int descriptor) {
    ::dup2(descriptor, STDIN_FILENO);
    ::close(descriptor);
  }
  ~StandardInput() {
    ::dup2(saved_, STDIN_FILENO);
    ::close(saved_);
  }

 private:
  int saved_ = ::dup(STDIN_FILENO);
};

int no_terminal() { return ::open("/dev/null", O_RDONLY); }

TEST(Process, HandsThePathToTheEditorAsOneArgument) {
  const test::TempFolder folder;
  const test::ScopedVariable editor("KORVEX_EDITOR", "touch");
  const StandardInput input(no_terminal());
  const std::string path = folder.file("a b; touch c");
  ASSERT_FALSE(run_editor(path, EditorWait::on_terminal));
  while (::wait(nullptr) > 0) continue;
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a b; touch c"});
  const test::ScopedVariable missing("KORVEX_EDITOR", folder.file("no editor"));
  EXPECT_TRUE(run_editor(path, EditorWait::never));
  EXPECT_EQ(editor_command("a"), folder.file("no editor") + " \"a\"");
}

// An editor of the terminal needs it for itself; any other may stay open as long as it likes, and
// a window never waits.
TEST(Process, WaitsForTheEditorOnATerminal) {
  const test::TempFolder folder;
  const std::string script = folder.file("editor");
  test::write_file(script, "#!/bin/sh\nwhile [ ! -e \"$1\" ]; do sleep 0.01; done\n");
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  const test::ScopedVariable editor("KORVEX_EDITOR", script);
  const std::string path = folder.file("closed");
  const auto expect_no_wait = [&](EditorWait wait) {
    ASSERT_FALSE(run_editor(path, wait));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), 0) << "still open";
    test::write_file(path, "");
    EXPECT_GT(::wait(nullptr), 0);
  };
  {
    const StandardInput input(no_terminal());
    expect_no_wait(EditorWait::on_terminal);
  }
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (::grantpt(terminal) != 0 || ::unlockpt(terminal) != 0) GTEST_SKIP() << "no terminal here";
  const StandardInput input(::open(::ptsname(terminal), O_RDWR | O_NOCTTY));
  ASSERT_FALSE(run_editor(path, EditorWait::on_terminal));
  EXPECT_EQ(::wait(nullptr), -1) << "no child is left";
  std::filesystem::remove(path);
  expect_no_wait(EditorWait::never);
  ::close(terminal);
}

}  // namespace
}  // namespace korvex::platform
