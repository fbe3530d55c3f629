#pragma once

#include <string_view>

#include "host/databases/table_schema.h"

namespace korvex::host {

// Sets type, length, precision and scale by the declared type of a SQLite column. SQLite takes any
// words there and goes by parts of them; so does this, after the names that say more to people.
void set_sqlite_type(std::string_view declared, ColumnSchema& column);

}  // namespace korvex::host
