#include "values/counts.h"

namespace korvex {

std::string decimal_text(ByteCount bytes) {
  constexpr unsigned base = 10;
  std::string digits;
  do {
    digits += static_cast<char>('0' + static_cast<int>(bytes % base));
    bytes /= base;
  } while (bytes != 0);
  std::reverse(digits.begin(), digits.end());
  return digits;
}

}  // namespace korvex
