#pragma once

#include <vector>

#include "host/databases/postgresql_connection.h"
#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Throws DatabaseError.
std::vector<ListedTable> list_postgresql_tables(PostgresqlConnection& connection);
TableRules read_postgresql_rules(PostgresqlConnection& connection, const TableSchema& table);

}  // namespace korvex::host
