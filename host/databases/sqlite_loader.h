#pragma once

#include <memory>

#include "host/databases/database.h"
#include "host/databases/sqlite_connection.h"

namespace korvex::host {

// Begins a load.
std::unique_ptr<DatabaseLoad> begin_sqlite_load(SqliteConnection& connection, LoadRequest request);

}  // namespace korvex::host
