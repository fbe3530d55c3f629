#pragma once

#include <iconv.h>

#include <string>
#include <string_view>

namespace korvex::host {

// Turns many values of code page 932 into UTF-8, one after the other.
class ValueDecoder {
 public:
  ValueDecoder();
  ~ValueDecoder();
  ValueDecoder(const ValueDecoder&) = delete;
  ValueDecoder& operator=(const ValueDecoder&) = delete;

  // False for bytes that have no meaning in the code page.
  bool decode(std::string_view value, std::string& utf8);

 private:
  iconv_t handle_;
};

}  // namespace korvex::host
