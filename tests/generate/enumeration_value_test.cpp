#include "generate/enumeration_value.h"

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
  std::int32_t length, digits, decimals;
};

using Values = std::vector<std::string>;

// Checks the values, each under the code that it must get.
void check(const Codes& attributes, std::int32_t signed_flag, const Size& size,
           const std::vector<std::pair<std::int32_t, Values>>& cases) {
  for (const std::int32_t attribute : attributes) {
    const ItemAttributes item = {attribute, signed_flag, size.length, size.digits, size.decimals};
    for (const auto& [code, values] : cases) {
      for (const std::string& value : values) {
        EXPECT_EQ(EnumerationRule(item).check(value), code)
            << "attribute " << attribute << ", signed " << signed_flag << ", value " << value;
      }
    }
  }
}

TEST(EnumerationValueTest, CharactersAreOnlyMeasured) {
  check(characters, 1, {9, 5, 0}, {{0, {"abcde", " \r\x1A\x81 "}}, {-125, {"abcdef"}}});
  check(characters, 1, {3, 0, 0}, {{0, {"abc"}}, {-125, {"abcd"}}});
}

TEST(EnumerationValueTest, SignedNumbers) {
  check(numbers(), 1, {5, 4, 0},
        {{0, {"-1234", "+1234", "1234", "-"}},
         {-125, {"12345", "-12345", "123.0"}},
         {-127, {"1x", "1 ", "12345678x"}},
         {-128, {"+-1", "-1+"}},
         {-129, {"1-2", "123456-"}},
         {-131, {"1.2.3"}},
         {-134, {"1.0"}}});
  check(numbers(), 1, {7, 5, 2},
        {{0, {"-123.45", "123.45", "+.5", "5."}},
         {-125, {"1234567", "1234.567"}},
         {-131, {"1.."}},
         {-132, {"-1.234"}},
         {-133, {"-1234.5", "1234.5", "123456"}}});
}

TEST(EnumerationValueTest, UnsignedNumbers) {
  // The digits are the limit, whatever the length; with decimals the length is.
  check(numbers(), 0, {9, 5, 0},
        {{0, {"12345"}}, {-125, {"123456", "+12345"}}, {-130, {"+1", "-1.0"}}, {-134, {"1.0"}}});
  check(numbers(), 0, {6, 5, 2},
        {{0, {"123.45", "123", ".12"}},
         {-125, {"1234567", "+1.2345"}},
         {-130, {"+1.2"}},
         {-132, {"1.234", "12.345"}},
         {-133, {"1234.5", "1234"}}});
  check(numbers(), 0, {10, 5, 2},
        {{0, {"1234567.89"}}, {-132, {"12345.678"}}, {-133, {"12345678.9"}}});
}

TEST(EnumerationValueTest, NumbersWithoutDigits) {
  check(short_numbers, 0, {3, 0, 0}, {{0, {"abc", "+-."}}, {-125, {"abcd"}}});
  check(short_numbers, 1, {3, 0, 0}, {{0, {"123"}}, {-125, {"1234"}}});
  check(long_numbers, 0, {3, 0, 0}, {{-125, {"1"}}, {-127, {"a"}}});
}

TEST(EnumerationValueTest, FullWidthCharacters) {
  const std::string one = cp932("あ");
  check(nationals, 0, {4, 2, 0},
        {{0, {cp932("あ亜"), one, "\x81\x40\xFC\xFC", "\x9F\x7E\xE0\x80"}},
         {-125, {cp932("あ亜い"), cp932("あ亜") + "a"}},
         {-126, {one + "a", "ab", one + "ab", "\x81\x3F", "\x81\x7F", "\x81\xFD", "\x80\x40"}},
         {-126, {"\xA0\x40", "\xDF\x40", "\xFD\x40"}}});
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
