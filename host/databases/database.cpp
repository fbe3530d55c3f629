#include "host/databases/database.h"

#include <filesystem>

#include "host/process/distinct_files.h"
#include "platform/plugin_loader.h"

namespace korvex::host {

namespace {

constexpr std::string_view sqlite_prefix = "sqlite:";
constexpr std::string_view postgresql_prefix = "postgresql:";
// Of an address, which the client library reads whole.
constexpr std::string_view address_prefixes[] = {"postgresql://", "postgres://"};

std::unique_ptr<Database> open_with(const char* plugin_name, const std::string& target) {
  const std::filesystem::path folder =
      std::filesystem::path(platform::program_folder()) / KORVEX_PLUGIN_FOLDER;
  std::string reason;
  const auto* const plugin = static_cast<const DatabasePlugin*>(
      platform::load_plugin((folder / plugin_name).lexically_normal(), database_plugin_function,
                            database_plugin_version, reason));
  if (plugin == nullptr) throw DatabaseError("this kind of database was left out: " + reason);
  return std::unique_ptr<Database>(plugin->open(target));
}

}  // namespace

std::unique_ptr<Database> open_database(const std::string& target) {
  if (target == sqlite_prefix) {
    throw std::invalid_argument(
        "the database is \"sqlite:\", which names no file, expected "
        "\"sqlite:FILE\"");
  }
  if (target.starts_with(sqlite_prefix)) {
    return open_with("korvex-sqlite.so", target.substr(sqlite_prefix.size()));
  }
  for (const std::string_view prefix : address_prefixes) {
    if (target.starts_with(prefix)) return open_with("korvex-postgresql.so", target);
  }
  if (target.starts_with(postgresql_prefix)) {
    return open_with("korvex-postgresql.so", target.substr(postgresql_prefix.size()));
  }
  // The text itself may have a password in it.
  throw std::invalid_argument(
      "the database is of no known kind, expected sqlite:FILE, postgresql:CONNINFO or "
      "postgresql://ADDRESS");
}

std::vector<std::string> database_files(const std::string& target) {
  if (!target.starts_with(sqlite_prefix)) return {};
  // SQLite names them after what a link leads to.
  const std::string file = settled_path(target.substr(sqlite_prefix.size()));
  return {file, file + "-journal", file + "-wal", file + "-shm"};
}

}  // namespace korvex::host
