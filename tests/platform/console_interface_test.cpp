#include <signal.h>
#include <unistd.h>

#include "platform/interruption.h"
#include "platform/user_interface.h"
#include "support/bytes.h"
#include "support/environment.h"

namespace korvex::platform {
namespace {

using test::ScopedVariable;

// Captured standard error is no terminal, so nothing is asked. The bytes of the name are UTF-8 of
// another character, too.
TEST(ConsoleInterface, TheEnvironmentAnswersWithoutATerminal) {
  const std::pair<std::optional<std::string>, Answer> rows[] = {{"yes", Answer::yes},
                                                                {"no", Answer::no},
                                                                {"", Answer::no},
                                                                {"maybe", Answer::no},
                                                                {std::nullopt, Answer::no}};
  ConsoleInterface console;
  for (const auto& [prepared, answer] : rows) {
    const ScopedVariable variable("KORVEX_ANSWER", prepared);
    testing::internal::CaptureStderr();
    EXPECT_EQ(console.show_message(MessageKind::question, "?"), answer);
    EXPECT_EQ(console.show_message(MessageKind::warning_question, "?"), answer);
    EXPECT_EQ(console.show_message(MessageKind::stop, "9" + MessageText::code_page("\xC8\xBA") +
                                                          MessageText::path("/pä\x1B")),
              Answer::ok);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "?\n?\n9ﾈｺ/pä\\x1B\n");
  }
}

TEST(ConsoleInterface, AnInterruptDuringARunIsOneRequestToCancel) {
  struct sigaction before = {};
  ::signal(SIGINT, SIG_DFL);
  ConsoleInterface console;
  testing::internal::CaptureStderr();
  {
    const auto progress = console.open_progress(nullptr, true);
    progress->show(50);
    EXPECT_FALSE(progress->cancel_requested());
    ASSERT_EQ(::raise(SIGINT), 0);
    EXPECT_TRUE(progress->cancel_requested());
    EXPECT_FALSE(progress->cancel_requested());
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "progress is drawn on a terminal only";
  ::sigaction(SIGINT, nullptr, &before);
  EXPECT_EQ(before.sa_handler, SIG_DFL);
  // A handler of the host's own stays in place.
  ::signal(SIGINT, SIG_IGN);
  const auto progress = console.open_progress(nullptr, true);
  ASSERT_EQ(::raise(SIGINT), 0);
  EXPECT_FALSE(progress->cancel_requested());
  ::signal(SIGINT, SIG_DFL);
}

TEST(Interruption, ASecondSignalEndsTheProcessUnlessItIsTheSameWish) {
  const auto two_signals = [](useconds_t pause) {
    const InterruptionWatch watch({SIGTERM, SIGHUP});
    ::raise(SIGHUP);
    ::usleep(pause);
    ::raise(SIGTERM);
    ::_exit(InterruptionWatch::received());
  };
  EXPECT_EXIT(two_signals(0), testing::ExitedWithCode(SIGHUP), "");
  EXPECT_EXIT(two_signals(150'000), testing::ExitedWithCode(128 + SIGTERM), "");
}

}  // namespace
}  // namespace korvex::platform
