#pragma once

#include <string>

#include "host/databases/sqlite_connection.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Columns, keys and foreign keys of a table. Throws DatabaseError or Interrupted.
TableSchema read_sqlite_schema(SqliteConnection& connection, const std::string& table);

}  // namespace korvex::host
