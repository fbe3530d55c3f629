#include "generate/repeat_setup.h"
#include "korvex/korvex.h"

// What a story cannot see of runs that repeat.
namespace korvex::test {
namespace {

constexpr std::int32_t guarded = 2;

// Three digits, one to three.
RunItem item(std::int32_t level) {
  return {.item = {4, 0, 3, 3, 0}, .texts = {"%3U", "1", "3", "1"}, .level = level};
}

TEST(RepeatExportsTest, AsksInTheHostsOwnNumber) {
  RepeatSetup setup;
  setup.write({item(1)}, {.records = 2});
  setup.interface.answers = {platform::Answer::no};
  EXPECT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, ~std::uint64_t{0}), 0);
  ASSERT_EQ(setup.interface.messages.size(), 1U);
  EXPECT_EQ(setup.interface.messages[0].kind, platform::MessageKind::question);
  EXPECT_NE(setup.interface.messages[0].text.find("18446744073709551615 data items"),
            std::string::npos);
}

// Guarded runs can be cancelled. With repeats they leave a margin: the percentage counts on more
// records than are asked for, and the last step goes to 100 all the same.
TEST(RepeatExportsTest, ThePercentageLeavesAMarginForRepeats) {
  const std::tuple<std::int32_t, std::int32_t, std::vector<int>> cases[] = {
      {guarded, 1, {12, 25, 37, 50, 62, 100}},
      {guarded, 0, {20, 40, 60, 80, 100}},
      {0, 1, {20, 40, 60, 80, 100}}};
  for (const auto& [option, level, percentages] : cases) {
    RepeatSetup setup;
    setup.write({item(level)}, {.records = 5});
    ASSERT_EQ(DGCreateData(setup.control().c_str(), option, &setup, 0), 0);
    EXPECT_EQ(setup.interface.percentages, percentages) << option << level;
    EXPECT_EQ(setup.interface.offered_cancel, option == guarded);
    EXPECT_EQ(setup.interface.progress_parent, &setup);
    EXPECT_EQ(setup.interface.polls, 5);
    EXPECT_EQ(setup.interface.open_progresses, 0);
  }
}

}  // namespace
}  // namespace korvex::test
