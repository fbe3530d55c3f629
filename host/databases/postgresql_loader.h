#pragma once

#include <memory>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"

namespace korvex::host {

// Begins a load into a table. A load that does not finish ends the connection.
std::unique_ptr<TableLoader> begin_postgresql_load(PostgresqlConnection& connection,
                                                   const TableSchema& table,
                                                   std::vector<std::size_t> columns);

}  // namespace korvex::host
