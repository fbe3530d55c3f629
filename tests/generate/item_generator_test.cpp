#include "generate/item_generator.h"

#include <set>

#include "generate/item_settings.h"
#include "generate/random_settings.h"

namespace korvex::test {
namespace {

const RangeTexts one_to_three = {"%U", "1", "3", "1"};

TEST(ItemGeneratorTest, RepeatsOrEmptiesBehindTheEnd) {
  EXPECT_EQ(fields(*make_column({unsigned_item, one_to_three, 1}), 7), "1|2|3|1|2|3|1");
  EXPECT_EQ(fields(*make_column({unsigned_item, one_to_three, 0}), 6), "1|2|3|||");
  EXPECT_EQ(fields(*make_column({character_item, {"'<'%S'>'", "A", "B", "1"}, 0}), 4), "<A>|<B>||");
  // Fixed text alone never ends.
  EXPECT_EQ(fields(*make_column({character_item, {"'AB''CD'", "", "", ""}, 0}), 2), "ABCD|ABCD");
}

TEST(ItemGeneratorTest, QuotesByAttribute) {
  const std::set<std::int32_t> quoted = {1, 2, 3, 11, 12, 28, 31, 32};
  auto column = make_column({unsigned_item, one_to_three, exceeded_action::initialize});
  for (std::int32_t attribute = 0; attribute <= 33; ++attribute) {
    column->record.attribute = attribute;
    const bool marks = quoted.contains(attribute);
    EXPECT_EQ(fields(*column, 5, 1, true), marks ? "\"1\"|\"2\"|\"3\"|\"\"|\"\"" : "1|2|3||")
        << attribute;
    EXPECT_EQ(fields(*column, 5, 1, false), "1|2|3||") << attribute;
  }
}

TEST(ItemGeneratorTest, InitialValueIsABareComma) {
  auto column = make_column({character_item, {"%S", "A", "Z", "1"}});
  column->record.generation_type = generation_type::initial_value;
  for (const bool quotation : {false, true}) {
    EXPECT_EQ(generate_lines(*column, 1, quotation, 2).lines, (std::vector<std::string>{",", ","}));
  }
  column->record.generation_type = generation_type::reference;
  EXPECT_EQ(fields(*column, 3), "A|B|C");
}

TEST(ItemGeneratorTest, WithoutALeadNothingEnds) {
  auto column = make_column({character_item, {"'-'%S%U", "Y,8", "Z,9", "1"}, 0});
  for (const std::int32_t lead : {0, 1, 4}) {
    column->record.lead_element = lead;
    EXPECT_EQ(fields(*column, 4), "-Y8|-Z9|-Y0|-Z1") << lead;
  }
}

TEST(ItemGeneratorTest, UnknownWaysOfCountingFailTheRun) {
  const std::tuple<std::int32_t, std::int32_t, std::string> cases[] = {
      {900, 13, "-40"}, {900, 1, "-40"},  {902, 12, "-40"},   {902, 22, "-40"},
      {0, 10, "-7"},    {1001, 10, "-7"}, {902, 10, "+1|+2"}, {902, 11, "+1|+0"},
  };
  for (const auto& [kind, sub_kind, expected] : cases) {
    auto column = make_column({signed_item, {"%D", "1", "9", "1"}});
    FmtItemRec& element = column->elements[0]->record;
    element.kind = kind;
    element.sign = sub_kind;
    element.end.low = sub_kind == 11 ? 0 : 9;
    EXPECT_EQ(fields(*column, 2), expected) << kind << " " << sub_kind;
    element.start_text[0] = '\0';
    EXPECT_EQ(fields(*column, 2), "|") << "an element without a text is never asked";
  }
}

// Records of random bytes: whatever they say, a field stays as large as its elements can be.
TEST(ItemGeneratorTest, SurvivesAnyRecord) {
  RandomSettings random(19700101);
  constexpr std::int32_t kinds[] = {900, 901, 902, 903, 904, 905, 906, 907, 908, 999, 1002, 1003};
  constexpr std::size_t most_bytes = 3 * ElementGenerator::max_text_size + 3;
  for (int i = 0; i < 3000; ++i) {
    const auto randomize = [&random](auto& record) {
      for (char& byte : reinterpret_cast<char(&)[sizeof record]>(record)) {
        byte = static_cast<char>(random.between(0, 255));
      }
    };
    ClFmtColInf column;
    randomize(column.record);
    column.record.generation_type = generation_type::range;
    column.record.increment.sign = static_cast<std::int32_t>(random.between(0, 2));
    std::vector<FmtItemRec> elements(3);
    for (FmtItemRec& element : elements) {
      randomize(element);
      element.kind = kinds[random.between(0, std::ssize(kinds) - 1)];
      element.sign = static_cast<std::int32_t>(random.between(10, 12));
      element.width = static_cast<std::int32_t>(random.between(-1, 140));
    }
    column.set_elements(elements);
    column.record.lead_element = elements[0].sequence;
    for (const std::string& line : generate_lines(column, i % 3 + 1, i % 2 == 0, 8).lines) {
      ASSERT_LE(line.size(), most_bytes) << "settings " << i;
    }
  }
}

}  // namespace
}  // namespace korvex::test
