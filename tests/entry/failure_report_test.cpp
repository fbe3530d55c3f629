#include "entry/failure_report.h"

#include <gtest/gtest.h>

#include "support/scripted_interface.h"

namespace korvex::test {
namespace {

using platform::Answer;
using platform::MessageKind;

// A run that has met everything that a message may mention. Nothing in it may act as a placeholder.
void fill(ClColMain& main) {
  main.message_context = "/lists/100%d.txt\n";
  main.error_file_path = "/lists/100%s.txt.err";
  main.largest_repeat_count = 12;
}

// What stands before and behind the numbered message of each code.
struct ReportCase {
  std::vector<std::int32_t> codes;
  std::string before;
  std::string behind;
};

TEST(FailureReportTest, ComposesTheMessageByCode) {
  const std::string context = "/lists/100%d.txt\n";
  const ReportCase cases[] = {
      {{-1, -2, -7, -26, -28, -40, -78, -90, -101, -105, -108, -116, -120, -137, -138, -139},
       "Failed to generate data.\n",
       ""},
      {{-79}, "", ""},
      {{-104}, "", context},
      {{-111, -112, -113, -114, -115, -121, -122, -136}, context, ""},
      {{-125, -126, -127, -128, -129, -130, -131, -132, -133, -134}, context, ""},
      {{-123, -124}, "/lists/100%s.txt.err\n", ""},
  };
  ClColMain main;
  fill(main);
  for (const ReportCase& row : cases) {
    for (const std::int32_t code : row.codes) {
      std::string message;
      main.append_error_text(code, message);
      const FailureReport described = describe_failure(code, main);
      EXPECT_TRUE(described.is_shown) << code;
      EXPECT_EQ(described.text, row.before + message + row.behind);
      EXPECT_EQ(described.kind, MessageKind::warning) << code;
      EXPECT_EQ(described.returned, code);
    }
  }
}

TEST(FailureReportTest, NamesTheLargestNumberOfRepeats) {
  ClColMain main;
  fill(main);
  EXPECT_EQ(describe_failure(-109, main).text,
            "99109:The specified number of repeats is larger than the upper limit.\nThe maximum "
            "value that can be specified as the number of repeats is 12.");
  EXPECT_EQ(describe_failure(-109, main).returned, -109);
}

TEST(FailureReportTest, TheOutputLimitCountsAsDone) {
  const FailureReport described = describe_failure(-76, ClColMain());
  EXPECT_TRUE(described.is_shown);
  EXPECT_EQ(described.kind, MessageKind::warning);
  EXPECT_EQ(described.text,
            "The size of the data exceeds the size that Varkel can operate accurately."
            "99076:Cannot create data output which exceeds 2GB.\nThe first 2GB of output data was "
            "created.");
  EXPECT_EQ(described.returned, 0);
}

TEST(FailureReportTest, ADeclinedQuestionNeedsNoMessage) {
  ScriptedInterface interface;
  const platform::UserInterfaceOverride scripted(interface);
  EXPECT_EQ(report_failure(-110, ClColMain()), 0);
  EXPECT_TRUE(interface.messages.empty());
}

class BadLinesTest : public testing::Test {
 protected:
  std::int32_t report(Answer answer) {
    interface.answers = {answer};
    ClColMain main;
    fill(main);
    return report_failure(-135, main);
  }

  ScriptedInterface interface;
  platform::UserInterfaceOverride scripted{interface};
};

TEST_F(BadLinesTest, OffersTheErrorFile) {
  EXPECT_EQ(report(Answer::no), -135);
  ASSERT_EQ(interface.messages.size(), 1U);
  EXPECT_EQ(interface.messages[0].kind, MessageKind::warning_question);
  EXPECT_EQ(interface.messages[0].text,
            "/lists/100%d.txt\n99135:An error occurred while the Enumeration file data was "
            "checked.\nCorrect the erroneous data, then retry.\nError file /lists/100%s.txt.err "
            "was created. \nView the file?");
  EXPECT_TRUE(interface.opened_files.empty());
}

TEST_F(BadLinesTest, OpensTheErrorFile) {
  EXPECT_EQ(report(Answer::yes), -135);
  EXPECT_EQ(interface.opened_files, std::vector<std::string>{"/lists/100%s.txt.err"});
  EXPECT_EQ(interface.messages.size(), 1U);
}

TEST_F(BadLinesTest, SaysThatTheEditorDidNotStart) {
  interface.editor_error = 2;
  EXPECT_EQ(report(Answer::yes), -135);
  ASSERT_EQ(interface.messages.size(), 2U);
  EXPECT_EQ(interface.messages[1].kind, MessageKind::plain);
  EXPECT_EQ(interface.messages[1].text, "Call : notepad \"/lists/100%s.txt.err\"\nError : 2");
}

}  // namespace
}  // namespace korvex::test
