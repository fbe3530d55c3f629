#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace korvex::sets {

// A table of a set, with what its file is named after.
struct Table {
  std::string_view set;
  std::string_view part;      // of a set with columns that have nothing to do with each other
  std::string_view language;  // empty when the set is the same in all
  std::int32_t version = 0;   // of the sets, from which on the table is this one
  std::string_view text;      // what ValueTable::read() takes

  // What only one table of a version has.
  std::tuple<std::string_view, std::string_view, std::string_view> key() const {
    return {set, part, language};
  }
};

// Those that come with the program, the files of data/sets: SET[.PART][.LANGUAGE].VERSION.tsv. They
// are sorted by their keys and versions.
std::span<const Table> built_in_tables();

// Why a file of the user's is no table.
struct UserFault {
  std::string_view set;       // empty when the file's name has none
  std::string_view language;  // as in Table
  std::string text;           // with the file, and the line where there is one
};

// What the user has added: the files SET[.PART][.LANGUAGE].tsv of the folder korvex/sets in
// ${XDG_DATA_HOME:-$HOME/.local/share}. They are of version 0, so that they hold in all.
struct UserTables {
  std::vector<Table> tables;
  std::vector<UserFault> faults;
};

// Reads the folder when it is first needed.
const UserTables& user_tables();

}  // namespace korvex::sets
