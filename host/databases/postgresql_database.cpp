#include <cctype>
#include <charconv>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"
#include "host/databases/postgresql_loader.h"
#include "host/databases/postgresql_schema.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

// A text in a regular expression.
std::string literal(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    if (std::isalnum(static_cast<unsigned char>(character)) == 0) escaped += '\\';
    escaped += character;
  }
  return escaped;
}
// The class of errors about what is not there, or not for everybody.
constexpr std::string_view access_rules = "42";

class PostgresqlDatabase : public Database {
 public:
  explicit PostgresqlDatabase(const std::string& connection) : connection_(connection) {}

  TableSchema read_schema(const std::string& table) override {
    return read_postgresql_schema(connection_, table);
  }

  // Row by row: a table may have more keys than fit into the memory. Their order is that of the
  // columns, which a bare name would not mean here: it would mean the texts made of them.
  void read_keys(const ForeignKey& key, const TakeKey& take) override {
    const std::vector<std::string>& names = key.referenced_columns;
    connection_.send("SELECT " + listed_names(names, ", ", "k.", "::text") + " FROM " +
                     key.quoted_table + " k WHERE " +
                     listed_names(names, " AND ", "k.", " IS NOT NULL") + " ORDER BY " +
                     listed_names(names, ", ", "k."));
    PQsetSingleRowMode(connection_.get());
    std::vector<std::string_view> texts(names.size());
    while (const PostgresqlResult rows = connection_.next_result()) {
      if (PQresultStatus(rows.get()) == PGRES_FATAL_ERROR) fail_reading(rows);
      for (int row = 0; row < PQntuples(rows.get()); ++row) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
          texts[i] = PQgetvalue(rows.get(), row, static_cast<int>(i));
        }
        take(texts);
      }
    }
  }

  std::optional<std::int64_t> largest_number(const TableSchema& table,
                                             std::size_t column) override {
    const PostgresqlResult rows = connection_.run(
        "SELECT max(" + quoted_name(table.columns[column].name) + ") FROM " + table.quoted_name);
    const std::string text = result_text(rows, 0, 0);
    std::int64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc()) return std::nullopt;
    return number;
  }

  std::optional<std::string> largest_text(const TableSchema& table, std::size_t column,
                                          const TextForm& form) override {
    const PostgresqlResult rows = connection_.run(
        "SELECT max(text) FROM (SELECT " + quoted_name(table.columns[column].name) +
            "::text COLLATE \"C\" AS text FROM " + table.quoted_name + ") AS texts WHERE text ~ $1",
        {"^" + literal(form.before) + letter_class(form) + "{" + std::to_string(form.count) + "}" +
         literal(form.behind) + "$"});
    if (PQgetisnull(rows.get(), 0, 0) != 0) return std::nullopt;
    return result_text(rows, 0, 0);
  }

  std::unique_ptr<TableLoader> begin_load(const TableSchema& table,
                                          std::vector<std::size_t> columns) override {
    return begin_postgresql_load(connection_, table, std::move(columns));
  }

 private:
  [[noreturn]] void fail_reading(const PostgresqlResult& failure) {
    const bool is_access_rule = diagnostic(failure, PG_DIAG_SQLSTATE).starts_with(access_rules);
    if (!is_access_rule) PostgresqlConnection::fail(failure);
    // The connection goes on with other tables.
    while (connection_.next_result()) {
    }
    throw KeysUnreadable(diagnostic(failure, PG_DIAG_MESSAGE_PRIMARY));
  }

  PostgresqlConnection connection_;
};

}  // namespace

}  // namespace korvex::host

extern "C" __attribute__((visibility("default"))) korvex::host::Database* korvex_open_database(
    const std::string& connection) {
  return new korvex::host::PostgresqlDatabase(connection);
}
