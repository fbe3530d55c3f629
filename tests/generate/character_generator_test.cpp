#include "generate/character_generator.h"

#include "generate/item_settings.h"
#include "support/bytes.h"

namespace korvex::test {
namespace {

TEST(CharacterGeneratorTest, CountsLetters) {
  check_fields({
      {character_item, {"%3S", "AAY", "ABB", "1"}, "AAY|AAZ|ABA|ABB|AAY"},
      {character_item, {"%2s", "aa", "ak", "5"}, "aa|af|ak|aa"},
      {character_item, {"%3s", "aab", "aaa", "-1"}, "aab|aaa|aab"},
      {character_item, {"%5S", "ZZZZX", "ZZZZZ", "2"}, "ZZZZX|ZZZZZ|ZZZZX"},
      {character_item, {"%S'-'%s", "Y,b", "Z,c", "1"}, "Y-b|Z-c|Y-b"},
      // Restarts by itself unless it leads.
      {character_item, {"%S%3U", "A,1", "C,500", "1"}, "A001|B002|C003|A004|B005"},
      {character_item, {"%3U%s", "500,c", "1,a", "-1"}, "500c|499b|498a|497c"},
      {character_item, {"%S%3U", "A,1", "D,500", "2"}, "A001|C003|A005"},
      {character_item, {"%2S%S", "AA,X", "AD,Y", "1"}, "AAX|ABY|ACX|ADY|AAX"},
  });
}

std::string national_fields(const std::string& format, const std::string& start,
                            const std::string& end, const std::string& increment, int records) {
  const RangeTexts texts = {cp932(format), cp932(start), cp932(end), increment};
  return platform::to_utf8(fields(*make_column({national_item, texts}), records));
}

TEST(CharacterGeneratorTest, CountsFullWidthCharacters) {
  EXPECT_EQ(national_fields("%3N", "ＡＡＡ", "ＣＣＣ", "1", 4), "ＡＡＡ|ＢＢＢ|ＣＣＣ|ＡＡＡ");
  EXPECT_EQ(national_fields("%N", "Ｚ", "Ｖ", "-2", 4), "Ｚ|Ｘ|Ｖ|Ｚ");
  // Letters follow the digits although the code page leaves a gap between them.
  EXPECT_EQ(national_fields("%N", "８", "Ｂ", "1", 5), "８|９|Ａ|Ｂ|８");
  EXPECT_EQ(national_fields("%2N", "ＡＡ", "ＣＢ", "1", 4), "ＡＡ|ＢＢ|ＣＡ|ＡＡ");
  // A character behind the first may run against the increment: it then stands still.
  EXPECT_EQ(national_fields("'号'%2N", "ＡＸ", "ＣＡ", "1", 4), "号ＡＸ|号ＢＸ|号ＣＸ|号ＡＸ");
}

TEST(CharacterGeneratorTest, StopsChangingOutsideItsLetters) {
  auto column = make_column({character_item, {"%3s", "aab", "aaa", "-1"}});
  column->record.lead_element = 0;
  column->elements[0]->record.end.low = -3;
  EXPECT_EQ(fields(*column, 6), "aab|aaa|aaa|aaa|aaa|aab");
}

}  // namespace
}  // namespace korvex::test
