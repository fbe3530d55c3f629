#include "entry/failure_report.h"

#include <gtest/gtest.h>

namespace korvex::test {
namespace {

using platform::MessageKind;

// A run that has met everything that a message may mention. Nothing in it may act as a placeholder.
void fill(ClColMain& main) {
  main.message_context = platform::MessageText::path("/lists/100%d.txt") + "\n";
  main.error_file_path = "/lists/100%s.txt.err";
  main.largest_repeat_count = 12;
}

TEST(FailureReportTest, ComposesTheMessageByCode) {
  const std::string context = "/lists/100%d.txt\n";
  const std::string report = "/lists/100%s.txt.err\n";
  const std::string failed = "Failed to generate data.\n";
  // The codes, and what is before and after their numbered messages.
  const std::tuple<std::vector<std::int32_t>, std::string, std::string> cases[] = {
      {{-1, -2, -7, -26, -28, -40, -78, -90, -101, -105, -108, -116, -120}, failed, ""},
      {{-137, -138, -139}, failed, ""},
      {{-79}, "", ""},
      {{-104}, "", context},
      {{-111, -112, -113, -114, -115, -121, -122, -136}, context, ""},
      {{-125, -126, -127, -128, -129, -130, -131, -132, -133, -134}, context, ""},
      {{-123, -124}, report, ""},
  };
  ClColMain main;
  fill(main);
  for (const auto& [codes, before, behind] : cases) {
    for (const std::int32_t number : codes) {
      const ErrorCode code{number};
      std::string message;
      main.append_error_text(code, message);
      const FailureReport described = describe_failure(code, main);
      EXPECT_TRUE(described.is_shown) << number;
      EXPECT_EQ(described.text.utf8(), before + message + behind);
      EXPECT_EQ(described.kind, MessageKind::warning) << number;
      EXPECT_EQ(described.returned, number);
    }
  }
}

}  // namespace
}  // namespace korvex::test
