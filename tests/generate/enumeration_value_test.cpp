#include "generate/enumeration_value.h"

#include <gtest/gtest.h>

#include <set>

#include "support/bytes.h"

namespace korvex::test {
namespace {

// Attribute codes whose values are checked the same way.
using Codes = std::vector<std::int32_t>;
const Codes characters = {1, 2, 3, 6, 7};
const Codes long_numbers = {4, 5, 13, 14, 15, 16, 17, 18};
const Codes short_numbers = {19, 20, 21, 22, 23, 24, 25, 26, 27, 29, 30};
const Codes nationals = {11, 12};

Codes numbers() {
  Codes all = long_numbers;
  all.insert(all.end(), short_numbers.begin(), short_numbers.end());
  return all;
}

struct Size {
  std::int32_t length;
  std::int32_t digits;
  std::int32_t decimals;
};

struct ValueCase {
  std::string value;
  std::int32_t code;
};

void check(const Codes& attributes, std::int32_t signed_flag, const Size& size,
           const std::vector<ValueCase>& cases) {
  for (const std::int32_t attribute : attributes) {
    const ItemAttributes item = {attribute, signed_flag, size.length, size.digits, size.decimals};
    for (const ValueCase& row : cases) {
      EXPECT_EQ(EnumerationRule(item).check(row.value), row.code)
          << "attribute " << attribute << ", signed " << signed_flag << ", value " << row.value;
    }
  }
}

TEST(EnumerationValueTest, CharactersAreOnlyMeasured) {
  check(characters, 1, {9, 5, 0}, {{"abcde", 0}, {"abcdef", -125}, {" \r\x1A\x81 ", 0}});
  check(characters, 1, {3, 0, 0}, {{"abc", 0}, {"abcd", -125}});
}

TEST(EnumerationValueTest, SignedNumbers) {
  check(numbers(), 1, {5, 4, 0},
        {{"-1234", 0},
         {"+1234", 0},
         {"1234", 0},
         {"12345", -125},
         {"-12345", -125},
         {"-", 0},
         {"1-2", -129},
         {"+-1", -128},
         {"-1+", -128},
         {"1x", -127},
         {"1 ", -127},
         {"12345678x", -127},
         {"123456-", -129},
         {"1.2.3", -131},
         {"1.0", -134},
         {"123.0", -125}});
}

TEST(EnumerationValueTest, SignedNumbersWithDecimals) {
  check(numbers(), 1, {7, 5, 2},
        {{"-123.45", 0},
         {"123.45", 0},
         {"+.5", 0},
         {"5.", 0},
         {"-1234.5", -133},
         {"1234.5", -133},
         {"123456", -133},
         {"1234567", -125},
         {"-1.234", -132},
         {"1234.567", -125},
         {"1..", -131}});
}

TEST(EnumerationValueTest, UnsignedNumbers) {
  // The digits are the limit, whatever the length.
  check(numbers(), 0, {9, 5, 0},
        {{"12345", 0},
         {"123456", -125},
         {"+1", -130},
         {"-1.0", -130},
         {"+12345", -125},
         {"1.0", -134}});
}

TEST(EnumerationValueTest, UnsignedNumbersWithDecimals) {
  // Here the length is.
  check(numbers(), 0, {6, 5, 2},
        {{"123.45", 0},
         {"123", 0},
         {".12", 0},
         {"1234.5", -133},
         {"1234", -133},
         {"1.234", -132},
         {"12.345", -132},
         {"+1.2", -130},
         {"1234567", -125},
         {"+1.2345", -125}});
  check(numbers(), 0, {10, 5, 2}, {{"12345678.9", -133}, {"12345.678", -132}, {"1234567.89", 0}});
}

TEST(EnumerationValueTest, NumbersWithoutDigits) {
  check(short_numbers, 0, {3, 0, 0}, {{"abc", 0}, {"+-.", 0}, {"abcd", -125}});
  check(short_numbers, 1, {3, 0, 0}, {{"123", 0}, {"1234", -125}});
  check(long_numbers, 0, {3, 0, 0}, {{"1", -125}, {"a", -127}});
}

TEST(EnumerationValueTest, FullWidthCharacters) {
  check(nationals, 0, {4, 2, 0},
        {{cp932("あ亜"), 0},
         {cp932("あ"), 0},
         {cp932("あ") + "a", -126},
         {cp932("あ亜い"), -125},
         {cp932("あ亜") + "a", -125},
         {"ab", -126},
         {cp932("あ") + "ab", -126},
         {"\x81\x3F", -126},
         {"\x81\x7F", -126},
         {"\x81\xFD", -126},
         {"\x80\x40", -126},
         {"\xA0\x40", -126},
         {"\xDF\x40", -126},
         {"\xFD\x40", -126},
         {"\x81\x40\xFC\xFC", 0},
         {"\x9F\x7E\xE0\x80", 0}});
}

TEST(EnumerationValueTest, OtherAttributesTakeNoList) {
  std::set<std::int32_t> allowed;
  for (const Codes& codes : {characters, nationals, numbers()}) {
    allowed.insert(codes.begin(), codes.end());
  }
  for (std::int32_t attribute = -1; attribute <= 40; ++attribute) {
    const std::string value = attribute == 11 || attribute == 12 ? cp932("１") : "1";
    EXPECT_EQ(EnumerationRule({attribute, 0, 9, 9, 0}).check(value),
              allowed.contains(attribute) ? 0 : -137)
        << attribute;
  }
}

}  // namespace
}  // namespace korvex::test
