#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "support/codes.h"

namespace korvex::test {

// Builds a file field by field, so that a test spells out a layout by itself.
class Bytes {
 public:
  Bytes& u16(unsigned value) {
    for (unsigned shift = 0; shift < 16; shift += 8) bytes_ += static_cast<char>(value >> shift);
    return *this;
  }
  Bytes& i32(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return u16(bits & 0xFFFF).u16(bits >> 16);
  }
  // A zero-terminated text in a field of fixed size.
  Bytes& text(std::string_view value, std::size_t field_size) {
    bytes_.append(value.substr(0, field_size));
    return zeros(field_size - std::min(value.size(), field_size));
  }
  Bytes& zeros(std::size_t count) {
    bytes_.append(count, '\0');
    return *this;
  }
  Bytes& raw(std::string_view value) {
    bytes_.append(value);
    return *this;
  }
  operator std::string() const { return bytes_; }

 private:
  std::string bytes_;
};

// "54 41 4D" to the three bytes.
inline std::string hex(std::string_view digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size();) {
    if (digits[i] == ' ') {
      ++i;
      continue;
    }
    bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    i += 2;
  }
  return bytes;
}

inline void put_i32(std::string& bytes, std::size_t offset, std::int32_t value) {
  bytes.replace(offset, 4, Bytes().i32(value));
}

// Text in the module's code page.
inline std::string cp932(std::string_view utf8) {
  return platform::from_utf8(utf8).value_or("not in the code page");
}

inline std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void write_file(const std::string& path, std::string_view content) {
  std::ofstream(path, std::ios::binary).write(content.data(), std::ssize(content));
}

inline testing::AssertionResult same_bytes(const std::string& expected, const std::string& actual) {
  if (expected == actual) return testing::AssertionSuccess();
  const auto common = std::min(expected.size(), actual.size());
  std::size_t at = 0;
  while (at < common && expected[at] == actual[at]) ++at;
  return testing::AssertionFailure()
         << "sizes " << expected.size() << " and " << actual.size() << ", first difference at "
         << at << ": " << testing::PrintToString(expected.substr(at, 16)) << " expected, "
         << testing::PrintToString(actual.substr(std::min(at, actual.size()), 16)) << " found";
}

}  // namespace korvex::test
