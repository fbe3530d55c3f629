#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/sqlite_connection.h"
#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Columns, keys and foreign keys of a table. Throws DatabaseError or Interrupted.
TableSchema read_sqlite_schema(SqliteConnection& connection, const std::string& table);

// Sets type, length, precision and scale by the declared type of a SQLite column. SQLite takes any
// words there and goes by parts of them; so does this, after the names that say more to people.
void set_sqlite_type(std::string_view declared, ColumnSchema& column);

// Throws DatabaseError.
std::vector<ListedTable> list_sqlite_tables(SqliteConnection& connection);
TableRules read_sqlite_rules(SqliteConnection& connection, const TableSchema& table);

// Begins a load.
std::unique_ptr<DatabaseLoad> begin_sqlite_load(SqliteConnection& connection, LoadRequest request);

}  // namespace korvex::host
