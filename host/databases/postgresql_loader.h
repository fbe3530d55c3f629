#pragma once

#include <memory>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"

namespace korvex::host {

// Begins a load. One that does not finish ends the connection.
std::unique_ptr<DatabaseLoad> begin_postgresql_load(PostgresqlConnection& connection,
                                                    LoadRequest request);

}  // namespace korvex::host
