#include "generate/item_generator.h"

#include "generate/random_settings.h"

namespace korvex::test {
namespace {

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
