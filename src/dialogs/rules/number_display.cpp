#include "dialogs/rules/number_display.h"

#include "run/repeat_count.h"

namespace korvex {

std::string grouped(std::uint64_t number) {
  constexpr std::size_t group_size = 3;
  std::string digits = std::to_string(number);
  for (std::size_t place = digits.size(); place > group_size;) {
    place -= group_size;
    digits.insert(place, ",");
  }
  return digits;
}

std::string size_display(std::uint64_t predicted_bytes, std::uint64_t size_limit) {
  if (predicted_bytes == too_large) return std::to_string(size_limit) + " bytes are exceeded.";
  return grouped(predicted_bytes);
}

}  // namespace korvex
