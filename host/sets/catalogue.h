#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/sets/tables.h"
#include "host/sets/value_table.h"

// The sets that come with the program, and those that the user has added. What a version of the
// former holds never changes, so that a layout which names its version keeps its data: a better
// table is one of the next version.
namespace korvex::sets {

inline constexpr std::int32_t newest_version = 1;

// A column of texts. Columns of one table belong together row by row.
struct Column {
  const Table* table = nullptr;
  std::size_t column = 0;  // of the table's texts
};

// Why there is no such column.
struct Fault {
  enum class Key { set, language, version };
  Key key = Key::set;  // which of them is wrong
  std::string text;    // what it is and what is expected: `is "en", expected ...`
};

// The column with a name such as "people.given", in a language such as "en". A set that is the same
// in all languages takes any and none.
std::variant<Column, Fault> find_column(std::string_view name, std::string_view language,
                                        std::int32_t version = newest_version);

// The tables of a set ("people"), or the one that has a column of it ("people.given").
std::variant<std::vector<const Table*>, Fault> find_tables(std::string_view name,
                                                           std::string_view language,
                                                           std::int32_t version = newest_version);

// All tables in a language, with those that are the same in all, sorted by their keys.
std::variant<std::vector<const Table*>, Fault> find_tables_in(
    std::string_view language, std::int32_t version = newest_version);

// All tables of a version, whatever their language, sorted by their keys.
std::vector<const Table*> tables_of_version(std::int32_t version = newest_version);

// The texts and weights of a table.
ValueTable read_table(const Table& table);

}  // namespace korvex::sets
