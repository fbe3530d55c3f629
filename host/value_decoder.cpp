#include "host/value_decoder.h"

#include <algorithm>
#include <stdexcept>

namespace korvex::host {

namespace {
constexpr std::size_t most_utf8_bytes = 4;  // for each byte of the code page
}  // namespace

ValueDecoder::ValueDecoder() : handle_(::iconv_open("UTF-8", "CP932")) {
  if (handle_ == reinterpret_cast<iconv_t>(-1)) {
    throw std::runtime_error("this system cannot convert code page 932 to UTF-8");
  }
}

ValueDecoder::~ValueDecoder() { ::iconv_close(handle_); }

bool ValueDecoder::decode(std::string_view value, std::string& utf8) {
  const bool is_ascii = std::all_of(value.begin(), value.end(),
                                    [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (is_ascii) {
    utf8 = value;
    return true;
  }
  utf8.resize(value.size() * most_utf8_bytes);
  char* input = const_cast<char*>(value.data());
  std::size_t input_left = value.size();
  char* output = utf8.data();
  std::size_t output_left = utf8.size();
  const bool is_whole =
      ::iconv(handle_, &input, &input_left, &output, &output_left) != static_cast<std::size_t>(-1);
  ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
  utf8.resize(utf8.size() - output_left);
  return is_whole;
}

}  // namespace korvex::host
