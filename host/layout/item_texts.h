#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"
#include "korvex/control_file.h"

// The texts that say what an item is.
namespace korvex::host {

// Texts must leave room for the terminator of their field.
inline constexpr std::size_t longest_item_name = KORVEX_NAME_SIZE - 1;
inline constexpr std::size_t longest_item_description = KORVEX_DESCRIPTION_SIZE - 1;

// The text at a key, in UTF-8, of at most `longest` bytes in code page 932; in a layout that is in
// UTF-8, of as many characters, of which those that the code page lacks go to `beyond`. Empty after
// an error.
std::string item_text(TableReader& reader, const Layout& layout, std::string_view key,
                      std::size_t longest, std::vector<LayoutError>* beyond = nullptr);

// Whether a name that a person gives, in UTF-8, is the item's. The code page has one character for
// several of UTF-8.
bool is_named(const LayoutItem& item, std::string_view name);

inline constexpr std::size_t unbounded = std::string::npos;

// A text read from the key, in the module's code page; reports characters that cannot be there
// and a text of more than `longest` bytes. Empty without a text and after an error. A character for
// which the code page has another one is no error; it goes to `replaced`, where that is given.
std::string character_text(TableReader& reader, std::string_view key,
                           const std::optional<std::string>& text, std::size_t longest,
                           std::vector<LayoutError>* replaced = nullptr);

}  // namespace korvex::host
