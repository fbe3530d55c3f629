#include "dialogs/rules/store_range.h"

#include <map>

#include "control/reconcile.h"
#include "control/reconcile_setup.h"
#include "support/table.h"
#include "values/error_codes.h"

namespace korvex::test {
namespace {

class StoreRangeTest : public testing::Test {
 protected:
  // One item without settings, current.
  void open(const ItemAttributes& item) {
    setup.load({control_fields(1, "A", "", item)});
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
  const std::string in_255_bytes = std::string(253, ' ') + "5S";
  // The format's first letter alone stands for one of 255 or 256 bytes.
  for (const auto& [item, format, start, end, increment, code, wrong, hint] : table<8>(R"(
      4 1 9 5     |           |          |          |     | -36 | format    |
      4 1 9 5     | 5         |          |          |     | -35 | format    |
      4 1 9 5     | 6         |          |          |     | -10 | format    |
      4 1 9 5     | %5X       |          |          |     | -7  | format    | format
      4 1 9 5     | %D%D      |          |          |     | -12 | format    |
      4 1 9 5     | '1''1'%D%D |         |          |     | -11 | format    |
      4 1 9 5     | %5D       |          |          |     | -37 | start     |
      4 1 9 5     | %5D       | 1        |          |     | -38 | end       |
      4 1 9 5     | %5D       | 1        | 9        |     | -39 | increment |
      28 0 9 8    | %4YMD     | 20000001 | 20010101 | 1   | -59 | start     | start end
      4 1 9 5     | %5D       | 1.       | 9        | 1   | -24 | start     | start end increment
      1 0 100 100 | %5.2D     | 1        | 9        | 1   | -21 | format    | format
      4 1 9 5     | %5S       | A        | Z        | 1   | -9  | format    | format
      29 0 9 5    | %5D       | 1        | 9        | 1   | -7  | format    | format
      1 0 100 100 | %2S       | ab       | ZZ       | 1   | -19 | start     | format start end
      4 1 9 5     | %5D       | 9        | 1        | 1   | -18 | end       |
      4 1 9 5     | %5D       | 1        | 3        | 9   | -18 | increment |
      4 1 9 5     | %5D       | 1        | 123456   | 1   | -8  | end       |
      4 1 9 5     | %5D       | 1        | 9        | 1.5 | -23 | increment | start end increment
      31 0 6 6    | %T        | 000000   | 240000   | 1   | -58 | end       |
      32 0 15 15  | %TS       | x        | x        | 1   | -59 | start     | start end
  )")) {
    SCOPED_TRACE(item + ", " + format + " from " + start + " to " + end);
    open(item_of(item));
    const bool is_long = format == "5" || format == "6";
    const std::string entered = is_long ? in_255_bytes + (format == "6" ? " " : "") : format;
    const RangeStored stored = store({entered, start, end, increment});
    EXPECT_EQ(stored.code, std::stoi(code));
    const char* const parts[] = {"none", "format", "start", "end", "increment"};
    EXPECT_EQ(parts[static_cast<int>(stored.wrong)], wrong);
    const std::map<std::string, std::string> hints = {
        {"", ""},
        {"format", "\nPlease check the format."},
        {"start end", "\nPlease check the start value and the end value."},
        {"format start end", "\nPlease check the format, the start value, and the end value."},
        {"start end increment",
         "\nPlease check the start value, the end value, and the increment value."}};
    EXPECT_EQ(stored.hint, hints.at(hint));
    EXPECT_FALSE(stored.clears_values);
    EXPECT_EQ(shown().generation_type, generation_type::none);
  }
}

TEST_F(StoreRangeTest, LimitsThePartsByAttribute) {
  // A start is missing in every entry, so that -37 tells that the limits were kept. The codes are
  // those of the setup dialog and of the update dialog.
  for (const auto& [attributes, digits, format, codes] : table<4>(R"(
      1 2 3 6 7               | 9 | '1''2''3'%S%S | -37 -37
      5 11 12 13 18 27        | 0 | '1''2'%S      | -11 -11
      5 11 12 13 18 27        | 9 | '1'%S%S       | -12 -12
      5 11 12 13 18 27        | 9 | '1'%S         | -37 -37
      19 22 23 24 25 26 29 30 | 0 | '1''2''3'%S%S | -37 -37
      19 22 23 24 25 26 29 30 | 9 | '1''2'%S      | -11 -11
      19 22 23 24 25 26 29 30 | 9 | %S%S          | -12 -12
      4                       | 0 | '1''2'%S%S    | -37 -11
      4                       | 0 | %S%S          | -37 -12
      4                       | 9 | '1''2'%S      | -11 -11
      4                       | 9 | %S%S          | -12 -12
      31 32                   | 0 | ''%T          | -11 -11
      31 32                   | 9 | %T%T          | -12 -12
      31 32                   | 9 | %T            | -37 -37
      8 9 10 28 0 33          | 9 | '1''2''3'%S%S | -37 -37
  )")) {
    for (const std::int32_t attribute : numbers(attributes)) {
      SCOPED_TRACE(std::to_string(attribute) + " " + format);
      open({Attribute{attribute}, Flag::off, 9, std::stoi(digits), 0});
      const RangeTexts texts = {format, "", "9", "1"};
      EXPECT_EQ(test::as_numbers(store(texts, setup_format_rules).code,
                                 store(texts, value_update_rules).code),
                numbers(codes));
    }
  }
}

TEST_F(StoreRangeTest, IntegersOutOfRangeAreStoredAllTheSame) {
  for (const auto& [attribute, digits, start, end, code] : table<5>(R"(
      23 | 10 | 1           | 2147483647  | 0
      23 | 10 | -2147483648 | 5           | 0
      23 | 10 | -2147483649 | 5           | -49
      23 | 10 | 2147483648  | 2147483649  | -49
      23 | 10 | 1           | 2147483648  | -50
      23 | 10 | 00000000001 | 5           | -49
      23 | 12 | 1           | 12345678901 | -50
      24 | 5  | -32768      | 32767       | 0
      24 | 5  | -32769      | 5           | -49
      24 | 5  | 1           | 32768       | -50
      25 | 10 | 1           | 2147483648  | 0
  )")) {
    SCOPED_TRACE(start + " to " + end);
    open({Attribute{std::stoi(attribute)}, Flag::on, 20, std::stoi(digits), 0});
    const RangeTexts texts = {"%" + digits + "D", start, end, "1"};
    const RangeStored stored = store(texts);
    EXPECT_EQ(stored.code, std::stoi(code));
    EXPECT_FALSE(stored.clears_values);
    EXPECT_EQ(shown().generation_type, generation_type::range);
    EXPECT_EQ(shown().end, end);
    EXPECT_EQ(store(texts, value_update_rules).code, 0);
  }
}

TEST_F(StoreRangeTest, AFormatWithoutVariablePartClearsTheValues) {
  open({attribute::integer, Flag::off, 9, 9, 0});
  // What the controls hold is looked at anyway.
  RangeStored stored = store({"'123'", "99999999999", "", ""});
  EXPECT_EQ(stored.code, error::start_out_of_range);
  EXPECT_FALSE(stored.clears_values);
  stored = store({"'123'", "1", "", ""});
  EXPECT_EQ(stored.code, 0);
  EXPECT_TRUE(stored.clears_values);
  EXPECT_EQ(shown().generation_text, "'123'");
  EXPECT_EQ(shown().exceeded_action, exceeded_action::repeat);
  EXPECT_TRUE(shown().is_custom);
}

}  // namespace
}  // namespace korvex::test
