#include "platform/codepage.h"

#include <sys/resource.h>
#include <unistd.h>

#include "platform/printable_text.h"
#include "support/bytes.h"

namespace korvex::platform {
namespace {

using test::hex;

TEST(Codepage, KnowsTheShapeOfDoubleBytes) {
  for (int lead = 0; lead <= 0xFF; ++lead) {
    const bool is_lead = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    EXPECT_EQ(is_lead_byte(static_cast<char>(lead)), is_lead) << lead;
    for (int trail = 0; trail <= 0xFF; ++trail) {
      const bool is_trail = (trail >= 0x40 && trail <= 0x7E) || (trail >= 0x80 && trail <= 0xFC);
      EXPECT_EQ(is_legal_double_byte(static_cast<char>(lead), static_cast<char>(trail)),
                is_lead && is_trail)
          << lead << ' ' << trail;
    }
  }
}

TEST(Codepage, ComparesCharacterByCharacter) {
  const std::tuple<const char*, const char*, int> rows[] = {
      {"", "", 0},
      {"82 A0", "82 A0", 0},
      {"82 A0", "82 A2", -1},
      {"83 40", "82 F1", 1},
      {"82 A0", "82 A0 82 A0", -1},
      {"41", "82 A0", -1},
      // A half-width character is one byte, below every double-byte one.
      {"B1", "81 42", -1},
      {"DF", "E0 40", -1},
  };
  for (const auto& [left, right, expected] : rows) {
    const int order = compare_characters(hex(left), hex(right));
    EXPECT_EQ((order > 0) - (order < 0), expected) << left << " : " << right;
  }
}

TEST(Codepage, ConvertsBothWays) {
  const std::pair<const char*, const char*> rows[] = {
      {"AZ~\\", "41 5A 7E 5C"}, {"あん", "82 A0 82 F1"}, {"Ｚ", "82 79"}, {"ｱ", "B1"},
      {"～－", "81 60 81 7C"},  {"①", "87 40"},          {"熙", "EA A4"}, {"", ""},
  };
  for (const auto& [utf8, bytes] : rows) {
    EXPECT_EQ(from_utf8(utf8), hex(bytes)) << utf8;
    EXPECT_EQ(to_utf8(hex(bytes)), utf8) << bytes;
  }
  std::string many;
  for (int i = 0; i < 3000; ++i) many += "あ";
  EXPECT_EQ(to_utf8(from_utf8(many).value_or("")), many);
  // It says where a text cannot be converted, and shows broken bytes as replacement characters.
  const std::pair<const char*, std::size_t> bad[] = {{"ab😀", 2}, {"あ\xFF", 3}, {"\xE3\x81", 0}};
  for (const auto& [text, offset] : bad) {
    std::size_t bad_offset = 99;
    EXPECT_FALSE(from_utf8(text, &bad_offset)) << text;
    EXPECT_EQ(bad_offset, offset) << text;
  }
  EXPECT_EQ(to_utf8(hex("41 82")), "A\uFFFD");
  EXPECT_EQ(to_utf8(hex("FF 42")), "\uFFFDB");
  EXPECT_EQ(to_utf8(hex("82 A0 85 40 82 A0")).substr(0, 6), "あ\uFFFD");
}

// Without a file to open there is no converter, which says nothing about the text.
TEST(Codepage, AMissingConverterIsAFailureOfItsOwn) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizers need to open files too";
#endif
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // in a process that has opened none before
  const auto fails = [](auto convert) {
    try {
      convert();
      return false;
    } catch (const ConverterFailure&) {
      return true;
    }
  };
  EXPECT_EXIT(
      {
        const rlimit none = {};
        ::setrlimit(RLIMIT_NOFILE, &none);
        const bool is_right =
            fails([] { static_cast<void>(from_utf8("\xFF")); }) && fails([] { to_utf8("\xFF"); }) &&
            fails([] { exact_printable_from_code_page("\xFF"); }) && from_utf8("A") == "A" &&
            to_utf8("A") == "A" && shown_in_utf8("A\x82\xA0") == "A??";
        ::_exit(is_right ? 7 : 1);
      },
      testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace korvex::platform
