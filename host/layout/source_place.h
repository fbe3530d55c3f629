#pragma once

#include <cstdint>
#include <string>

namespace korvex::host {

// Where something stands in the layout file, both from 1. Line 0 means the file as a whole.
struct SourcePlace {
  std::uint32_t line = 0;
  std::uint32_t column = 0;
};

struct LayoutError {
  SourcePlace place;
  std::string text;  // what stands there and what was expected
};

// A text of the layout, in UTF-8, and where it stands.
struct PlacedText {
  std::string text;
  SourcePlace place;
};

}  // namespace korvex::host
