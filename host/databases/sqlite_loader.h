#pragma once

#include <memory>

#include "host/databases/database.h"
#include "host/databases/sqlite_connection.h"

namespace korvex::host {

// Begins a load into a table. Foreign keys are enforced, which SQLite does only when asked to.
std::unique_ptr<TableLoader> begin_sqlite_load(SqliteConnection& connection,
                                               const TableSchema& table,
                                               std::vector<std::size_t> columns);

}  // namespace korvex::host
