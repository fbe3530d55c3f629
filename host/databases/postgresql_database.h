#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"
#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Throws std::invalid_argument for what is no connection string of the server's client library, or
// would be read in another way than its writer meant. The library's own message about such a string
// quotes the piece that it could not read, which is the password as often as not; these quote none.
void check_connection_string(const std::string& connection);

// Columns, keys and foreign keys of a table, which may be named with its schema. Throws
// DatabaseError or Interrupted.
TableSchema read_postgresql_schema(PostgresqlConnection& connection, const std::string& table);

// The values of an enum type, in order.
std::vector<std::string> read_labels(PostgresqlConnection& connection, const std::string& type);

// The columns that each constraint and unique index of a table looks at, in its order.
std::map<std::string, std::vector<std::size_t>> read_constraints(PostgresqlConnection& connection,
                                                                 const TableSchema& table);

// Throws DatabaseError.
std::vector<ListedTable> list_postgresql_tables(PostgresqlConnection& connection);
TableRules read_postgresql_rules(PostgresqlConnection& connection, const TableSchema& table);

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

// Begins a load. One that does not finish ends the connection.
std::unique_ptr<DatabaseLoad> begin_postgresql_load(PostgresqlConnection& connection,
                                                    LoadRequest request);

}  // namespace korvex::host
