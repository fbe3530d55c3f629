#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// What a database could not do, in its own words.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The table that a foreign key refers to cannot be read, though the database can be.
class KeysUnreadable : public DatabaseError {
 public:
  using DatabaseError::DatabaseError;
};

// The connection was lost while the rows were being kept.
class OutcomeUnknown : public DatabaseError {
 public:
  using DatabaseError::DatabaseError;
};

// The fields of one record for the columns of a load; an empty field is NULL.
using RowFields = std::vector<std::string_view>;

// A row that the database refused; nothing of the load is kept.
struct RefusedRow {
  std::optional<std::size_t> table;  // of the load; nothing when it is unknown
  std::string message;               // the database's own
  std::vector<std::size_t> columns;  // of the load, those that the database blames
  std::int64_t record = 0;           // from 1; 0 when only `blame` can tell

  // Without a record: where to look for the row, and the columns that are to blame in one, none in
  // a good one. It may ask the loader that threw; without it, the row is unknown.
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::function<std::vector<std::size_t>(const RowFields&)> blame;
  bool is_repetition = false;  // of a key: where two rows have it, the second one is to blame
};

class RowRefused : public std::exception {
 public:
  explicit RowRefused(RefusedRow refused) : row(std::move(refused)) {}
  const char* what() const noexcept override { return row.message.c_str(); }

  RefusedRow row;
};

// What a load puts into a table, and into which of its columns.
struct LoadedTable {
  TableSchema schema;
  std::vector<std::size_t> columns;
  // Tables with one number refer to each other by keys that are checked at once: their rows go in
  // together. Next to each other; 0 for any other table.
  std::size_t cycle = 0;
};

struct LoadRequest {
  std::vector<LoadedTable> tables;  // each after those that it needs
  bool defers_keys = false;         // keys that can wait are checked at the end
  bool empties_first = false;
};

// One load into any number of tables, in one transaction. Destroying it before finish() has
// returned leaves them all as they were. Operations throw DatabaseError, RowRefused or Interrupted.
class DatabaseLoad {
 public:
  virtual ~DatabaseLoad() = default;

  // The rows from here to end_table() go to this table. One table after the other, as requested.
  virtual void begin_table(std::size_t table) = 0;

  // The fields are UTF-8 and only looked at during the call.
  virtual void add(const RowFields& fields) = 0;

  virtual void end_table() = 0;

  // Has every constraint checked, lets sequences continue after the loaded values, and commits.
  // Returns what else could not be done, a line for each.
  virtual std::vector<std::string> finish() = 0;
};

// An open connection. Operations throw DatabaseError or Interrupted.
class Database {
 public:
  virtual ~Database() = default;

  // What is wrong with a name that is no table's comes with the names that there are.
  virtual TableSchema read_schema(const std::string& table) = 0;

  // All tables, views and what else reads like them, but for the system's own.
  virtual std::vector<ListedTable> list_tables() = 0;

  virtual TableRules read_rules(const TableSchema& table) = 0;

  // How many rows a table has, counted up to a limit.
  virtual std::int64_t count_rows(const TableSchema& table, std::int64_t limit) = 0;

  // Passes the keys that a foreign key may refer to, in their order, none of them NULL. `take` gets
  // one text for each referenced column. Also throws KeysUnreadable.
  using TakeKey = std::function<void(const std::vector<std::string_view>&)>;
  virtual void read_keys(const ForeignKey& key, const TakeKey& take) = 0;

  // The largest number that a column holds; nothing without rows.
  virtual std::optional<std::int64_t> largest_number(const TableSchema& table,
                                                     std::size_t column) = 0;

  // The largest text of a form that a column holds, byte by byte; nothing without any.
  virtual std::optional<std::string> largest_text(const TableSchema& table, std::size_t column,
                                                  const TextForm& form) = 0;

  virtual std::unique_ptr<DatabaseLoad> begin_load(LoadRequest request) = 0;

  // Has the database count again what it knows of the tables' rows for its plans. Answers what
  // could not be done, a line for each.
  virtual std::vector<std::string> analyze(const std::vector<TableSchema>& tables) = 0;
};

// Opens what "sqlite:FILE", "postgresql:CONNINFO", "postgresql://..." or "postgres://..." names.
// Throws std::invalid_argument for anything else, DatabaseError when it can't be opened.
std::unique_ptr<Database> open_database(const std::string& target);

// The files of the database that `target` names, with those that its library keeps in the same
// folder, and removes without checking what they are. None for a server.
std::vector<std::string> database_files(const std::string& target);

// What the plug-in of each kind of database exports. Program and plug-ins are built and
// installed together, so they may share C++ types; what a plug-in throws is caught in the program.
struct DatabasePlugin {
  Database* (*open)(const std::string& target);  // a connection, which the caller owns
};

inline constexpr const char* database_plugin_function = "korvex_database_table";
inline constexpr std::int32_t database_plugin_version = 2;

}  // namespace korvex::host
