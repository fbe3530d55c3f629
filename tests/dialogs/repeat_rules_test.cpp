#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/dialog_setup.h"
#include "dialogs/enumeration_counts.h"
#include "dialogs/number_display.h"
#include "dialogs/repeat_number.h"
#include "dialogs/row_rules.h"
#include "format/error_codes.h"
#include "format/item_settings.h"
#include "format/reconcile.h"
#include "generate/repeat_count.h"

namespace korvex::test {
namespace {

TEST(NumberDisplayTest, GroupsDigits) {
  const std::pair<std::uint64_t, const char*> cases[] = {
      {0, "0"}, {100, "100"}, {1000, "1,000"}, {1'234'567, "1,234,567"}};
  for (const auto& [number, shown] : cases) EXPECT_EQ(grouped(number), shown);
  EXPECT_EQ(size_display(too_large, 10'000'000'000), "10000000000 bytes are exceeded.");
  EXPECT_EQ(size_display(12'345, 10'000'000'000), "12,345");
}

TEST(RepeatNumberTest, ReadsWholeNumbersThatFit) {
  using enum NumberReading;
  struct Case {
    const char* text;
    NumberReading reading;
    std::uint32_t number = 0;
  };
  const Case cases[] = {
      {"0", ok, 0},
      {"2147483647", ok, 2147483647},
      {" +7\t", ok, 7},
      {"007", ok, 7},
      {"2147483648", out_of_range},
      {"99999999999999999999", out_of_range},
      {"", not_a_number},
      {"-1", not_a_number},
      {"1x", not_a_number},
      {"1 2", not_a_number},
      {"+", not_a_number},
      {"1.5", not_a_number},
      {"++1", not_a_number},
  };
  for (const Case& c : cases) {
    std::uint32_t number = 0;
    EXPECT_EQ(read_repeat_number(c.text, number), c.reading) << c.text;
    EXPECT_EQ(number, c.number) << c.text;
  }
}

class RowRulesTest : public testing::Test {
 protected:
  RowRulesTest() {
    setup.write({{}, {.number = 2}});
    main.control_path = setup.control();
    EXPECT_EQ(main.load(), 0);
    EXPECT_EQ(reconcile(main), 0);
    main.select_item(0);
  }

  ItemDisplay& display() { return main.items[0]->display(); }

  // "repeat edit delete", each only when it is allowed, and the fields.
  std::string rules() {
    const auto found = row_rules(main, *main.items[0]);
    if (!found) return "unchanged";
    return std::string(found->may_repeat ? "repeat " : "") +
           (found->may_edit_repeat ? "edit " : "") + (found->may_delete ? "delete " : "") +
           std::to_string(found->fields.is_repeated) + "/" + std::to_string(found->fields.level) +
           "/" + std::to_string(found->fields.count);
  }

  DialogSetup setup;
  ClColMain main;
};

TEST_F(RowRulesTest, FollowTheTypeAndTheRepeat) {
  struct Case {
    std::int32_t type;
    std::int32_t repeat_flag;
    const char* rules;
  };
  const Case cases[] = {{0, 1, "0/0/0"},
                        {1, 0, "delete 0/0/0"},
                        {1, 1, "repeat delete 1/3/4"},
                        {2, 0, "repeat delete 0/0/0"},
                        {2, 1, "repeat edit delete 1/3/4"},
                        {3, 7, "repeat edit delete 1/3/4"},
                        {4, 1, "repeat edit delete 1/3/4"},
                        {5, 1, "unchanged"},
                        {-1, 0, "unchanged"}};
  display().repeat_level = 3;
  display().repeat_count = 4;
  for (const Case& c : cases) {
    display().generation_type = c.type;
    display().repeat_flag = c.repeat_flag;
    EXPECT_EQ(rules(), c.rules) << c.type;
  }
}

TEST_F(RowRulesTest, ATextThatNeverChangesCannotRepeat) {
  const std::pair<RangeTexts, const char*> cases[] = {
      {{"'12'", "", "", ""}, "delete 0/0/0"},
      {{"'1'%1U", "1", "9", "1"}, "repeat delete 0/0/0"},
      {{"%2U", "1", "9", "1"}, "repeat delete 0/0/0"}};
  for (const auto& [texts, expected] : cases) {
    ASSERT_GE(store_format(main, texts, false, true), 0);
    EXPECT_EQ(rules(), expected) << texts.format;
  }
}

TEST_F(RowRulesTest, ARepeatIsStoredInBothPlaces) {
  ASSERT_GE(store_format(main, {"%2U", "1", "9", "1"}, false, true), 0);
  store_repeat(main, *main.items[0], {true, 5, 6});
  EXPECT_EQ(rules(), "repeat edit delete 1/5/6");
  const FmtColRec& record = main.settings.find_column(1)->record;
  EXPECT_EQ(record.repeat_flag, 1);
  EXPECT_EQ(record.repeat_level, 5);
  EXPECT_EQ(record.repeat_count, 6);
  main.items[1]->display().repeat_level = 9;  // but no repeat
  EXPECT_EQ(highest_repeat_level(main), 5U);
}

TEST_F(RowRulesTest, AListThatWasReplacedIsCountedAgain) {
  ASSERT_EQ(reset_settings(main), 0);
  const std::string path = setup.folder.file("list");
  set_enumeration(main, path, exceeded_action::repeat);
  const FmtColRec& record = main.settings.find_column(1)->record;
  EnumerationCounts counts;
  write_file(path, "1\n2\n");
  EXPECT_EQ(counts.count(main, record), 2);
  // Something that only a new reading would see.
  const auto written = std::filesystem::last_write_time(path);
  write_file(path, "x\n2\n");
  std::filesystem::last_write_time(path, written);
  EXPECT_EQ(counts.count(main, record), 2);
  counts.forget();
  EXPECT_EQ(counts.count(main, record), error::enumeration_not_numeric);
  write_file(path, "1\n2\n3\n");
  EXPECT_EQ(counts.count(main, record), 3);
  std::filesystem::remove(path);
  EXPECT_EQ(counts.count(main, record), error::target_missing);
}

}  // namespace
}  // namespace korvex::test
