#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace korvex::host {

// Where something is in the layout file, both from 1. Line 0 means the file as a whole.
struct SourcePlace {
  std::uint32_t line = 0;
  std::uint32_t column = 0;
};

struct LayoutError {
  SourcePlace place;
  std::string text;  // what is there and what was expected
};

// A text of the layout, in UTF-8, and where it stands.
struct PlacedText {
  std::string text;
  SourcePlace place;
};

// The line and the column, in characters, of a byte of a text.
SourcePlace place_at(std::string_view text, std::size_t byte);

// Where a byte of a string's value is in the text of its layout, with escapes and lines in
// between. `string` is the place of the string, in whichever of the four ways it is quoted.
SourcePlace place_in_string(std::string_view text, SourcePlace string, std::size_t byte);

}  // namespace korvex::host
