#include "formatlang/value_parser.h"

#include <sstream>

#include "format/record_text.h"
#include "support/bytes.h"

namespace korvex {
namespace {

struct Shape {
  std::int32_t kind;
  std::int32_t digits;
  std::int32_t decimals = 0;
};

constexpr Shape cents = {901, 3, 2};
constexpr Shape letters = {904, 3};
constexpr Shape date = {906, 8};
constexpr Shape short_date = {906, 6};
constexpr Shape unchecked = {907, 8};
constexpr Shape short_unchecked = {907, 6};
constexpr Shape time_of_day = {1002, 6};
constexpr Shape moment = {1003, 15};

std::int32_t parse(const Shape& shape, const std::string& utf8, FmtValRec& value) {
  FmtItemRec element = {};
  element.kind = shape.kind;
  element.digits = shape.digits;
  element.decimals = shape.decimals;
  return parse_value(element, test::cp932(utf8), value);
}

// "position low 'low text' high 'high text'"; for dates and times "low high" and the six words.
std::string describe(const FmtValRec& value) {
  std::ostringstream out;
  const std::uint16_t words[] = {value.year, value.month,  value.day,
                                 value.hour, value.minute, value.second};
  if (std::any_of(std::begin(words), std::end(words), [](auto word) { return word != 0; })) {
    out << value.low << ' ' << value.high;
    for (const std::uint16_t word : words) out << ' ' << word;
  } else {
    out << value.position << ' ' << value.low << " '"
        << platform::to_utf8(field_text(value.low_text)) << "' " << value.high << " '"
        << field_text(value.high_text) << "'";
  }
  return out.str();
}

TEST(ValueParser, FillsValueRecords) {
  const std::tuple<Shape, const char*, const char*> rows[] = {
      {{901, 3}, "0007", "0 7 '7' 0 ''"},
      {{901, 3}, "000", "0 0 '' 0 ''"},
      {{903, 9}, "999999999", "0 999999999 '999999999' 0 ''"},
      {{900, 10}, "1000000005", "0 5 '000000005' 1 '1'"},
      {{901, 18}, "123456789012345678", "0 12345678 '012345678' 123456789 '123456789'"},
      {cents, "1.5", "1 150 '150' 0 ''"},
      {cents, "12", "0 1200 '1200' 0 ''"},
      {cents, "0.05", "1 5 '005' 0 ''"},
      {{901, 10, 2}, "1234567890.12", "10 456789012 '456789012' 123 '123'"},
      {{901, 0, 18}, "0.000000000000000001", "1 1 '000000001' 0 ''"},
      {letters, "AAB", "0 1 'AAB' 0 ''"},
      {{904, 6}, "XAAAAB", "1 1 'AAAAB' 0 ''"},
      {{908, 3}, "aba", "0 26 'aba' 0 ''"},
      {{905, 2}, "あい", "0 1525682 'あい' 0 ''"},
      {{905, 3}, "んあい", "2 1525682 'あい' 0 ''"},
      {date, "19700101", "19700101 0 1970 1 1 0 0 0"},
      {date, "20380119", "20380119 0 2038 1 19 0 0 0"},
      {date, "20000229", "20000229 0 2000 2 29 0 0 0"},
      {short_date, "700101", "700101 0 1970 1 1 0 0 0"},
      {short_date, "991231", "991231 0 1999 12 31 0 0 0"},
      {short_date, "000101", "101 0 2000 1 1 0 0 0"},
      {short_date, "380119", "380119 0 2038 1 19 0 0 0"},
      {unchecked, "00010230", "10230 0 1 2 30 0 0 0"},
      {unchecked, "99991231", "99991231 0 9999 12 31 0 0 0"},
      {short_unchecked, "000131", "131 0 0 1 31 0 0 0"},
      {short_unchecked, "500101", "500101 0 50 1 1 0 0 0"},
      {time_of_day, "235959", "235959 0 0 0 0 23 59 59"},
      {moment, "19700101 090000", "90000 19700101 1970 1 1 9 0 0"},
      {moment, "20380119 031407", "31407 20380119 2038 1 19 3 14 7"},
      {moment, "20000230x235959", "235959 20000230 2000 2 30 23 59 59"},
      {moment, "20000101", "101 20000101 2000 1 1 0 1 1"},
  };
  for (const auto& [shape, text, expected] : rows) {
    FmtValRec value = {};
    EXPECT_EQ(parse(shape, text, value), 0) << shape.kind << ' ' << text;
    EXPECT_EQ(describe(value), expected) << shape.kind << ' ' << text;
  }
}

TEST(ValueParser, RefusesValuesWithTheCodeOfTheFirstRuleBroken) {
  struct Row {
    std::int32_t code;
    Shape shape;
    std::vector<std::string> values;
  };
  const Row rows[] = {
      {-23, {903, 3}, {"1.5", ".5"}},
      {-35, {903, 3, 1}, {"1"}},
      {-24, cents, {".5", "5."}},
      {-24, {901, 3}, {"5."}},
      {-23, {901, 3}, {"1.5"}},
      {-8, {901, 3}, {"1000", std::string(128, '1')}},
      {-8, cents, {"1000.5", "1.555", "1000"}},
      {-8, {901, 0, 2}, {"1"}},
      {-8, {901, 30}, {"1234567890123456789"}},
      {-25, {901, 3}, {"1a", " 1", "1-"}},
      {-25, cents, {"1.a"}},
      {-22, letters, {"AB", "ABCD", ""}},
      {-19, letters, {"AbC", "A1C", "A[C"}},
      {-19, {908, 3}, {"aBc", "a{c"}},
      {-19, {905, 1}, {"A", "ABC", "AB"}},
      {-22, {905, 2}, {"あ", "あああ"}},
      {-54, date, {"2000010", "200001011"}},
      {-54, short_date, {"20000101"}},
      {-59, date, {"20000100", "20000001", "00000101", "2000010a"}},
      {-58, date, {"19691231", "20380120", "20000230", "19000101", "20010229", "20000431"}},
      {-58, date, {"20001301", "20000132"}},
      {-58, short_date, {"691231", "390101", "500101", "380120"}},
      {-54, unchecked, {"200001"}},
      {-25, unchecked, {"2000010a"}},
      {-59, unchecked, {"20000100", "20000001", "00000101"}},
      {-58, unchecked, {"20000132", "20001301"}},
      {-59, short_unchecked, {"000100"}},
      {-55, time_of_day, {"23595", "2359590"}},
      {-25, time_of_day, {"23595a"}},
      {-58, time_of_day, {"240000", "236000", "235960"}},
      {-56, moment, {"20000101 0000000"}},
      {-59, moment, {"00000101 000000", "20000001 000000", "20000100 000000", "2000", ""}},
      {-58, moment, {"19700101 085959", "19691231 235959", "20380119 031408"}},
      {-58, moment, {"20380120 000000", "20001301 000000", "20000132 000000"}},
      {-58, moment, {"20000101 240000", "20000101 006000", "20000101 000060"}},
  };
  for (const Row& row : rows) {
    for (const std::string& text : row.values) {
      FmtValRec value = {};
      EXPECT_EQ(parse(row.shape, text, value), row.code) << row.shape.kind << ' ' << text;
    }
  }
}

}  // namespace
}  // namespace korvex
