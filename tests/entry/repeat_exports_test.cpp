
#include <functional>

#include "control/limits.h"
#include "generate/repeat_setup.h"
#include "korvex/korvex.h"

namespace korvex::test {
namespace {

using platform::Answer;
using platform::MessageKind;

constexpr std::int32_t guarded = 2;

// Three digits, one to three.
RunItem item(std::int32_t number, std::int32_t level = 0, std::int32_t count = 1) {
  return {.number = number,
          .item = {4, 0, 3, 3, 0},
          .texts = {"%3U", "1", "3", "1"},
          .level = level,
          .count = count,
          .name = "NAME"};
}

// Also lists that fail their check and sizes that are too large can be evaluated.
TEST(CheckRepeatCntTest, AcceptsSettingsThatCanBeEvaluated) {
  RunItem bad = item(1, 1);
  bad.list = "x\n";
  RepeatSetup setup;
  setup.limit("CheckFileSizeMax", "1");
  const std::vector<std::vector<RunItem>> runs = {
      {item(1, 1, 3), item(2)}, {item(1), item(2)}, {item(1, 2), item(2, 2)}, {bad}};
  for (const std::vector<RunItem>& items : runs) {
    setup.write(items);
    const std::string settings = read_file(setup.settings());
    const Names before = setup.folder.names();
    EXPECT_EQ(DGCheckRepeatCnt(setup.long_control().c_str()), 0);
    EXPECT_TRUE(setup.interface.messages.empty());
    EXPECT_EQ(read_file(setup.settings()), settings);
    EXPECT_EQ(setup.folder.names(), before);
  }
}

TEST(CheckRepeatCntTest, RefusesWhatCannotBeRead) {
  const auto change_item_number = [](const std::string& path) {
    std::string control = read_file(path);
    put_i32(control, control_header_size, 7);
    write_file(path, control);
  };
  const std::function<void(RepeatSetup&)> spoils[] = {
      [](RepeatSetup& s) { std::filesystem::remove(s.long_control()); },
      [](RepeatSetup& s) { write_file(s.long_control(), read_file(s.control())); },
      [](RepeatSetup& s) { std::filesystem::remove(s.settings()); },
      [](RepeatSetup& s) { std::filesystem::resize_file(s.settings(), 100); },
      [&](RepeatSetup& s) { change_item_number(s.long_control()); },
  };
  for (const auto& spoil : spoils) {
    RepeatSetup setup;
    setup.write({item(1, 1)});
    spoil(setup);
    EXPECT_EQ(DGCheckRepeatCnt(setup.long_control().c_str()), -1);
    EXPECT_TRUE(setup.interface.messages.empty());
  }
  EXPECT_EQ(DGCheckRepeatCnt(nullptr), -1);
}

class CreateRepeatedDataTest : public testing::Test {
 protected:
  std::int32_t create(std::int32_t output_option = 0, std::uint64_t repeat_item_count = 0) {
    setup.interface.messages.clear();
    setup.interface.percentages.clear();
    return DGCreateData(setup.control().c_str(), output_option, nullptr, repeat_item_count);
  }

  // The one message that was shown.
  std::string message() const {
    EXPECT_EQ(setup.interface.messages.size(), 1U);
    return setup.interface.messages.empty() ? "" : setup.interface.messages[0].text;
  }

  RepeatSetup setup;
};

TEST_F(CreateRepeatedDataTest, RefusedRepeatsWriteNothing) {
  setup.limit("RepeatLevelNumMax", "2");
  write_file(setup.data(), "old");
  const std::tuple<std::vector<RunItem>, std::int32_t, std::string> cases[] = {
      {{item(1, 1), item(2, 1)}, -104, "99104:Repeat is already specified for the same level."},
      {{item(1, 2), item(2, 3)},
       -108,
       "Failed to generate data.\n99108:The starting Column of the repeat is not specified."},
      {{item(1, 1), item(2, 2), item(3, 3)},
       -109,
       "99109:The specified number of repeats is larger than the upper limit.\nThe maximum value "
       "that can be specified as the number of repeats is 2."},
  };
  for (const auto& [items, code, text] : cases) {
    setup.write(items, {.layout_kind = 2});
    platform::remove_file(setup.log());
    EXPECT_EQ(create(), code);
    EXPECT_TRUE(message().starts_with(text)) << message();
    EXPECT_EQ(setup.interface.messages[0].kind, MessageKind::warning);
    EXPECT_EQ(read_file(setup.data()), "old");
    EXPECT_FALSE(platform::exists(setup.log()));
  }
}

// Repeats are looked at before lists are, and lists before the question.
TEST_F(CreateRepeatedDataTest, ChecksInOrder) {
  RunItem bad = item(1, 2);
  bad.list = "x\n";
  setup.write({bad});
  EXPECT_EQ(create(guarded, 99), -108);
  bad.level = 1;
  setup.write({bad});
  EXPECT_EQ(create(guarded, 99), -135);
  EXPECT_EQ(setup.interface.messages.size(), 1U);
}

TEST_F(CreateRepeatedDataTest, AsksWhetherFewerRecordsAreEnough) {
  constexpr std::uint64_t very_many = 18'446'744'073'709'551'615U;
  setup.write({item(1, 1, 4)}, {.records = 2});
  setup.interface.answers = {Answer::no};
  EXPECT_EQ(create(guarded, very_many), 0);
  EXPECT_EQ(message(),
            "99110:The number of data items that will be generated through repeat is larger than "
            "the specified number.18446744073709551615 data items will be generated.\nDo you want "
            "to generate data items up to the specified number?");
  EXPECT_EQ(setup.interface.messages[0].kind, MessageKind::question);
  EXPECT_EQ(setup.outputs(), Names{"long.ctl"});

  setup.interface.answers = {Answer::yes};
  EXPECT_EQ(create(guarded, 3), 0);
  EXPECT_EQ(setup.interface.messages.size(), 1U);
  EXPECT_EQ(read_file(setup.data()), "001,\n002,\n");
  EXPECT_EQ(read_file(setup.log()), log_bytes(2, 1, {1}));

  // Only more than asked for, guarded, and with repeats in use.
  EXPECT_EQ(create(guarded, 2), 0);
  EXPECT_EQ(create(0, 3), 0);
  EXPECT_TRUE(setup.interface.messages.empty());
  setup.write({item(1, 1, 4)}, {.records = 2, .repeat_flag = 0});
  EXPECT_EQ(create(guarded, 3), 0);
  setup.write({item(1)}, {.records = 2});
  EXPECT_EQ(create(guarded, 3), 0);
  EXPECT_TRUE(setup.interface.messages.empty());
}

// Guarded runs with repeats leave a margin: the percentage counts on more records than are asked
// for, and the last step goes to 100 all the same.
TEST_F(CreateRepeatedDataTest, ThePercentageLeavesAMarginForRepeats) {
  const std::tuple<std::int32_t, std::int32_t, std::vector<int>> cases[] = {
      {guarded, 1, {12, 25, 37, 50, 62, 100}},
      {guarded, 0, {20, 40, 60, 80, 100}},
      {0, 1, {20, 40, 60, 80, 100}}};
  for (const auto& [option, level, percentages] : cases) {
    setup.write({item(1, level)}, {.records = 5});
    ASSERT_EQ(create(option), 0);
    EXPECT_EQ(setup.interface.percentages, percentages) << option << level;
  }
}

TEST_F(CreateRepeatedDataTest, BadLinesOfferTheirReport) {
  RunItem bad = item(1);
  bad.list = "1\nx\n";
  setup.write({bad}, {.layout_kind = 3});
  const std::string path = setup.list_path(1);
  setup.interface.answers = {Answer::yes};
  EXPECT_EQ(create(), -135);
  EXPECT_TRUE(message().starts_with(path + "\n99135:")) << message();
  EXPECT_EQ(setup.interface.opened_files, Names{path + ".err"});
  EXPECT_EQ(read_file(path + ".err"),
            "2 line of a enum file The numeric value data Column includes a non-numeric value.\n");

  bad.list = "\n";
  setup.write({bad});
  EXPECT_EQ(create(), -136);
  EXPECT_TRUE(message().starts_with(path + "\n99136:")) << message();
  EXPECT_EQ(setup.outputs(), (Names{"list1.txt", "long.ctl"}));
}

}  // namespace
}  // namespace korvex::test
