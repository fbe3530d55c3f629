#pragma once

#include <string>
#include <string_view>

namespace korvex::host {

// Whether a text has characters beyond ASCII and all of it is UTF-8. `is_cut` says that the text
// may end in the middle of a character.
bool looks_like_utf8(std::string_view text, bool is_cut);

// The same for the beginning of a file; false for one that is no regular file.
bool file_looks_like_utf8(const std::string& path);

}  // namespace korvex::host
