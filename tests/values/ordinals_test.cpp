#include "values/ordinals.h"

#include <iconv.h>

#include "support/bytes.h"

namespace korvex {
namespace {

using test::hex;

TEST(FullWidthTable, TellingRows) {
  const std::pair<std::int32_t, std::uint16_t> rows[] = {
      {0, 0x8142},    {155, 0x8260},  {7327, 0xEEF6}, {7328, 0xFA48},
      {7329, 0xFA49}, {7331, 0xFA55}, {7332, 0xFA56}, {7333, 0xFA57}};
  for (const auto& [index, code] : rows) {
    EXPECT_EQ(full_width_code(index), code) << index;
    EXPECT_EQ(full_width_index(code), index) << std::hex << code;
  }
  EXPECT_EQ(full_width_code(7330), 0x81CA);
  for (const unsigned unknown : {0x8140, 0x8141, 0x81AD, 0xF040, 0xFA40, 0xEEF7, 0x0000, 0xFFFF}) {
    EXPECT_EQ(full_width_index(static_cast<std::uint16_t>(unknown)), 7333) << std::hex << unknown;
  }
}

// The ascending part must be what the code page assigns, as the system's converter knows it.
TEST(FullWidthTable, HoldsTheAssignedCodesInOrder) {
  const iconv_t converter = ::iconv_open("UTF-16LE", "CP932");
  ASSERT_NE(converter, reinterpret_cast<iconv_t>(-1));
  std::int32_t index = 0;
  for (unsigned code = 0x8142; code <= 0xEEF6; ++code) {
    char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    if (!platform::is_lead_byte(bytes[0])) continue;
    char unit[8];
    char* in = bytes;
    char* out = unit;
    std::size_t in_left = sizeof bytes;
    std::size_t out_left = sizeof unit;
    ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (::iconv(converter, &in, &in_left, &out, &out_left) != 0 || out_left != 6) continue;
    ASSERT_LT(index, 7328);
    ASSERT_EQ(full_width_code(index), code);
    ++index;
  }
  EXPECT_EQ(index, 7328);
  ::iconv_close(converter);
}

TEST(Ordinals, LettersCountInBase26) {
  const std::tuple<char, const char*, std::int32_t> rows[] = {
      {'A', "A", 0},   {'A', "AAB", 1},  {'A', "ABA", 26}, {'A', "ZZZZZ", 11'881'375},
      {'a', "aab", 1}, {'a', "zz", 675}, {'A', "", 0},
  };
  for (const auto& [base, text, ordinal] : rows) {
    EXPECT_EQ(letters_to_ordinal(base, text), ordinal) << text;
    std::string written(std::string_view(text).size(), base);
    ordinal_to_letters(base, ordinal, written.data(), written.size());
    EXPECT_EQ(written, text);
  }
}

TEST(Ordinals, FullWidthCountsInBase7334) {
  const std::pair<const char*, std::int32_t> rows[] = {
      {"82 4F", 145},        {"81 CA", 116}, {"FA 57", 7333}, {"85 40", 7333},
      {"81 43 81 44", 7336}, {"", 0},        {"81 43 81", 1}, {"FA 57 FA 57", 53'787'555},
  };
  for (const auto& [bytes, ordinal] : rows) {
    EXPECT_EQ(full_width_to_ordinal(hex(bytes)), ordinal) << bytes;
  }
}

TEST(Ordinals, ADigitOutsideEndsTheConversion) {
  const std::tuple<std::int32_t, std::string, const char*> letters[] = {
      {11'881'376, "QQQQQ", "QQQQQ"},
      {26, "Q", "Q"},
      {-1, "QQQ", "AAQ"},
      {-26, "QQQ", "AQQ"},
      {INT32_MIN, "QQQQQ", "QQQQQ"},
      {INT32_MAX, "QQQQQQQQ", "AGYTISYX"},
  };
  for (auto [ordinal, text, after] : letters) {
    ordinal_to_letters('A', ordinal, text.data(), text.size());
    EXPECT_EQ(text, after) << ordinal;
  }
  const std::tuple<std::int32_t, std::string, const char*> full_width[] = {
      {145, "82A0", "824F"},
      {7333, "82A0", "FA57"},
      {7334, "82A0", "82A0"},
      {7336, "82A082A0", "81438144"},
      {7334 * 7334, "82A082A0", "82A082A0"},
      {-1, "82A082A0", "814282A0"},
  };
  for (const auto& [ordinal, before, after] : full_width) {
    std::string text = hex(before);
    ordinal_to_full_width(ordinal, text.data(), text.size());
    EXPECT_EQ(text, hex(after)) << ordinal;
  }
}

}  // namespace
}  // namespace korvex
