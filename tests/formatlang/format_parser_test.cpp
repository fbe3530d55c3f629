#include "formatlang/format_parser.h"

#include "format/record_text.h"
#include "formatlang/items.h"
#include "support/bytes.h"

namespace korvex {
namespace {

using namespace test;

std::int32_t parse(const ItemAttributes& item, const std::string& utf8, ParsedFormat& parsed,
                   NationalCount national = NationalCount::split) {
  return parse_format(item, value_class_of(item.attribute), cp932(utf8), national, parsed);
}

// Each element as "kind/width/digits.decimals", a group start marked by "*".
std::string describe(const ParsedFormat& parsed) {
  std::string out;
  for (const FmtItemRec& element : parsed.elements) {
    out += (out.empty() ? "" : " ") + std::to_string(element.kind) + "/" +
           std::to_string(element.width) + "/" + std::to_string(element.digits) +
           (element.decimals == 0 ? "" : "." + std::to_string(element.decimals)) +
           (element.group_start == 1 ? "*" : "");
  }
  return out;
}

const ItemAttributes decimal = number(6, 5, 2);

TEST(FormatParser, CutsFormatsIntoElements) {
  using Formats = std::vector<std::pair<const char*, const char*>>;
  const std::pair<ItemAttributes, Formats> rows[] = {
      {signed_number(6, 5), {{"%5D", "900/6/5"}, {"%D", "900/2/1"}, {"%5U", "901/5/5"}}},
      {number(5, 5), {{"%U", "901/1/1"}, {"%3x5U", "901/3/3"}, {"%5.0U", "901/6/5"}}},
      {number(5, 5), {{"12'%3U", "999/2/2 901/3/3"}, {"''%3U''", "901/3/3"}}},
      {decimal, {{"%3.2U", "901/6/3.2"}, {"%1.1U", "901/3/1.1"}, {"%.2U", "901/4/0.2"}}},
      {decimal, {{"%0.2U", "901/4/0.2"}, {"%3U", "901/3/3"}, {"-12.5", "999/4/4"}}},
      {decimal, {{"1.5'%3U", "999/2/2 901/3/3"}}},
      {signed_number(8, 5, 2), {{"%3.2D", "900/7/3.2"}, {"%.2D", "900/5/0.2"}}},
      {number(21, 20, 2), {{"%16.2U", "901/19/16.2"}}},
      {characters(19), {{"%18D", "900/19/18"}, {"%5D'AB", "900/6/5 999/2/2"}}},
      {characters(7), {{"AB'%5U", "999/2/2 903/5/5"}, {"AB%5D", "999/5/5"}}},
      {characters(6), {{"%3S%2s", "904/3/3 908/2/2"}, {"%S%s", "904/1/1 908/1/1"}}},
      {characters(6), {{"%2S'-'%3U", "904/2/2 999/1/1 903/3/3"}, {"%T", "1002/8/6"}}},
      {characters(8), {{"%YMD", "906/6/6"}, {"%2YMA", "907/6/6"}, {"%4YMD", "906/8/8"}}},
      {characters(15), {{"%TS", "1003/19/15"}, {"a'%S'b'c", "999/1/1 904/1/1 999/1/1 999/1/1"}}},
      {characters(10, 5), {{"%5U'ABCDE", "903/5/5 999/5/5"}}},
      {characters(7), {{"%3N", "905/1/1* 905/1/1 905/1/1"}, {"%N", "905/1/1"}}},
      {characters(7), {{"%1N", "905/1/1"}, {"%2N'x'%N", "905/1/1* 905/1/1 999/1/1 905/1/1"}}},
      {national(3), {{"%2N%N", "905/1/1* 905/1/1 905/1/1"}}},
      {national(3), {{"あ'%2N", "999/1/1 905/1/1* 905/1/1"}}},
      {national(3), {{"%2N'あ", "905/1/1* 905/1/1 999/1/1"}}},
      {date(), {{"%4YMD", "906/8/8"}, {"%YMD", "906/6/6"}, {"%4YMA", "907/8/8"}}},
      {time(), {{"%T", "1002/8/6"}}},
      {timestamp(), {{"%TS", "1003/19/15"}}},
  };
  for (const auto& [item, formats] : rows) {
    for (const auto& [format, expected] : formats) {
      ParsedFormat parsed;
      EXPECT_EQ(parse(item, format, parsed), 0) << format;
      EXPECT_EQ(describe(parsed), expected) << format;
    }
  }
}

TEST(FormatParser, RefusesFormatsWithTheCodeOfTheFirstRuleBroken) {
  struct Row {
    std::int32_t code;
    ItemAttributes item;
    std::vector<std::string> formats;
  };
  std::string letters_130;
  for (int i = 0; i < 26; ++i) letters_130 += "%5S";
  const std::string fixed_125(125, 'x');
  const Row rows[] = {
      {-35, number(5, 5), {"", "''"}},
      {-35, date(), {""}},
      {-12, number(5, 5), {"%3U%2U", "1'2'%U%U"}},
      {-11, number(5, 5), {"1'%3U'2"}},
      {-11, characters(5), {"a'b'c'd"}},
      {-11, national(5), {"あ'%N'い"}},
      {-12, date(), {"%YMD%YMD"}},
      {-11, date(), {"A'%YMD", "19700101"}},
      {-11, time(), {"%T'x"}},
      {-12, timestamp(), {"%TS%TS"}},
      // Numbers
      {-9, number(8, 8), {"%5S", "%", "%5d", "%YMD", "%N", "%T"}},
      {-52, number(5, 9), {"%0U", "%-1U", "%99999999999999999999U", "%6U"}},
      {-52, number(9, 5), {"%6U", "123456", "%4U'12"}},
      {-52, decimal, {"%4U", "%5.U", "%1.1.1U", "%6.2U", "%3.0U", "%2.3U", "%5.2U", "%-1.2U"}},
      {-45, number(22, 20, 5), {"%14.5U"}},
      {-40, number(9, 9), {"%5D", "%5D'ABC"}},
      {-41, signed_number(6, 5), {"1'%3D"}},
      {-73, number(5, 5), {"12A", "A'%3U"}},
      {-51, number(5, 5), {"+1'%3U", "%3U'-1"}},
      // Characters
      {-53, characters(9), {"%6S", "%6s"}},
      {-52, characters(9), {"%0S", "%0N", "%-3N", "%5T", "%3YMD", "%1YMA", "%0YMA", "%5N"}},
      {-52, characters(30), {"%19D", "%0U", "%-3D", "%5TS"}},
      {-21, characters(9), {"%1.2U", "%1.5D"}},
      {-41, characters(9), {"ABC'%5D"}},
      {-9, characters(9), {"%X", "%5d", "%"}},
      {-52, characters(5), {"%5S%S", "%5D"}},
      {-52, characters(9, 5), {"ABCDEF", "%5U'ABCDE"}},
      {-10, characters(200), {letters_130, fixed_125 + "xxxx", fixed_125 + "'%4U"}},
      // Full-width items
      {-9, national(5), {"%3S", "%U"}},
      {-52, national(5), {"%0N", "%6N"}},
      {-10, national(200), {"%129N", "%999999999N"}},
      {-19, national(5), {"ab'%N", "あb"}},
      {-52, {11, 0, 5, 3, 0}, {"%2N'あ"}},
      // Dates and times
      {-9, date(), {"%S", "%4YMd", "%D"}},
      {-52, date(6), {"%3YMD", "%4YMD"}},
      {-9, time(), {"%TS", "%S"}},
      {-52, time(), {"%5T"}},
      {-9, timestamp(), {"%T"}},
      {-52, timestamp(), {"%5TS"}},
  };
  for (const Row& row : rows) {
    for (const std::string& format : row.formats) {
      ParsedFormat parsed;
      EXPECT_EQ(parse(row.item, format, parsed), row.code) << format;
    }
  }
}

TEST(FormatParser, AFormatOfTheLargestSizeFits) {
  ParsedFormat parsed;
  EXPECT_EQ(parse(characters(128), std::string(128, 'x'), parsed), 0);
  EXPECT_EQ(parse(national(128), "%128N", parsed), 0);
  EXPECT_EQ(parsed.elements.size(), 128u);
}

TEST(FormatParser, ElementsHaveSequenceTextAndTheSignOfTheItem) {
  ParsedFormat parsed;
  ASSERT_EQ(parse({6, 0, 9, 9, 0}, "%3D'x'%2N", parsed), 0);
  const std::tuple<const char*, std::int32_t> rows[] = {{"3D", 1}, {"x", 0}, {"N", 0}, {"N", 0}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(parsed.elements[i].sequence, static_cast<std::int32_t>(i) + 1);
    EXPECT_EQ(std::tuple(field_text(parsed.elements[i].text), parsed.elements[i].sign), rows[i]);
  }
  ASSERT_EQ(parse(characters(9), "%3U", parsed), 0);
  EXPECT_EQ(parsed.elements[0].sign, 1);
}

}  // namespace
}  // namespace korvex
