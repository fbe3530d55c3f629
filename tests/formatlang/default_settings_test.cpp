#include "formatlang/default_settings.h"

#include "support/bytes.h"

namespace korvex {
namespace {

struct Row {
  std::vector<std::int32_t> attributes;
  std::int32_t signed_flag, length, digits, decimals;
  std::vector<const char*> expected;  // UTF-8 format, start, end, increment; empty: none
};

TEST(DefaultSettings, FollowTheAttribute) {
  const std::vector<std::int32_t> letters = {1, 2, 3, 6, 7};
  const std::vector<std::int32_t> decimals = {4, 5, 13, 14, 15, 16, 17, 18};
  const std::vector<std::int32_t> short_numbers = {19, 20, 21, 22, 25, 26, 27, 29, 30};
  const char* smallest = "0.000000000000000001";
  const Row rows[] = {
      {letters, 1, 9, 3, 0, {"%3S", "AAA", "ZZZ", "1"}},
      {letters, 0, 4, 0, 0, {"%4S", "AAAA", "ZZZZ", "1"}},
      {letters, 0, 9, 9, 0, {"%5S", "AAAAA", "ZZZZZ", "1"}},
      {{11, 12}, 0, 4, 2, 0, {"%2N", "ああ", "んん", "1"}},
      {decimals, 0, 5, 5, 0, {"%5U", "1", "99999", "1"}},
      {decimals, 1, 7, 5, 2, {"%3.2D", "0.01", "999.99", "0.01"}},
      {decimals, 0, 4, 3, 3, {"%0.3U", "0.001", "0.999", "0.001"}},
      {decimals, 0, 20, 20, 0, {"%20U", "1", "99999999999999999999", "1"}},
      {short_numbers, 0, 9, 0, 0, {"%5S", "AAAAA", "ZZZZZ", "1"}},
      {short_numbers, 1, 9, 4, 1, {"%3.1D", "0.1", "999.9", "0.1"}},
      {short_numbers, 0, 30, 30, 0, {"%18U", "1", "999999999999999999", "1"}},
      {short_numbers, 0, 30, 30, 4, {"%14.4U", "0.0001", "99999999999999.9999", "0.0001"}},
      {short_numbers, 0, 30, 30, 20, {"%0.18U", smallest, "0.999999999999999999", smallest}},
      {{23}, 0, 4, 10, 0, {"%10D", "1", "2147483647", "1"}},
      {{24}, 1, 2, 5, 0, {"%5D", "1", "32767", "1"}},
      {{28}, 0, 8, 8, 0, {"%4YMD", "19700101", "20380119", "1"}},
      {{31}, 0, 6, 6, 0, {"%T", "000000", "235959", "1"}},
      {{32}, 0, 15, 15, 0, {"%TS", "19700101 090000", "20380119 031407", "1"}},
      {{4, 5, 6, 7, 11, 12, 13, 18, 19, 27, 23, 24}, 0, 9, 3, 4, {}},
      {decimals, 0, 4, -1, 0, {}},
      {decimals, 0, 4, 3, -1, {}},
      {{-1, 0, 8, 9, 10, 33}, 1, 5, 5, 0, {}},
  };
  for (const Row& row : rows) {
    for (const std::int32_t attribute : row.attributes) {
      SCOPED_TRACE(testing::Message() << attribute << ": " << row.digits << "." << row.decimals);
      RangeTexts texts;
      const std::int32_t result = default_settings(
          {attribute, row.signed_flag, row.length, row.digits, row.decimals}, texts);
      EXPECT_EQ(result, row.expected.empty() ? -1 : 0);
      if (row.expected.empty()) continue;
      EXPECT_EQ(texts.format, row.expected[0]);
      EXPECT_EQ(texts.start, test::cp932(row.expected[1]));
      EXPECT_EQ(texts.end, test::cp932(row.expected[2]));
      EXPECT_EQ(texts.increment, row.expected[3]);
    }
  }
}

TEST(DefaultSettings, FullWidthItemsTakeAtMost64Characters) {
  RangeTexts texts;
  ASSERT_EQ(default_settings({11, 0, 200, 65, 0}, texts), 0);
  EXPECT_EQ(texts.format, "%64N");
  EXPECT_EQ(texts.start.size(), 128u);
}

}  // namespace
}  // namespace korvex
