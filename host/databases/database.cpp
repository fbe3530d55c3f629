#include "host/databases/database.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/process/distinct_files.h"

namespace korvex::host {

namespace {

constexpr std::string_view sqlite_prefix = "sqlite:";
constexpr std::string_view postgresql_prefix = "postgresql:";
// Of an address, which the client library reads whole.
constexpr std::string_view address_prefixes[] = {"postgresql://", "postgres://"};

// The modules stand beside the program that runs, wherever a link to it may lie.
std::string module_path(const char* name) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  return (program.parent_path() / KORVEX_MODULE_FOLDER / name).lexically_normal();
}

std::unique_ptr<Database> open_with(const char* module_name, const std::string& target) {
  // Exceptions of the module may outlive all that it has made.
  void* module = ::dlopen(module_path(module_name).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* function = module != nullptr ? ::dlsym(module, KORVEX_OPEN_DATABASE) : nullptr;
  if (function == nullptr) {
    const char* reason = ::dlerror();
    throw DatabaseError("this kind of database was left out: " +
                        std::string(reason != nullptr ? reason : module_name));
  }
  return std::unique_ptr<Database>(reinterpret_cast<OpenDatabase>(function)(target));
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
