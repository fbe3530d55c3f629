#pragma once

#include <cstddef>
#include <string_view>

#include "host/layout/source_place.h"

namespace korvex::host {

// The line and the column, in characters, of a byte of a text.
SourcePlace place_at(std::string_view text, std::size_t byte);

// Where a byte of a string's value stands in the text of its layout, with escapes and lines in
// between. `string` is the place of the string, in whichever of the four ways it is quoted.
SourcePlace place_in_string(std::string_view text, SourcePlace string, std::size_t byte);

}  // namespace korvex::host
