#include <gtest/gtest.h>

#include <filesystem>

#include "control/item_settings.h"
#include "control/reconcile.h"
#include "dialogs/dialog_setup.h"
#include "dialogs/rules/row_rules.h"
#include "dialogs/rules/user_numbers.h"
#include "dialogs/rules/value_lists.h"
#include "run/repeat_count.h"
#include "support/table.h"
#include "values/error_codes.h"

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
  const std::tuple<NumberReading, std::uint32_t, std::vector<const char*>> cases[] = {
      {ok, 0, {"0"}},
      {ok, 2147483647, {"2147483647"}},
      {ok, 7, {" +7\t", "007"}},
      {out_of_range, 0, {"2147483648", "99999999999999999999"}},
      {not_a_number, 0, {"", "-1", "1x", "1 2", "+", "1.5", "++1"}},
  };
  for (const auto& [reading, expected, texts] : cases) {
    for (const char* text : texts) {
      std::uint32_t number = 0;
      EXPECT_EQ(read_repeat_number(text, number), reading) << text;
      EXPECT_EQ(number, expected) << text;
    }
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
  display().repeat_level = RepeatLevel{3};
  display().repeat_count = 4;
  for (const auto& [type_and_flag, expected] : table<2>(R"(
      0 1  | 0/0/0
      1 0  | delete 0/0/0
      1 1  | repeat delete 1/3/4
      2 0  | repeat delete 0/0/0
      2 1  | repeat edit delete 1/3/4
      3 7  | repeat edit delete 1/3/4
      4 1  | repeat edit delete 1/3/4
      5 1  | unchanged
      -1 0 | unchanged
  )")) {
    display().generation_type = GenerationType{numbers(type_and_flag)[0]};
    display().is_repeated = numbers(type_and_flag)[1] != 0;
    EXPECT_EQ(rules(), expected) << type_and_flag;
  }
  // A text that never changes cannot repeat.
  display() = {};
  for (const auto& [format, start, end, expected] : table<4>(R"(
      '12'   |   |   | delete 0/0/0
      '1'%1U | 1 | 9 | repeat delete 0/0/0
      %2U    | 1 | 9 | repeat delete 0/0/0
  )")) {
    ASSERT_EQ(store_format(main, {format, start, end, "1"}, false, true), 0);
    EXPECT_EQ(rules(), expected) << format;
  }
}

TEST_F(RowRulesTest, ARepeatIsStoredInBothPlaces) {
  ASSERT_EQ(store_format(main, {"%2U", "1", "9", "1"}, false, true), 0);
  store_repeat(main, *main.items[0], {true, 5, 6});
  EXPECT_EQ(rules(), "repeat edit delete 1/5/6");
  const FmtColRec& record = main.settings.find_column(ItemNumber{1})->record;
  EXPECT_EQ(test::as_numbers(record.repeat_flag, record.repeat_level, record.repeat_count),
            test::as_numbers(1, 5, 6));
  main.items[1]->display().repeat_level = RepeatLevel{9};  // but no repeat
  EXPECT_EQ(highest_repeat_level(main), 5U);
}

TEST_F(RowRulesTest, AListThatWasReplacedIsCountedAgain) {
  ASSERT_EQ(reset_settings(main), 0);
  const std::string path = setup.folder.file("list");
  set_enumeration(main, path, exceeded_action::repeat);
  const FmtColRec& record = main.settings.find_column(ItemNumber{1})->record;
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
