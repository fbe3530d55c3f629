#include "settings/fmt_file.h"

#include "formatlang/default_settings.h"
#include "settings/settings_folder.h"
#include "support/table.h"
#include "values/record_text.h"

namespace korvex {
namespace {

using namespace test;

const ItemAttributes decimal = {attribute::decimal, Flag::on, 8, 5, 2};

class FmtFileTest : public testing::Test {
 protected:
  FmtFileTest() { EXPECT_EQ(folder.load(file), 0); }

  ErrorCode store(std::int32_t item, const ItemAttributes& attributes, const std::string& format,
                  const std::string& start, const std::string& end,
                  const std::string& increment = "1") {
    file.edited().texts = {format, cp932(start), cp932(end), increment};
    return file.check_and_store(ItemNumber{item}, attributes);
  }

  FmtColRec& record(std::int32_t item) { return file.find_column(ItemNumber{item})->record; }

  SettingsFolder folder;
  ClFmtFile file;
};

TEST(FmtFile, WithoutALevelEveryOperationSaysSo) {
  ClFmtFile file;
  EXPECT_EQ(file.read_item(ItemNumber{1}).code(), -68);
  EXPECT_EQ(file.set_initial_value(ItemNumber{1}, decimal), -68);
  EXPECT_EQ(file.copy_settings(ItemNumber{1}, ItemNumber{2}, decimal), -68);
  EXPECT_EQ(file.delete_settings(ItemNumber{1}), -68);
  EXPECT_EQ(file.check_and_store(ItemNumber{1}, decimal), -68);
  EXPECT_EQ(file.find_column(ItemNumber{1}), nullptr);
}

TEST_F(FmtFileTest, ValuesReadBackAsTheyWereEntered) {
  for (const auto& [item, format, start, end] : table<4>(R"(
      1 1 6 6   | %2S'-'%3U | AA,100          | AC,900
      11 0 6 3  | %3N       | あいう          | いいう
      11 0 6 3  | %2N%N     | あい,う         | いい,え
      11 0 4 2  | %N%N      | あ,い           | い,う
      1 1 8 8   | %2N%2N    | あい,うえ       | いい,えお
      1 1 8 8   | %N%2N'x   | あ,うえ         | い,えお
      1 1 9 9   | %3U%2N%N  | 100,うえ,あ     | 200,えお,い
      4 1 8 5 2 | %3.2D     | -001.50         | +001.50
      32 0 15 15 | %TS      | 19700101 090000 | 20380119 031407
      1 1 6 6   | ABC'DEF   |                 |
  )")) {
    ASSERT_EQ(store(1, item_of(item), format, start, end), 0) << format;
    file.edited().texts = {};
    ASSERT_EQ(file.read_item(ItemNumber{1}), true);
    const RangeTexts& texts = file.edited().texts;
    EXPECT_EQ(texts.format + texts.start + texts.end, format + cp932(start + end));
    EXPECT_EQ(texts.increment, "1");
  }
}

TEST_F(FmtFileTest, ReadsTheFieldsOfAnItem) {
  file.edited().choices = {exceeded_action::repeat, Flag::on};
  ASSERT_EQ(store_range(file, 8), 0);
  record(8).referenced_item = ItemNumber{3};
  file.edited() = {};
  EXPECT_EQ(file.read_item(ItemNumber{9}), 0);
  ASSERT_EQ(file.read_item(ItemNumber{8}), 1);
  const EditedSettings& edited = file.edited();
  EXPECT_EQ(as_numbers(edited.generation_type, edited.referenced_item,
                       edited.choices.exceeded_action, edited.choices.custom_format),
            as_numbers(2, 3, 1, 1));
  file.set_run_mode(run_mode::generator);
  file.edited().texts = {};
  EXPECT_EQ(file.read_item(ItemNumber{8}), 1);
  EXPECT_EQ(file.edited().texts.format, "%5U");
  EXPECT_EQ(file.edited().texts.start, "") << "the generator reads no value texts";
}

TEST_F(FmtFileTest, TheInitialValueReplacesEverything) {
  file.edited().choices = {exceeded_action::repeat, Flag::on};
  ASSERT_EQ(
      store(1, {attribute::character, Flag::on, 6, 6, 0}, "%2S'-'%3U", "AA,100", "AC,900", "2"), 0);
  FmtColRec& before = file.find_column(ItemNumber{1})->record;
  before.repeat_count = 4;
  before.referenced_item = ItemNumber{5};
  EXPECT_EQ(file.set_initial_value(ItemNumber{1}, decimal), 0);
  EXPECT_EQ(file.set_initial_value(ItemNumber{2}, decimal), 0);
  ASSERT_EQ(file.save(quotation::none), 0);

  const ColumnFields expected = {1,   1,           1, 4, 1, 8, 5, 2, {.sign = 1, .low = 1},
                                 "1", "%2S'-'%3U", 0, 1, 0, 1, 0, 0, 4};
  const ElementFields element = {1, 0, 1, 8, 3, 2, {}, {}, {}, "", "", "", 0};
  const std::string area = read_file(folder.path).substr(header_size + level_size);
  EXPECT_TRUE(same_bytes(column_bytes(expected) + element_bytes(element),
                         area.substr(0, column_size + element_size)));
  EXPECT_EQ(record(2).attribute, 4);
  EXPECT_EQ(record(2).generation_type, 1);
}

TEST_F(FmtFileTest, DeletedSettingsLeaveThePlace) {
  for (const std::int32_t item : {1, 2}) ASSERT_EQ(store_range(file, item), 0);
  EXPECT_EQ(file.delete_settings(ItemNumber{1}), 0);
  EXPECT_EQ(file.delete_settings(ItemNumber{1}), -36);
  EXPECT_EQ(file.copy_settings(ItemNumber{2}, ItemNumber{1}, decimal), -36);
  EXPECT_EQ(file.copy_settings(ItemNumber{2}, ItemNumber{9}, decimal), -36);
  EXPECT_EQ(record(1).generation_type, 0);
  EXPECT_EQ(record(1).element_count, 0);
  ASSERT_EQ(store_range(file, 1), 0);
  EXPECT_EQ(file.current_level()->columns[0]->record.item_number, 1);
  // A failed check keeps what was there.
  EXPECT_EQ(store_range(file, 1, "9", "1"), -18);
  EXPECT_EQ(store_range(file, 3, "x", "1"), -25);
  EXPECT_EQ(file.find_column(ItemNumber{3}), nullptr);
  ASSERT_EQ(file.read_item(ItemNumber{1}), true);
  EXPECT_EQ(file.edited().texts.end, "99999");
  ASSERT_EQ(store(1, {attribute::character, Flag::on, 3, 0, 0}, "%3S", "AAA", "AAC"), 0);
  EXPECT_EQ(record(1).digits, 3) << "the digits that count";
}

TEST(LargestValue, FillsTheItem) {
  // Attributes, signed flag, digits and decimals.
  for (const auto& [attributes, sizes, expected] : table<3>(R"(
      1 2 3 5 6 7 8 9 10 | 1 3 0  | zzz
      1 2 3 5 6 7 8 9 10 | 1 3 1  | zz
      11 12              | 0 2 0  | ＺＺ
      4 13 23 27         | 0 3 0  | 999
      4 13 23 27         | 1 3 0  | +999
      4 13 23 27         | 0 3 2  | 9.99
      4 13 23 27         | 1 2 2  | +.99
      28                 | 1 8 0  | 99999999
      0 29 30 31 32      | 1 6 0  |
      4                  | 0 -3 0 |
  )")) {
    const auto size = numbers(sizes);
    for (const std::int32_t code : numbers(attributes)) {
      EXPECT_EQ(largest_value_text({Attribute{code}, Flag{size[0]}, 9, size[1], size[2]}),
                cp932(expected))
          << code;
    }
  }
}

TEST_F(FmtFileTest, AnEmptyEndStandsForTheLargestValue) {
  ASSERT_EQ(store(1, decimal, "%3.2D", "1", ""), 0);
  EXPECT_EQ(field_text(file.find_column(ItemNumber{1})->elements[0]->record.end_text), "+999.99");
  EXPECT_EQ(store(1, {Attribute{5}, Flag::off, 3, 3, 0}, "%3U", "1", ""), -25)
      << "letters, as for characters";
  EXPECT_EQ(store(1, {attribute::time, Flag::off, 6, 6, 0}, "%T", "000000", ""), -38);
}

}  // namespace
}  // namespace korvex
