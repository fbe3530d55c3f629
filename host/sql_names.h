#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// A name as SQL takes it, whatever is in it.
inline std::string quoted_name(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"') quoted += '"';
    quoted += character;
  }
  return quoted + '"';
}

// Quoted names in a row, each between the texts that stand around it.
inline std::string listed_names(const std::vector<std::string>& names, const std::string& separator,
                                const std::string& before = "", const std::string& behind = "") {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : separator) + before + quoted_name(name) + behind;
  }
  return list;
}

// Where columns of a table stand among those of a load; columns that are not loaded are left out.
inline std::vector<std::size_t> places_among(const std::vector<std::size_t>& loaded,
                                             const std::vector<std::size_t>& columns) {
  std::vector<std::size_t> places;
  for (const std::size_t column : columns) {
    const auto found = std::find(loaded.begin(), loaded.end(), column);
    if (found != loaded.end()) places.push_back(static_cast<std::size_t>(found - loaded.begin()));
  }
  return places;
}

}  // namespace korvex::host
