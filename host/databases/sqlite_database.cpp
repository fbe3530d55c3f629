#include "host/databases/sqlite_database.h"

#include "host/databases/database.h"
#include "host/databases/sql_names.h"
#include "host/databases/sqlite_connection.h"

namespace korvex::host {

namespace {

// Of each index: as many as its author recommends, so that it takes no longer for a large table.
constexpr int analyzed_rows = 1000;

class SqliteDatabase : public Database {
 public:
  explicit SqliteDatabase(const std::string& file) : connection_(file) {}

  TableSchema read_schema(const std::string& table) override {
    return read_sqlite_schema(connection_, table);
  }

  std::vector<ListedTable> list_tables() override { return list_sqlite_tables(connection_); }

  TableRules read_rules(const TableSchema& table) override {
    return read_sqlite_rules(connection_, table);
  }

  std::int64_t count_rows(const TableSchema& table, std::int64_t limit) override {
    SqliteStatement rows(connection_, "SELECT count(*) FROM (SELECT 1 FROM " + table.quoted_name +
                                          " LIMIT " + std::to_string(limit) + ")");
    return rows.next() ? rows.integer(0) : 0;
  }

  void read_keys(const ForeignKey& key, const TakeKey& take) override {
    // A bare name between quotation marks that is no column's would be taken for a text.
    const std::string columns = listed_names(key.referenced_columns, ", ", "k.");
    require_readable(key, columns);
    SqliteStatement rows(connection_,
                         "SELECT " + columns + " FROM " + key.quoted_table + " k WHERE " +
                             listed_names(key.referenced_columns, " AND ", "k.", " IS NOT NULL") +
                             " ORDER BY " + columns);
    std::vector<std::string_view> texts(key.referenced_columns.size());
    while (rows.next()) {
      for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = rows.text(static_cast<int>(i));
      take(texts);
    }
  }

  std::optional<std::int64_t> largest_number(const TableSchema& table,
                                             std::size_t column) override {
    SqliteStatement rows(connection_, "SELECT max(" + quoted_name(table.columns[column].name) +
                                          ") FROM " + table.quoted_name);
    if (!rows.next() || rows.is_null(0)) return std::nullopt;
    return rows.integer(0);
  }

  // None of the characters that stand for others in a pattern is in a text that a form starts with.
  std::optional<std::string> largest_text(const TableSchema& table, std::size_t column,
                                          const TextForm& form) override {
    SqliteStatement rows(connection_, "SELECT max(text) FROM (SELECT CAST(" +
                                          quoted_name(table.columns[column].name) +
                                          " AS TEXT) COLLATE BINARY AS text FROM " +
                                          table.quoted_name + ") WHERE text GLOB ?");
    std::string pattern = form.before;
    for (std::size_t i = 0; i < form.count; ++i) pattern += letter_class(form);
    rows.bind(1, pattern += form.after);
    if (!rows.next() || rows.is_null(0)) return std::nullopt;
    return std::string(rows.text(0));
  }

  std::unique_ptr<DatabaseLoad> begin_load(LoadRequest request) override {
    return begin_sqlite_load(connection_, std::move(request));
  }

  // In one transaction: each would wait for the disk.
  std::vector<std::string> analyze(const std::vector<TableSchema>& tables) override {
    try {
      connection_.run("PRAGMA analysis_limit = " + std::to_string(analyzed_rows));
      connection_.run("BEGIN IMMEDIATE");
      for (const TableSchema& table : tables) connection_.run("ANALYZE main." + table.quoted_name);
      connection_.run("COMMIT");
      return {};
    } catch (const DatabaseError& failure) {
      connection_.roll_back();
      return {failure.what()};
    }
  }

 private:
  // SQLite lets a foreign key refer to what is not there, until a row is to be checked.
  void require_readable(const ForeignKey& key, const std::string& columns) {
    try {
      const SqliteStatement probe(connection_, "SELECT " + (columns.empty() ? "1" : columns) +
                                                   " FROM " + key.quoted_table + " k");
    } catch (const DatabaseError&) {
      if (sqlite3_errcode(connection_.get()) != SQLITE_ERROR) throw;
      throw KeysUnreadable(sqlite3_errmsg(connection_.get()));
    }
    if (key.referenced_columns.size() == key.columns.size()) return;
    throw KeysUnreadable(key.table + " has no primary key of as many columns");
  }

  SqliteConnection connection_;
};

}  // namespace

}  // namespace korvex::host

extern "C" __attribute__((visibility("default"))) const void* korvex_database_table(
    std::int32_t version) {
  using korvex::host::Database;
  static constexpr korvex::host::DatabasePlugin table = {
      [](const std::string& file) -> Database* { return new korvex::host::SqliteDatabase(file); }};
  return version == korvex::host::database_plugin_version ? &table : nullptr;
}
