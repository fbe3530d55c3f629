#pragma once

#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"

namespace korvex::host {

// A sequence that a loaded column takes its values from when nobody gives it one.
struct ColumnSequence {
  std::string id;
  std::string quoted_name;
  std::string name;    // as messages name it
  std::string column;  // as messages name it, with its table
  std::string column_name;
  std::string quoted_table;
  bool goes_down = false;
  bool is_allowed = false;  // to be looked at and changed
};

// The sequences of the loaded columns that hold numbers.
std::vector<ColumnSequence> read_sequences(PostgresqlConnection& connection,
                                           const LoadedTable& table);

// Lets a sequence go on after the values of its column, and never back.
void continue_sequence(PostgresqlConnection& connection, const ColumnSequence& sequence);

}  // namespace korvex::host
