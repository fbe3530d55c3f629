#include "host/text/code_page_text.h"

#include <gtest/gtest.h>

#include "platform/codepage.h"

namespace korvex::host {
namespace {

constexpr const char* unknown = "\xEF\xBF\xBD";

// Every byte and every pair, among others and alone, means what the system's converter says.
TEST(CodePageDecoder, AgreesWithTheSystem) {
  CodePageDecoder decoder;
  std::string out;
  const auto check = [&](const std::string& text) {
    const std::string expected = platform::to_utf8(text);
    const std::size_t bad = expected.find(unknown);
    const bool is_known = bad == std::string::npos;
    ASSERT_EQ(decoder.decode(text, out), is_known) << testing::PrintToString(text);
    ASSERT_EQ(out, expected.substr(0, bad)) << testing::PrintToString(text);
  };
  for (int first = 0; first < 0x100; ++first) {
    const std::string single(1, static_cast<char>(first));
    check(single);
    for (int second = 0; second < 0x100; ++second) {
      check(single + static_cast<char>(second) + "A,\xB1\x88\x9F");
    }
  }
}

}  // namespace
}  // namespace korvex::host
