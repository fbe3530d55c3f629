#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/guesses/meaning.h"
#include "host/imports/column_values.h"

namespace korvex::host {

// What the other columns of the table are, as far as a text goes by them.
struct TextCompany {
  TableKind table = TableKind::other;
  std::string_view language;  // of the built-in sets
  std::string given_name;     // columns of one person, that always have values; empty without
  std::string family_name;
  std::string number;      // the primary key, where it counts on
  bool has_city = false;   // of the same address
  bool has_given = false;  // a given name of the same person
};

// Values for a text column of some meaning. Nothing where the column is too short for them, or
// asks for what they don't promise.
struct GuessedText {
  ColumnValues values;
  std::string rows;        // what its rows belong to: columns of one place or person go together
  std::string what;        // for the comment
  bool is_closed = false;  // there are no others, as there are no more countries
};
std::optional<GuessedText> guess_text(Meaning meaning, const ColumnTask& task,
                                      const TextCompany& company);

}  // namespace korvex::host
