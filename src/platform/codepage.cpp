#include "platform/codepage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "platform/utf8.h"

namespace korvex::platform {

namespace {

constexpr const char* code_page = "CP932";
constexpr const char* replacement_character = "\xEF\xBF\xBD";

unsigned byte_value(char byte) { return static_cast<unsigned char>(byte); }

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(::iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) fail("the converter cannot be opened");
  }
  ~Converter() { ::iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Appends what can be converted from the front of `text` to `out`; answers how many bytes of
  // `text` that took.
  std::size_t convert(std::string_view text, std::string& out) {
    char* input = const_cast<char*>(text.data());
    std::size_t input_left = text.size();
    std::array<char, 1024> block;
    while (input_left > 0) {
      char* output = block.data();
      std::size_t output_left = block.size();
      const std::size_t result = ::iconv(handle_, &input, &input_left, &output, &output_left);
      out.append(block.data(), block.size() - output_left);
      if (result != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
      if (errno == EILSEQ || errno == EINVAL) break;
      fail("the converter does not work");
    }
    return text.size() - input_left;
  }

 private:
  [[noreturn]] static void fail(const char* what) {
    throw ConverterFailure(std::string("code page 932: ") + what + ": " +
                           std::generic_category().message(errno));
  }

  iconv_t handle_;
};

// The value of the character at `text`, which is then shortened by it; 0 at the end and for a lead
// byte with nothing after it.
unsigned take_character(std::string_view& text) {
  if (text.empty()) return 0;
  const unsigned first = byte_value(text.front());
  const bool is_double = is_lead_byte(text.front());
  text.remove_prefix(1);
  if (!is_double) return first;
  if (text.empty()) return 0;
  const unsigned second = byte_value(text.front());
  text.remove_prefix(1);
  return (first << 8) | second;
}

}  // namespace

bool is_lead_byte(char byte) {
  const unsigned value = byte_value(byte);
  return (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
}

bool is_legal_double_byte(char lead, char trail) {
  const unsigned value = byte_value(trail);
  return is_lead_byte(lead) && value >= 0x40 && value <= 0xFC && value != 0x7F;
}

int compare_characters(std::string_view left, std::string_view right) {
  while (!left.empty() || !right.empty()) {
    const unsigned a = take_character(left);
    const unsigned b = take_character(right);
    if (a != b) return a < b ? -1 : 1;
  }
  return 0;
}

std::string to_utf8(std::string_view text) {
  std::string out;
  if (is_ascii(text)) return std::string(text);
  Converter converter("UTF-8", code_page);
  while (true) {
    text.remove_prefix(converter.convert(text, out));
    if (text.empty()) return out;
    out += replacement_character;
    text.remove_prefix(1);
  }
}

std::string shown_in_utf8(std::string_view text) {
  try {
    return to_utf8(text);
  } catch (const ConverterFailure&) {
    std::string out(text);
    std::replace_if(
        out.begin(), out.end(), [](char byte) { return byte_value(byte) >= 0x80; }, '?');
    return out;
  }
}

std::optional<std::string> from_utf8(std::string_view text, std::size_t* bad_offset) {
  if (is_ascii(text)) return std::string(text);
  std::string out;
  Converter converter(code_page, "UTF-8");
  const std::size_t taken = converter.convert(text, out);
  if (taken == text.size()) return out;
  if (bad_offset != nullptr) *bad_offset = taken;
  return std::nullopt;
}

}  // namespace korvex::platform
