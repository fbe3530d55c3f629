#include "host/database.h"

namespace korvex::host {

namespace {

constexpr std::string_view sqlite_prefix = "sqlite:";
constexpr std::string_view postgresql_prefix = "postgresql:";

#if !KORVEX_WITH_SQLITE || !KORVEX_WITH_POSTGRESQL
[[noreturn]] void report_left_out(const char* database) {
  throw DatabaseError(std::string(database) + " was left out of this build");
}
#endif

}  // namespace

#if !KORVEX_WITH_SQLITE
std::unique_ptr<Database> open_sqlite(const std::string&) { report_left_out("SQLite"); }
#endif

#if !KORVEX_WITH_POSTGRESQL
std::unique_ptr<Database> open_postgresql(const std::string&) { report_left_out("PostgreSQL"); }
#endif

std::unique_ptr<Database> open_database(const std::string& target) {
  if (target.starts_with(sqlite_prefix)) return open_sqlite(target.substr(sqlite_prefix.size()));
  if (target.starts_with(postgresql_prefix)) {
    const std::string rest = target.substr(postgresql_prefix.size());
    return open_postgresql(rest.starts_with("//") ? target : rest);
  }
  throw std::invalid_argument("the database is \"" + target +
                              "\", expected \"sqlite:FILE\" or \"postgresql:CONNINFO\"");
}

}  // namespace korvex::host
