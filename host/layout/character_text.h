#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/layout/table_reader.h"

namespace korvex::host {

inline constexpr std::size_t unbounded = std::string::npos;

// A text read from the key, in the module's code page; reports characters that cannot stand there
// and a text of more than `longest` bytes. Empty without a text and after an error. A character for
// which the code page has another one is no error; it goes to `replaced`, where that is given.
std::string character_text(TableReader& reader, std::string_view key,
                           const std::optional<std::string>& text, std::size_t longest,
                           std::vector<LayoutError>* replaced = nullptr);

}  // namespace korvex::host
