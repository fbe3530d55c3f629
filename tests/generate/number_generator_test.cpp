#include "generate/number_generator.h"

#include "generate/item_settings.h"

namespace korvex::test {
namespace {

constexpr ItemAttributes two_decimals = {4, 0, 20, 4, 2};
constexpr ItemAttributes only_decimals = {4, 0, 20, 2, 2};
constexpr ItemAttributes signed_only_decimals = {4, 1, 20, 2, 2};
constexpr ItemAttributes long_decimals = {4, 1, 20, 18, 10};

TEST(NumberGeneratorTest, CountsEveryWay) {
  check_fields({
      {signed_item, {"%5D", "1", "3", "1"}, "+00001|+00002|+00003|+00001"},
      {signed_item, {"%2D", "3", "1", "-1"}, "+03|+02|+01|+03"},
      {signed_item, {"%3D", "2", "-2", "-1"}, "+002|+001|+000|-001|-002|+002"},
      {signed_item, {"%3D", "2", "-5", "-3"}, "+002|-001|-004|+002"},
      {signed_item, {"%2D", "-1", "-3", "-1"}, "-01|-02|-03|-01"},
      {signed_item, {"%2D", "-3", "-1", "1"}, "-03|-02|-01|-03"},
      {signed_item, {"%3D", "-2", "1", "1"}, "-002|-001|+000|+001|-002"},
      {signed_item, {"%3D", "-4", "5", "3"}, "-004|-001|+002|+005|-004"},
      {unsigned_item, {"%5U", "99998", "99999", "1"}, "99998|99999|99998"},
      {unsigned_item, {"%2U", "10", "0", "-4"}, "10|06|02|10"},
      {unsigned_item, {"%3U'7'", "9", "11", "1"}, "0097|0107|0117|0097"},
      {two_decimals, {"%2.2U", "9.98", "10.00", "0.01"}, "09.98|09.99|10.00|09.98"},
      {two_decimals, {"%2.1U", "1", "0.5", "-0.2"}, "01.0|00.8|00.6|01.0"},
      {only_decimals, {"%.2U", "0.25", "0.26", "0.01"}, "0.25|0.26|0.25"},
      {only_decimals, {"%.2U", "0.25", "0.26", "0.01"}, ".25|.26|.25", 3},
      {signed_only_decimals, {"%.2D", "0.01", "-0.01", "-0.01"}, "+.01|+.00|-.01|+.01", 2},
      {two_decimals, {"%.2U", "0.25", "0.26", "0.01"}, "0.25|0.26|0.25", 2},
      // Only the lead element's end counts: another number goes on, cut to its width.
      {character_item, {"%S%U", "A,8", "Z,9", "1"}, "A8|B9|C0|D1"},
      {character_item, {"%2D%2S", "1,ZZ", "-1,AA", "-1"}, "+01ZZ|+00ZY|-01ZX|-02ZW"},
  });
}

TEST(NumberGeneratorTest, CrossesTheHalvesAndZero) {
  const RangeTexts to_ten = {"%10U", "999999999", "1000000001", "1"};
  const RangeTexts from_ten = {"%10U", "1000000012", "10", "-5"};
  const RangeTexts longest = {"%18U", "999999999999999998", "999999999999999999", "1"};
  check_fields({
      {unsigned_item, to_ten, "0999999999|1000000000|1000000001|0999999999"},
      // The low half falls below the end's long before the number does.
      {unsigned_item, from_ten, "1000000012|1000000007|1000000002|0999999997|0999999992"},
      {unsigned_item, longest, "999999999999999998|999999999999999999|999999999999999998"},
      {signed_item, {"%10D", "1000000001", "-5", "-2"}, "+1000000001|+0999999999|+0999999997"},
      {long_decimals,
       {"%3.10D", "0.7", "-1", "-0.5000000001"},
       "+000.7000000000|+000.1999999999|-000.3000000002|-000.8000000003|+000.7000000000"},
      {long_decimals,
       {"%3.10D", "-0.5", "0.6", "0.5"},
       "-000.5000000000|+000.0000000000|+000.5000000000|-000.5000000000"},
  });
}

TEST(NumberGeneratorTest, CutsTheFieldWhereAStepFails) {
  const RangeTexts texts = {"%2S%U'-X'", "ZZ,2", "AA,0", "-1"};
  check_fields({{character_item, texts, "ZZ2-X|ZY1-X|ZX0|ZZ2-X|ZY1-X"}});
  EXPECT_EQ(fields(*make_column({character_item, texts, exceeded_action::initialize}), 5),
            "ZZ2-X|ZY1-X|ZX0||");

  auto column = make_column({signed_item, {"%18D", "1", "9", "1"}});
  FmtItemRec& element = column->elements[0]->record;
  element.end.high = 1'999'999'999;  // so that only the step itself can end the cycle
  element.current.high = element.current.low = 999'999'999;
  EXPECT_EQ(fields(*column, 3), "+000000000000000001|+000000000000000001|+000000000000000002");
}

TEST(NumberGeneratorTest, WritesAnyWidthThatAFileClaims) {
  const std::string longest = "+1|+000000000000000002";
  const std::pair<std::int32_t, std::string> cases[] = {
      {0, "|"}, {-5, "|"}, {1, "1|+"}, {19, longest}, {131, longest}, {2'000'000'000, longest}};
  for (const auto& [width, expected] : cases) {
    auto column = make_column({signed_item, {"%D", "1", "9", "1"}});
    column->elements[0]->record.width = width;
    EXPECT_EQ(fields(*column, 2), expected) << width;
  }
}

}  // namespace
}  // namespace korvex::test
