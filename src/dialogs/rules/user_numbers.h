#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvex {

inline constexpr std::uint32_t repeat_number_max = 2147483647;

enum class NumberReading { ok, not_a_number, out_of_range };

// Reads what a user typed where a number from 0 to repeat_number_max is wanted: digits, perhaps a
// plus sign before them and blanks around.
NumberReading read_repeat_number(std::string_view text, std::uint32_t& number);

// What the user is told about a text that is not ok.
std::string_view number_complaint(NumberReading reading);

// A number with a comma before every group of three digits: 1,234,567.
std::string grouped(std::uint64_t number);

// The predicted size of a file, or that it passes the limit.
std::string size_display(std::uint64_t predicted_bytes, std::uint64_t size_limit);

}  // namespace korvex
