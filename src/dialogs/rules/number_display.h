#pragma once

#include <cstdint>
#include <string>

namespace korvex {

// A number with a comma before every group of three digits: 1,234,567.
std::string grouped(std::uint64_t number);

// The predicted size of a file, or that it passes the limit.
std::string size_display(std::uint64_t predicted_bytes, std::uint64_t size_limit);

}  // namespace korvex
