#pragma once

#include <vector>

#include "host/databases/sqlite_connection.h"
#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Throws DatabaseError.
std::vector<ListedTable> list_sqlite_tables(SqliteConnection& connection);
TableRules read_sqlite_rules(SqliteConnection& connection, const TableSchema& table);

}  // namespace korvex::host
