#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts from outside (names, values, paths, what another program or a file says) for the user to
// read. A terminal acts on control characters, and a line end could make two messages of one: both
// are shown as escapes. All code that prints such a text calls these functions.
namespace korvex::platform {

// For UTF-8 and for paths. A byte that is no part of a character shows as an escape, too.
std::string printable(std::string_view text);

// The same between quotation marks.
std::string quoted(std::string_view text);

// As printable(), but line ends stay.
std::string printable_lines(std::string_view text);

// For code page 932, in a message: question marks stand for what cannot be converted, as the rest
// of the message is still worth reading.
std::string printable_from_code_page(std::string_view text);

// The same for what a command answers with, which is right or not there: throws ConverterFailure.
std::string exact_printable_from_code_page(std::string_view text);

// A text for a person to read: UTF-8, in which nothing acts on a terminal but the line ends of our
// own words. It is made of parts, and each part says what its bytes are: there is no way in for
// bytes that somebody would have to guess about.
class MessageText {
 public:
  MessageText() = default;

  // Our own words, and those that were put together at run time.
  template <std::size_t Size>
  MessageText(const char (&words)[Size]) : utf8_(words) {}
  static MessageText words(std::string_view words);

  // Names, values and whatever else the module has in code page 932.
  static MessageText code_page(std::string_view text);

  // Paths, and texts of the system and of the desktop, which are UTF-8.
  static MessageText path(std::string_view text);

  MessageText& operator+=(const MessageText& part);
  friend MessageText operator+(MessageText left, const MessageText& right) { return left += right; }
  friend bool operator==(const MessageText&, const MessageText&) = default;

  const std::string& utf8() const { return utf8_; }
  bool empty() const { return utf8_.empty(); }

 private:
  std::string utf8_;
};

}  // namespace korvex::platform
