#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/sqlite_connection.h"

namespace korvex::host {

// What SQLite keeps of a table's definition.
struct SqliteDefinition {
  bool is_view = false;
  std::string sql;
};

// The rows of a load into one table, and what SQLite says of those that it refuses. Operations
// throw DatabaseError, RowRefused or Interrupted.
class SqliteInsertion {
 public:
  // `table` must outlive this object; `place` is its own among those of the load.
  SqliteInsertion(SqliteConnection& connection, const LoadedTable& table, std::size_t place);

  void add(const RowFields& fields);

  // For a foreign key that is only checked at the end: does nothing when it is none of this table.
  // The rows are all there still, so each record can be asked for.
  void refuse_unreferenced(const std::string& message);

 private:
  std::optional<std::int64_t> whole_number(std::size_t index, std::string_view field) const;
  void bind(sqlite3_stmt* statement, std::size_t parameter, std::size_t index,
            std::string_view field) const;
  void refuse_missing_parents();
  [[noreturn]] void refuse(const RowFields& fields, int result);
  std::vector<std::size_t> blamed_columns(const std::string& message) const;
  std::vector<std::size_t> unreferenced_columns(const RowFields& fields);
  bool has_parent(std::size_t key_number, const std::vector<std::size_t>& places,
                  const RowFields& fields);
  bool is_own_parent(const ForeignKey& key, const std::vector<std::size_t>& places,
                     const RowFields& fields) const;
  std::set<std::size_t> unreferenced_keys();

  SqliteConnection& connection_;
  const TableSchema& table_;
  const std::vector<std::size_t>& columns_;
  const std::size_t place_;
  std::vector<ColumnType> types_;
  std::vector<std::string> names_;
  SqliteDefinition definition_;
  std::unique_ptr<SqliteStatement> insert_;
  std::vector<std::unique_ptr<SqliteStatement>> parents_;  // by foreign key, once asked for
  std::int64_t rows_ = 0;
};

}  // namespace korvex::host
