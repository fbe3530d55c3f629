#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace korvex::host {

// Up to `count` different texts that a regular expression of SQL matches as a whole; none for an
// expression that is not understood. The same expression gives the same texts, longer lists begin
// with shorter ones.
std::vector<std::string> matching_texts(const std::string& regular, std::size_t count);

// Whether any text with a letter or digit matches: that a text is not blank is all it says.
bool is_met_by_any_word(const std::string& regular);

// The regular expressions of patterns of GLOB, of LIKE and of SIMILAR TO.
std::string regular_of_glob(const std::string& pattern);
std::string regular_of_like(const std::string& pattern);
std::string regular_of_similar(const std::string& pattern);

}  // namespace korvex::host
