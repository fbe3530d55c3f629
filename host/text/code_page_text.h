#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::host {

// A UTF-8 text in code page 932, if that means the same text again. The system's converter takes
// some characters for others that look like them, such as U+301C for U+FF5E and the yen sign for a
// backslash. `bad_offset` then receives the byte offset of the first character that does not stay.
std::optional<std::string> exact_code_page_text(std::string_view utf8,
                                                std::size_t* bad_offset = nullptr);

}  // namespace korvex::host
