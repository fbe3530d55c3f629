#include "host/database.h"
#include "host/sql_names.h"
#include "host/sqlite_connection.h"
#include "host/sqlite_loader.h"
#include "host/sqlite_schema.h"

namespace korvex::host {

namespace {

class SqliteDatabase : public Database {
 public:
  explicit SqliteDatabase(const std::string& file) : connection_(file) {}

  std::string file() const override { return connection_.file(); }

  TableSchema read_schema(const std::string& table) override {
    return read_sqlite_schema(connection_, table);
  }

  void read_keys(const ForeignKey& key, const TakeKey& take) override {
    const std::string columns = listed_names(key.referenced_columns, ", ");
    SqliteStatement rows(connection_,
                         "SELECT " + columns + " FROM " + key.quoted_table + " WHERE " +
                             listed_names(key.referenced_columns, " AND ", "", " IS NOT NULL") +
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
    rows.bind(1, pattern += form.behind);
    if (!rows.next() || rows.is_null(0)) return std::nullopt;
    return std::string(rows.text(0));
  }

  std::unique_ptr<TableLoader> begin_load(const TableSchema& table,
                                          std::vector<std::size_t> columns) override {
    return begin_sqlite_load(connection_, table, std::move(columns));
  }

 private:
  SqliteConnection connection_;
};

}  // namespace

}  // namespace korvex::host

extern "C" __attribute__((visibility("default"))) korvex::host::Database* korvex_open_database(
    const std::string& file) {
  return new korvex::host::SqliteDatabase(file);
}
