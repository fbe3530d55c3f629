#include "formatlang/range_check.h"

#include "format/record_text.h"
#include "formatlang/items.h"
#include "support/bytes.h"

namespace korvex {
namespace {

using namespace test;

struct Case {
  ItemAttributes item;
  std::string format;  // all texts UTF-8
  std::string start;
  std::string end;
  std::string increment = "1";

  std::string name() const { return format + " from " + start + " to " + end + " by " + increment; }
};

std::int32_t check(const Case& row, CheckedRange& range) {
  return check_range(row.item, {cp932(row.format), cp932(row.start), cp932(row.end), row.increment},
                     range);
}

// "start..end low span/high span" of each variable element, "*" marking the lead.
std::string describe(const CheckedRange& range) {
  std::string out;
  for (const FmtItemRec& element : range.elements) {
    if (element.kind == format_kind::fixed) continue;
    out += (out.empty() ? "" : " | ") + platform::to_utf8(field_text(element.start_text)) + ".." +
           platform::to_utf8(field_text(element.end_text)) + " " +
           std::to_string(element.span_low) + "/" + std::to_string(element.span_high) +
           (element.sequence == range.lead_element ? "*" : "");
  }
  return out;
}

const ItemAttributes u5 = number(5, 5);
const ItemAttributes s3 = signed_number(4, 3);
const ItemAttributes cents = number(6, 5, 2);
const ItemAttributes signed_cents = signed_number(8, 5, 2);

TEST(RangeCheck, SignedNumbersCountByTheirSigns) {
  const std::tuple<Case, std::int32_t, const char*> rows[] = {
      {{s3, "%3D", "1", "5", "1"}, 10, "+001..+005 4/0*"},
      {{s3, "%3D", "+1", "+5", "+1"}, 10, "+001..+005 4/0*"},
      {{s3, "%3D", "5", "1", "-1"}, 11, "+005..+001 4/0*"},
      {{s3, "%3D", "5", "-5", "-1"}, 12, "+005..-005 10/0*"},
      {{s3, "%3D", "-1", "-5", "-1"}, 20, "-001..-005 4/0*"},
      {{s3, "%3D", "-5", "-1", "1"}, 21, "-005..-001 4/0*"},
      {{s3, "%3D", "-5", "5", "1"}, 22, "-005..+005 10/0*"},
      {{signed_cents, "%.2D", "-0.05", "0.05", "0.01"}, 22, "-0.05..+0.05 10/0*"},
      {{characters(4), "%3D", "-5", "5", "1"}, 22, "-005..+005 10/0*"},
      {{signed_number(21, 20), "%20D", "1", "5", "1"},
       10,
       "+000000000000000001..+000000000000000005 4/0*"},
      {{signed_number(19, 18), "%18D", "-999999999999999999", "999999999999999999", "1"},
       22,
       "-999999999999999999..+999999999999999999 1999999998/1999999998*"},
  };
  for (const auto& [row, sub_kind, expected] : rows) {
    CheckedRange range;
    EXPECT_EQ(check(row, range), 0) << row.name();
    EXPECT_EQ(describe(range), expected) << row.name();
    EXPECT_EQ(range.elements.at(0).sign, sub_kind) << row.name();
  }
}

TEST(RangeCheck, WorksOutSpansTextsAndTheLead) {
  const std::pair<Case, const char*> rows[] = {
      {{u5, "%3U", "0", "9"}, "000..009 9/0*"},
      {{u5, "%3U", "1", "10", "9"}, "001..010 9/0*"},
      {{u5, "12'%3U", "1", "9"}, "001..009 8/0*"},
      {{cents, "%3.2U", "1.5", "99.99", "0.05"}, "001.50..099.99 9849/0*"},
      {{cents, "%.2U", "0.05", "0.99", "0.01"}, "0.05..0.99 94/0*"},
      {{cents, "%2.1U", "1.5", "3.0", "0.5"}, "01.5..03.0 15/0*"},
      {{number(18, 18), "%18U", "123456789012345678", "123456789012345999"},
       "123456789012345678..123456789012345999 321/0*"},
      {{number(18, 18), "%10U", "1000000005", "2000000003"}, "1000000005..2000000003 -2/1*"},
      {{number(20, 20), "%20U", "1", "5"}, "000000000000000001..000000000000000005 4/0*"},
      // Dates and times
      {{date(), "%4YMD", "20000229", "20000301"}, "20000229..20000301 72/0*"},
      {{date(), "%4YMD", "20000301", "20000229", "-1"}, "20000301..20000229 72/0*"},
      {{date(), "%2YMD", "991231", "000101"}, "991231..000101 98870/98870*"},
      {{date(), "%YMA", "000101", "001231"}, "000101..001231 1130/1130*"},
      {{date(), "%2YMA", "001231", "000101", "-1"}, "001231..000101 1130/1130*"},
      {{date(), "%4YMA", "20000230", "20000231"}, "20000230..20000231 1/0*"},
      {{time(), "%T", "000000", "235959"}, "000000..235959 235959/0*"},
      {{timestamp(), "%TS", "19700101 090000", "20380119 031407"},
       "19700101 090000..20380119 031407 -58593/680018*"},
      {{timestamp(), "%TS", "20000101T120000", "20000101T120005"},
       "20000101 120000..20000101 120005 5/0*"},
      // Characters
      {{characters(3), "%3S", "ABC", "ABD"}, "ABC..ABD 1/0*"},
      {{characters(3), "%3s", "zzz", "aaa", "-1"}, "zzz..aaa 17575/0*"},
      {{characters(3), "%3S", "+AAA", "BAA"}, "AAA..BAA 676/0*"},
      {{characters(6), "%2S'-'%3U", "AA,100", "AC,900"}, "AA..AC 2/0 | 100..900 800/0*"},
      {{characters(6), "%2S'-'%3U", "AA,,100", "ZZ,,101,"}, "AA..ZZ 675/0* | 100..101 1/0"},
      {{characters(4), "%2S%2S", "AA,AA", "AZ,AZ"}, "AA..AZ 25/0* | AA..AZ 25/0"},
      {{characters(8), "%2U%T", "10,000000", "20,000010"}, "10..20 10/0* | 000000..000010 10/0"},
      {{characters(20), "%10U%10U", "1,1", "6,1000000006"},
       "0000000001..0000000006 5/0 | 0000000001..1000000006 5/1*"},
      {{characters(20), "%10U%10U", "1,1", "1000000002,6"},
       "0000000001..1000000002 1/1* | 0000000001..0000000006 5/0"},
      {{{1, 1, 3, 0, 0}, "%3S", "AAA", "AAC"}, "AAA..AAC 2/0*"},
      // Full-width characters
      {{national(3), "%3N", "あいう", "うえお"}, "あ..う 4/0* | い..え 4/0 | う..お 4/0"},
      {{national(2), "%2N", "あい", "いあ"}, "あ..い 2/0* | い..あ -2/0"},
      {{national(3), "%2N%N", "あい,う", "いう,え"}, "あ..い 2/0* | い..う 2/0 | う..え 2/0"},
      {{national(2), "%2N", "いあ", "あい", "-1"}, "い..あ 2/0* | あ..い -2/0"},
      {{characters(6), "%3N", "あいう", "あいお"}, "あ..あ 0/0 | い..い 0/0 | う..お 4/0*"},
      {{characters(8), "%2N%2N", "あい,うえ", "うい,うお"},
       "あ..う 4/0* | い..い 0/0 | う..う 0/0 | え..お 2/0"},
      {{characters(7), "%2N'x'%2S", "あい,AA", "いあ,AC"},
       "あ..い 2/0* | い..あ -2/0 | AA..AC 2/0"},
      {{characters(5), "%3U%N", "100,い", "900,う"}, "100..900 800/0* | い..う 2/0"},
  };
  for (const auto& [row, expected] : rows) {
    CheckedRange range;
    EXPECT_EQ(check(row, range), 0) << row.name();
    EXPECT_EQ(describe(range), expected) << row.name();
  }
}

TEST(RangeCheck, RefusesSettingsWithTheCodeOfTheFirstRuleBroken) {
  const std::string text_129(129, '1');
  const ItemAttributes text = characters(9);
  const ItemAttributes wide = number(10, 10);
  const std::pair<std::int32_t, std::vector<Case>> rows[] = {
      {-7, {{{29, 1, 5, 5, 0}, "%5U", "1", "5"}, {{0, 1, 5, 5, 0}, "", "", ""}}},
      {-35, {{u5, "", "", ""}}},
      {-9, {{u5, "%5S", "", ""}}},
      // Lists
      {-37, {{u5, "%3U", "", ""}}},
      {-38, {{u5, "%3U", "1", ""}}},
      {-13, {{u5, "%3U", "1,2", "5"}, {u5, "%3U", ",", "5"}, {text, "%S%U", "A,1,1", "B,2"}}},
      {-14, {{u5, "%3U", "1", "5,6"}, {u5, "%3U", "1", ","}}},
      {-49, {{u5, "%3U", text_129, "5"}}},
      {-50, {{u5, "%3U", "1", text_129}}},
      {-8, {{u5, "%3U", text_129.substr(1), "5"}, {cents, "%3.2U", "1", "5", "0.555"}}},
      {-15, {{u5, "%3U", "+1", "5"}, {u5, "%3U", "-1", "5"}, {text, "%S%U", "A,+1", "B,2"}}},
      {-16, {{u5, "%3U", "1", "+5"}, {text, "%S%U", "A,1", "B,-2"}}},
      // Increments
      {-20, {{u5, "%3U", "1", "5", ""}, {u5, "%3U", "1", "5", "0"}, {u5, "%3U", "1", "5", "-0"}}},
      {-20, {{wide, "%9U", "1", "500", "10"}, {wide, "%9U", "1", "500", "9.1"}}},
      {-20, {{u5, "%3U", "1", "5", "x"}, {u5, "%3U", "1", "5", "0x1"}}},
      {-20, {{u5, "%3U", "1", "5", "inf"}, {u5, "%3U", "1", "5", "nan"}}},
      {-18, {{u5, "%3U", "1", "5", std::string(23, '0') + "1"}, {u5, "%3U", "1", "3", "3"}}},
      {0, {{u5, "%3U", "1", "5", std::string(22, '0') + "1"}, {u5, "%3U", "1", "3", "2"}}},
      {-18, {{u5, "%3U", "1", "3", "-1"}, {cents, "%3.2U", "1", "9", "9"}}},
      {-23, {{u5, "%3U", "1", "5", "0.5"}, {text, "%3U", "1.5", "5"}}},
      {-25, {{u5, "%3U", "1", "5", "1x"}, {u5, "%3U", "1a", "5"}, {u5, "%3U", "1", "5a"}}},
      // Directions
      {-17, {{s3, "%3D", "+1", "-1", "+1"}, {s3, "%3D", "-5", "5", "-1"}}},
      {-17, {{s3, "%3D", "5", "-5", "1"}, {s3, "%3D", "5", "5"}}},
      {-18, {{s3, "%3D", "5", "3"}, {text, "%3S", "BAA", "AAA"}}},
      {-17, {{wide, "%10U", "2000000002", "1000000001"}}},
      {-17, {{wide, "%10U", "2000000001", "1000000001"}}},
      {-17, {{date(), "%2YMD", "000101", "991231"}}},
      {-17, {{national(2), "%2N", "いあ", "あい"}, {national(2), "%2N", "あい", "あい"}}},
      {-17, {{national(2), "%2N", "あい", "いあ", "-1"}, {national(1), "%N", "あ", "ぃ", "2"}}},
      {-17, {{characters(4), "%2N", "いあ", "あい"}, {characters(4), "%2N", "あ", "い", "-1"}}},
      {-17, {{characters(6), "%2U%2N", "10,いあ", "20,あい"}}},
      // Signs and values
      {-46, {{s3, "%3U", "-1", "5"}, {s3, "%3U", "1", "+5"}, {text, "%3U", "+1", "5"}}},
      {-24, {{cents, "%3.2U", ".5", "5"}}},
      {-19, {{text, "%3S", "AbC", "ZZZ"}, {characters(6), "%3N", "あいx", "いうx"}}},
      {-22, {{text, "%3S", "AAA", "ZZ"}, {national(3), "%3N", "あい", "いう"}}},
      {-22, {{national(3), "%3N", "あいうえ", "いいうえ"}}},
      {-22, {{characters(6), "%3N", "あい", "いう"}}},
      {-22, {{characters(6), "%3N", "あいうえ", "いいうえ"}}},
      {-22, {{characters(8), "%2N%2N", "あいう,え", "いいう,お"}}},
      {-10, {{characters(9), "%70N", "あ", "い"}}},
      {-58, {{date(), "%2YMD", "500101", "991231"}}},
  };
  for (const auto& [code, cases] : rows) {
    for (const Case& row : cases) {
      CheckedRange range;
      EXPECT_EQ(check(row, range), code) << row.name();
    }
  }
}

TEST(RangeCheck, AFormatWithoutDirectivesNeedsNoValues) {
  CheckedRange range;
  range.increment.low = 7;
  ASSERT_EQ(check({characters(9), "AB'CD", "", "", "no number"}, range), 0);
  EXPECT_EQ(range.elements.size(), 2u);
  EXPECT_EQ(range.lead_element, 2);
  EXPECT_EQ(range.variable_count, 0);
  EXPECT_EQ(range.increment.low, 7);
}

TEST(RangeCheck, ACountedDirectiveIsOneDirective) {
  CheckedRange range;
  ASSERT_EQ(check({national(3), "%3N", "あいう", "うえお"}, range), 0);
  EXPECT_EQ(range.variable_count, 1);
  ASSERT_EQ(range.elements.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(range.elements[i].group_start, i == 0 ? 1 : 0);
    EXPECT_EQ(range.elements[i].start.low, 208 + 2 * static_cast<std::int32_t>(i));
    EXPECT_EQ(range.elements[i].start.sign, i == 0 ? 1 : 0);
  }
}

}  // namespace
}  // namespace korvex
