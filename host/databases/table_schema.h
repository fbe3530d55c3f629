#pragma once

#include <cstddef>
#include <string>
#include <vector>

// What a database says about a table, in words that no single database owns. Texts are UTF-8.
namespace korvex::host {

// What a column can hold, as far as values are made differently for it.
enum class ColumnType {
  integer16,
  integer32,
  integer64,
  decimal,
  floating4,
  floating8,
  text,
  boolean,
  choice,  // one of `choices`
  date,
  time,
  timestamp,
  uuid,
  binary,
  hex_binary,  // binary that is written as hexadecimal digits after "\x"
  json,
  interval,
  unknown,
};

struct ColumnSchema {
  std::string name;
  int number = 0;             // by which the database knows it, where it gives numbers
  std::string declared_type;  // as the database shows it
  ColumnType type = ColumnType::unknown;
  int length = 0;     // characters, 0 without a limit
  int precision = 0;  // digits of a decimal, 0 without a limit
  int scale = 0;
  bool takes_wide_integers = false;  // of 64 bits, whatever the type's name says
  bool is_padded = false;            // text that the database fills up with spaces
  bool nullable = true;
  bool has_default = false;
  bool is_generated = false;  // computed by the database, never loaded
  std::vector<std::string> choices;
};

// Texts that count through letters or digits: `count` of them, all from `lowest` to `highest`,
// between two texts that stay.
struct TextForm {
  std::string before;
  char lowest;
  char highest;
  std::size_t count;
  std::string after;
};

// Columns are named by their places in the table.
struct ForeignKey {
  std::string table;         // as messages name it
  std::string quoted_table;  // as SQL takes it
  std::vector<std::size_t> columns;
  std::vector<std::string> referenced_columns;
  bool is_to_own_table = false;
  bool can_wait = false;  // may be checked at the end of a transaction
};

struct TableSchema {
  std::string name;         // as messages name it
  std::string bare_name;    // without the schema that it is in
  std::string quoted_name;  // as SQL takes it
  std::string id;           // what the database knows it by, where that is not its name
  std::string obstacle;     // why it takes no rows; empty for one that does
  std::vector<ColumnSchema> columns;
  std::vector<std::vector<std::size_t>> unique_sets;  // the primary key, where there is one, first
  std::vector<ForeignKey> foreign_keys;
};

}  // namespace korvex::host
