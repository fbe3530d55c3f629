#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts from files on a terminal: a control character could act on it, so it shows as an escape.
namespace korvex::host {

// For UTF-8.
std::string printable(std::string_view text);

// For code page 932.
std::string printable_from_code_page(std::string_view text);

// How many columns a printable UTF-8 text takes on a terminal.
std::size_t columns_of(std::string_view text);

}  // namespace korvex::host
