#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/databases/postgresql_connection.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// Columns, keys and foreign keys of a table, which may be named with its schema. Throws
// DatabaseError or Interrupted.
TableSchema read_postgresql_schema(PostgresqlConnection& connection, const std::string& table);

// The columns that each constraint and unique index of a table looks at, in its order.
std::map<std::string, std::vector<std::size_t>> read_constraints(PostgresqlConnection& connection,
                                                                 const TableSchema& table);

}  // namespace korvex::host
