#include "korvex/korvex.h"
#include "support/generation_setup.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

constexpr std::int32_t guarded = 2;

TEST(ExportsTest, CreateDataTakesNoPathForAnEmptyOne) {
  GenerationSetup setup;
  EXPECT_EQ(DGCreateData(nullptr, 0, nullptr, 0), -2);
  EXPECT_EQ(setup.interface.messages.size(), 1U);
}

// Lines of 1 MiB, made of one wide item very often, which no disk has to hold.
TEST(ExportsTest, TheOutputLimitEndsARunThatCountsAsDone) {
  constexpr std::uint64_t field_size = 128;
  constexpr std::uint64_t fields = 8191;
  constexpr std::uint64_t line_size = field_size * fields + 1;
  constexpr std::uint64_t limit = 2'147'483'647;
  GenerationSetup setup;
  const RangeTexts wide = {"'" + std::string(field_size - 1, 'x') + "'", "", "", ""};
  setup.save_settings(
      {{.item = {attribute::plain_character, Flag::off, 127, 127, 0}, .texts = wide}});
  setup.write_control({.records = 0});
  ASSERT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, 0),
            0);  // makes the limits' file
  setup.write_control({.records = 2'000'000'000, .items = std::vector<std::int32_t>(fields, 1)});
  write_file(setup.log(), "old log");
  const WriteCalls calls(0);
  EXPECT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, 0), 0);
  EXPECT_EQ(calls.bytes(), (limit - 1) / line_size * line_size);
  ASSERT_EQ(setup.interface.messages.size(), 1U);
  EXPECT_EQ(setup.interface.messages[0].text,
            "The size of the data exceeds the size that Varkel can operate accurately."
            "99076:Cannot create data output which exceeds 2GB.\nThe first 2GB of output data was "
            "created.");
  EXPECT_EQ(setup.outputs(), (Names{"out.csv", "out.log"}));
  EXPECT_EQ(read_file(setup.log()), "old log");
}

// Three digits, one to three, which may repeat.
void write_run(const GenerationSetup& setup, std::int32_t records, std::int32_t level) {
  setup.save_settings({{.item = {attribute::decimal, Flag::off, 3, 3, 0},
                        .texts = {"%3U", "1", "3", "1"},
                        .repeat_level = level}});
  setup.write_control({.records = records});
}

TEST(ExportsTest, AsksInTheHostsOwnNumber) {
  GenerationSetup setup;
  write_run(setup, 2, 1);
  setup.interface.answers = {platform::Answer::no};
  EXPECT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, ~std::uint64_t{0}), 0);
  ASSERT_EQ(setup.interface.messages.size(), 1U);
  EXPECT_EQ(setup.interface.messages[0].kind, platform::MessageKind::question);
  EXPECT_NE(setup.interface.messages[0].text.find("18446744073709551615 data items"),
            std::string::npos);
}

// Guarded runs can be cancelled. With repeats they leave a margin: the percentage counts on more
// records than are asked for, and the last step goes to 100 anyway.
TEST(ExportsTest, ThePercentageLeavesAMarginForRepeats) {
  const std::tuple<std::int32_t, std::int32_t, std::vector<int>> cases[] = {
      {guarded, 1, {12, 25, 37, 50, 62, 100}},
      {guarded, 0, {20, 40, 60, 80, 100}},
      {0, 1, {20, 40, 60, 80, 100}}};
  for (const auto& [option, level, percentages] : cases) {
    GenerationSetup setup;
    write_run(setup, 5, level);
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
