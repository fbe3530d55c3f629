#include <algorithm>

#include "host/databases/sql_names.h"
#include "host/databases/sqlite_database.h"
#include "host/databases/sqlite_insertion.h"
#include "host/process/signals.h"

namespace korvex::host {

namespace {

class SqliteLoad : public DatabaseLoad {
 public:
  SqliteLoad(SqliteConnection& connection, LoadRequest request)
      : connection_(connection), request_(std::move(request)) {
    // While a key waits for its row, SQLite goes through all rows that refer to a table for each
    // one that is added to it. So keys that are to wait are left alone until the end.
    connection_.run(request_.defers_keys ? "PRAGMA foreign_keys = OFF"
                                         : "PRAGMA foreign_keys = ON");
    connection_.run("BEGIN IMMEDIATE");
    try {
      if (request_.empties_first) empty_tables();
      if (request_.defers_keys) unreferenced_before_ = unreferenced_rows();
      for (std::size_t i = 0; i < request_.tables.size(); ++i) {
        insertions_.push_back(
            std::make_unique<SqliteInsertion>(connection_, request_.tables[i], i));
      }
    } catch (...) {
      insertions_.clear();
      connection_.roll_back();
      throw;
    }
  }

  ~SqliteLoad() override {
    insertions_.clear();
    connection_.roll_back();
  }

  void begin_table(std::size_t table) override { insertion_ = insertions_[table].get(); }

  void add(const RowFields& fields) override { insertion_->add(fields); }

  void end_table() override {}

  std::vector<std::string> finish() override {
    if (request_.defers_keys && unreferenced_rows() > unreferenced_before_) {
      refuse_unreferenced("FOREIGN KEY constraint failed");
    }
    check_interruption();
    const int result = sqlite3_exec(connection_.get(), "COMMIT", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK) return {};
    const std::string message = sqlite3_errmsg(connection_.get());
    check_interruption();
    if (result == SQLITE_CONSTRAINT_FOREIGNKEY) refuse_unreferenced(message);
    throw DatabaseError(connection_.file() + ": " + message);
  }

 private:
  [[noreturn]] void refuse_unreferenced(const std::string& message) {
    for (const auto& insertion : insertions_) insertion->refuse_unreferenced(message);
    throw DatabaseError(connection_.file() + ": " + message);
  }

  // In all tables, as triggers may add rows to any. Some may have been there before.
  std::int64_t unreferenced_rows() {
    std::int64_t count = 0;
    for (const std::string& name : table_names()) {
      try {
        SqliteStatement rows(connection_,
                             "PRAGMA main.foreign_key_check(" + quoted_name(name) + ")");
        while (rows.next()) ++count;
      } catch (const DatabaseError&) {
        // The keys of others may be as wrong as they like.
        if (is_loaded(quoted_name(name))) throw;
      }
    }
    return count;
  }

  bool is_loaded(const std::string& quoted) const {
    return std::any_of(
        request_.tables.begin(), request_.tables.end(),
        [&](const LoadedTable& table) { return table.schema.quoted_name == quoted; });
  }

  // Those that refer to others first. A key of a table that is not loaded might have its rows
  // removed as well, or changed.
  void empty_tables() {
    refuse_foreign_rows();
    for (auto table = request_.tables.rbegin(); table != request_.tables.rend(); ++table) {
      connection_.run("DELETE FROM main." + table->schema.quoted_name);
    }
  }

  std::vector<std::string> table_names() {
    SqliteStatement rows(connection_, "SELECT name FROM main.sqlite_schema WHERE type = 'table'");
    std::vector<std::string> names;
    while (rows.next()) names.emplace_back(rows.text(0));
    return names;
  }

  void refuse_foreign_rows() {
    for (const std::string& name : table_names()) {
      if (is_loaded(quoted_name(name))) continue;
      const TableSchema other = read_sqlite_schema(connection_, name);
      for (const ForeignKey& key : other.foreign_keys) {
        const auto target = std::find_if(
            request_.tables.begin(), request_.tables.end(),
            [&](const LoadedTable& table) { return table.schema.quoted_name == key.quoted_table; });
        if (target != request_.tables.end() && has_rows_with(key, other)) {
          throw DatabaseError(target->schema.name + ": cannot be emptied: rows of " + name +
                              ", which is not loaded, refer to it");
        }
      }
    }
  }

  bool has_rows_with(const ForeignKey& key, const TableSchema& table) {
    std::vector<std::string> names;
    for (const std::size_t column : key.columns) names.push_back(table.columns[column].name);
    SqliteStatement rows(connection_, "SELECT 1 FROM main." + table.quoted_name + " WHERE " +
                                          listed_names(names, " AND ", "", " IS NOT NULL") +
                                          " LIMIT 1");
    return rows.next();
  }

  SqliteConnection& connection_;
  const LoadRequest request_;
  std::vector<std::unique_ptr<SqliteInsertion>> insertions_;  // side by side with the tables
  SqliteInsertion* insertion_ = nullptr;                      // of the table that takes the rows
  std::int64_t unreferenced_before_ = 0;
};

}  // namespace

std::unique_ptr<DatabaseLoad> begin_sqlite_load(SqliteConnection& connection, LoadRequest request) {
  return std::make_unique<SqliteLoad>(connection, std::move(request));
}

}  // namespace korvex::host
