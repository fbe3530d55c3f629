#include "host/code_page_decoder.h"

#include <gtest/gtest.h>

#include "platform/codepage.h"

namespace korvex::host {
namespace {

// Every byte and every pair, among others and alone, means what the system's converter says.
TEST(CodePageDecoder, AgreesWithTheSystem) {
  CodePageDecoder decoder;
  std::string out;
  for (int first = 0; first < 0x100; ++first) {
    const std::string single(1, static_cast<char>(first));
    decoder.decode(single, out);
    EXPECT_EQ(out, platform::to_utf8(single)) << first;
    std::string known;
    for (int second = 0; second < 0x100; ++second) {
      const std::string pair = single + static_cast<char>(second);
      decoder.decode(pair + "A,\xB1\x88\x9F", out);
      const std::string expected = platform::to_utf8(pair + "A,\xB1\x88\x9F");
      ASSERT_EQ(out, expected) << first << " " << second;
      if (expected.find("\xEF\xBF\xBD") == std::string::npos) known += pair + ",";
    }
    decoder.decode(known, out);
    EXPECT_EQ(out, platform::to_utf8(known)) << first;
  }
}

}  // namespace
}  // namespace korvex::host
