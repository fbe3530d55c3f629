#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

// The module's character data (names, descriptions, formats, values) is code page 932: one byte a
// character, or a lead byte and a trail byte.
namespace korvex::platform {

bool is_lead_byte(char byte);

// Whether the two bytes have the shape of a double-byte character: lead 0x81 to 0x9F or 0xE0 to
// 0xFC, trail 0x40 to 0x7E or 0x80 to 0xFC. Says nothing about whether the character is assigned.
bool is_legal_double_byte(char lead, char trail);

// Compares character by character, a double-byte character as one number: below, at or above 0.
int compare_characters(std::string_view left, std::string_view right);

// The system's converter is not there or does not work, as where no more files can be opened. That
// says nothing about the text. ASCII needs no converter.
class ConverterFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What has no meaning in the code page becomes U+FFFD. Throws ConverterFailure.
std::string to_utf8(std::string_view text);

// For screens: the same, with a question mark for each byte that nothing could convert. Never
// fails.
std::string shown_in_utf8(std::string_view text);

// Nothing when the text is not UTF-8 or holds a character that the code page lacks; `bad_offset`
// then receives the byte offset of that character. Throws ConverterFailure.
std::optional<std::string> from_utf8(std::string_view text, std::size_t* bad_offset = nullptr);

}  // namespace korvex::platform
