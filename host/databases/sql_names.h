#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/databases/table_schema.h"

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

// A part of a name as a person writes it.
struct NamePart {
  std::string text;
  bool is_quoted = false;
};

// The parts of SCHEMA.TABLE, where those with a dot in them have the quotation marks of SQL around
// them. What is not written so is one name.
inline std::vector<NamePart> name_parts(std::string_view written) {
  std::vector<NamePart> parts;
  for (std::string_view rest = written;;) {
    NamePart part;
    part.is_quoted = rest.starts_with('"');
    if (part.is_quoted) {
      rest.remove_prefix(1);
      for (std::size_t end = rest.find('"'); end != std::string_view::npos; end = rest.find('"')) {
        part.text += rest.substr(0, end);
        rest.remove_prefix(end + 1);
        if (!rest.starts_with('"')) break;
        part.text += '"';
        rest.remove_prefix(1);
      }
    } else {
      part.text = rest.substr(0, rest.find('.'));
      rest.remove_prefix(part.text.size());
    }
    if (part.text.empty() || (!rest.empty() && rest.front() != '.')) {
      return {{std::string(written), false}};
    }
    parts.push_back(std::move(part));
    if (rest.empty()) return parts;
    rest.remove_prefix(1);
  }
}

inline std::string quoted_path(std::string_view written) {
  std::string path;
  for (const NamePart& part : name_parts(written)) {
    path += (path.empty() ? "" : ".") + quoted_name(part.text);
  }
  return path;
}

// Quoted names in a row, each between the texts that are around it.
inline std::string listed_names(const std::vector<std::string>& names, const std::string& separator,
                                const std::string& before = "", const std::string& after = "") {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : separator) + before + quoted_name(name) + after;
  }
  return list;
}

// One letter of a form, in the patterns of both databases.
inline std::string letter_class(const TextForm& form) {
  return std::string("[") + form.lowest + "-" + form.highest + "]";
}

inline constexpr std::size_t most_listed_tables = 20;

// The error for a table that is not there. `tables` are those that are, one more than are listed
// if there are so many.
inline std::string no_such_table(const std::string& table, std::vector<std::string> tables) {
  const std::string text = "no such table: " + table;
  if (tables.empty()) return text + " (the database has no tables)";
  if (tables.size() > most_listed_tables) tables.back() = "...";
  std::string list;
  for (const std::string& each : tables) list += (list.empty() ? "" : ", ") + each;
  return text + " (the database has " + list + ")";
}

// Where columns of a table are among those of a load; columns that are not loaded are left out.
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
