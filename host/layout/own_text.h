#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"

namespace korvex::host {

// How many characters a text in UTF-8 has.
std::size_t character_count(std::string_view text);

// Names the character at a byte: ` has the character "€" at place 2`.
std::string named_character(std::string_view text, std::size_t offset);

// What a text has that no value of the layout may have: a zero, a line end, or, unless the layout
// is in UTF-8, a character that code page 932 lacks or takes for another. Says it as the end of a
// message: ` has the character "€" at place 2, expected ...`.
std::optional<std::string> find_bad_character(const Layout& layout, std::string_view text);

// A number as it is written, as far as that can be told: the shortest text that reads as the same
// number, which has all of up to 15 digits; or a string. Nothing for what is neither.
std::optional<std::string> number_text(const toml::node& node);

// The text at a key, with its place; nothing without one or after an error.
std::optional<PlacedText> placed_text(TableReader& reader, std::string_view key);

// The texts of an array of strings and integers, which has to have at least one.
std::vector<PlacedText> placed_texts(TableReader& reader, const Layout& layout,
                                     std::string_view key);

}  // namespace korvex::host
