#include "dialogs/rules/user_numbers.h"

#include <algorithm>
#include <charconv>

#include "platform/text_lines.h"
#include "run/repeat_count.h"

namespace korvex {

NumberReading read_repeat_number(std::string_view text, std::uint32_t& number) {
  std::string_view digits = platform::trimmed(text);
  if (digits.starts_with('+')) digits.remove_prefix(1);
  const bool is_number =
      !digits.empty() && std::all_of(digits.begin(), digits.end(), platform::is_digit);
  if (!is_number) return NumberReading::not_a_number;
  std::uint32_t value = 0;
  const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (failure != std::errc() || value > repeat_number_max) return NumberReading::out_of_range;
  number = value;
  return NumberReading::ok;
}

std::string_view number_complaint(NumberReading reading) {
  switch (reading) {
    case NumberReading::not_a_number:
      return "Please enter a positive integer.";
    case NumberReading::out_of_range:
      return "Please enter an integer between 0 and 2147483647.";
    case NumberReading::ok:
      break;
  }
  return {};
}

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
