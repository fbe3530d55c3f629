#include "dialogs/store_range.h"

#include <gtest/gtest.h>

#include <memory>

#include "format/error_codes.h"
#include "format/reconcile.h"
#include "reconcile/reconcile_setup.h"

namespace korvex::test {
namespace {

constexpr const char* date_hint = "\nPlease check the start value and the end value.";
constexpr const char* values_hint =
    "\nPlease check the start value, the end value, and the increment value.";

class StoreRangeTest : public testing::Test {
 protected:
  // One item without settings, current.
  void open(const ControlItemFields& item) {
    setup.load({item});
    ASSERT_EQ(reconcile(*setup.main), 0);
    setup.main->select_item(0);
  }

  RangeStored store(const RangeTexts& texts, const RangeRules& rules = setup_format_rules) {
    return store_range(*setup.main, {texts, false, true}, rules);
  }

  const ItemDisplay& shown() { return setup.main->items[0]->display(); }

  ReconcileSetup setup;
};

TEST_F(StoreRangeTest, RefusesInOrderAndSaysWhatToLookAt) {
  struct Row {
    const char* name;
    ControlItemFields item;
    RangeTexts texts;
    std::int32_t code;
    const char* hint;
    RangePart wrong;
  };
  using enum RangePart;
  const ControlItemFields number = {.signed_flag = 1};
  const ControlItemFields text = {.attribute = 1, .length = 100, .digits = 100};
  const std::string in_255_bytes = std::string(253, ' ') + "5S";
  const Row rows[] = {
      {"no format", number, {"", "", "", ""}, -36, "", format},
      {"255 bytes", number, {in_255_bytes, "", "", ""}, -35, "", format},
      {"256 bytes", number, {in_255_bytes + " ", "", "", ""}, -10, "", format},
      {"pre-check", number, {"%5X", "", "", ""}, -7, "\nPlease check the format.", format},
      {"parts before values", number, {"%D%D", "", "", ""}, -12, "", format},
      {"fixed before variable parts", number, {"'1''1'%D%D", "", "", ""}, -11, "", format},
      {"start", number, {"%5D", "", "", ""}, -37, "", start},
      {"end", number, {"%5D", "1", "", ""}, -38, "", end},
      {"increment", number, {"%5D", "1", "9", ""}, -39, "", increment},
      {"date",
       {.attribute = 28, .digits = 8},
       {"%4YMD", "20000001", "20010101", "1"},
       -59,
       date_hint,
       start},
      {"point", number, {"%5D", "1.", "9", "1"}, -24, values_hint, start},
      {"text decimals", text, {"%5.2D", "1", "9", "1"}, -21, "\nPlease check the format.", format},
      {"letters", number, {"%5S", "A", "Z", "1"}, -9, "\nPlease check the format.", format},
      {"no class",
       {.attribute = 29},
       {"%5D", "1", "9", "1"},
       -7,
       "\nPlease check the format.",
       format},
      {"wrong letters",
       text,
       {"%2S", "ab", "ZZ", "1"},
       -19,
       "\nPlease check the format, the start value, and the end value.",
       start},
      {"end before start", number, {"%5D", "9", "1", "1"}, -18, "", end},
      {"large increment", number, {"%5D", "1", "3", "9"}, -18, "", increment},
      {"end digits", number, {"%5D", "1", "123456", "1"}, -8, "", end},
      {"increment decimals", number, {"%5D", "1", "9", "1.5"}, -23, values_hint, increment},
      {"time",
       {.attribute = 31, .length = 6, .digits = 6},
       {"%T", "000000", "240000", "1"},
       -58,
       "",
       end},
      {"timestamp",
       {.attribute = 32, .length = 15, .digits = 15},
       {"%TS", "x", "x", "1"},
       -59,
       date_hint,
       start},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    open(row.item);
    const RangeStored stored = store(row.texts);
    EXPECT_EQ(stored.code, row.code);
    EXPECT_EQ(stored.hint, row.hint);
    EXPECT_EQ(stored.wrong, row.wrong);
    EXPECT_FALSE(stored.clears_values);
    EXPECT_EQ(shown().generation_type, generation_type::none);
  }
}

TEST_F(StoreRangeTest, LimitsThePartsByAttribute) {
  struct Row {
    std::vector<std::int32_t> attributes;
    std::int32_t digits;
    const char* format;
    std::int32_t setup_code;
    std::int32_t update_code;
  };
  // A start is missing in every entry, so that -37 tells that the limits were kept.
  const std::vector<std::int32_t> numbers = {5, 11, 12, 13, 18, 27};
  const std::vector<std::int32_t> may_be_text = {19, 22, 23, 24, 25, 26, 29, 30};
  const Row rows[] = {
      {{1, 2, 3, 6, 7}, 9, "'1''2''3'%S%S", -37, -37},
      {numbers, 0, "'1''2'%S", -11, -11},
      {numbers, 9, "'1'%S%S", -12, -12},
      {numbers, 9, "'1'%S", -37, -37},
      {may_be_text, 0, "'1''2''3'%S%S", -37, -37},
      {may_be_text, 9, "'1''2'%S", -11, -11},
      {may_be_text, 9, "%S%S", -12, -12},
      {{4}, 0, "'1''2'%S%S", -37, -11},
      {{4}, 0, "%S%S", -37, -12},
      {{4}, 9, "'1''2'%S", -11, -11},
      {{4}, 9, "%S%S", -12, -12},
      {{31, 32}, 0, "''%T", -11, -11},
      {{31, 32}, 9, "%T%T", -12, -12},
      {{31, 32}, 9, "%T", -37, -37},
      {{8, 9, 10, 28, 0, 33}, 9, "'1''2''3'%S%S", -37, -37},
  };
  for (const Row& row : rows) {
    for (const std::int32_t attribute : row.attributes) {
      SCOPED_TRACE(std::to_string(attribute) + " " + row.format);
      open({.attribute = attribute, .digits = row.digits});
      const RangeTexts texts = {row.format, "", "9", "1"};
      EXPECT_EQ(store(texts, setup_format_rules).code, row.setup_code);
      EXPECT_EQ(store(texts, value_update_rules).code, row.update_code);
    }
  }
}

TEST_F(StoreRangeTest, IntegersOutOfRangeAreStoredAllTheSame) {
  struct Row {
    std::int32_t attribute;
    std::int32_t digits;
    const char* start;
    const char* end;
    std::int32_t code;
  };
  const Row rows[] = {
      {23, 10, "1", "2147483647", 0},    {23, 10, "-2147483648", "5", 0},
      {23, 10, "-2147483649", "5", -49}, {23, 10, "2147483648", "2147483649", -49},
      {23, 10, "1", "2147483648", -50},  {23, 10, "00000000001", "5", -49},
      {23, 12, "1", "12345678901", -50}, {24, 5, "-32768", "32767", 0},
      {24, 5, "-32769", "5", -49},       {24, 5, "1", "32768", -50},
      {25, 10, "1", "2147483648", 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.start) + " to " + row.end);
    open({.attribute = row.attribute, .signed_flag = 1, .length = 20, .digits = row.digits});
    const RangeTexts texts = {"%" + std::to_string(row.digits) + "D", row.start, row.end, "1"};
    const RangeStored stored = store(texts);
    EXPECT_EQ(stored.code, row.code);
    EXPECT_FALSE(stored.clears_values);
    EXPECT_EQ(shown().generation_type, generation_type::range);
    EXPECT_EQ(shown().end, row.end);
    EXPECT_EQ(store(texts, value_update_rules).code, 0);
  }
}

TEST_F(StoreRangeTest, AFormatWithoutVariablePartClearsTheValues) {
  open({.attribute = 23, .length = 9, .digits = 9});
  // What the controls hold is looked at all the same.
  RangeStored stored = store({"'123'", "99999999999", "", ""});
  EXPECT_EQ(stored.code, error::start_out_of_range);
  EXPECT_FALSE(stored.clears_values);
  stored = store({"'123'", "1", "", ""});
  EXPECT_EQ(stored.code, 0);
  EXPECT_TRUE(stored.clears_values);
  EXPECT_EQ(shown().generation_text, "'123'");
  EXPECT_EQ(shown().exceeded_action, exceeded_action::repeat);
  EXPECT_EQ(shown().custom_format, 1);
}

}  // namespace
}  // namespace korvex::test
