#include "host/databases/postgresql_database.h"

#include <cctype>
#include <charconv>
#include <limits>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"
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

// Types of the server's own, whose numbers never change.
constexpr Oid boolean_type = 16;
constexpr Oid padded_text_type = 1042;

// A field as a value list has it.
std::string_view key_text(const PostgresqlRows& rows, int row, int column) {
  const std::string_view text = rows.text(row, column);
  switch (rows.type(column)) {
    case boolean_type:
      return text == "t" ? "true" : "false";
    case padded_text_type:
      return text.substr(0, text.find_last_not_of(' ') + 1);
    default:
      return text;
  }
}

// The class of errors about what is not there, or not for everybody.
constexpr std::string_view access_rules = "42";

class PostgresqlDatabase : public Database {
 public:
  explicit PostgresqlDatabase(const std::string& connection) : connection_(connection) {}

  TableSchema read_schema(const std::string& table) override {
    return read_postgresql_schema(connection_, table);
  }

  std::vector<ListedTable> list_tables() override { return list_postgresql_tables(connection_); }

  TableRules read_rules(const TableSchema& table) override {
    return read_postgresql_rules(connection_, table);
  }

  std::int64_t count_rows(const TableSchema& table, std::int64_t limit) override {
    const PostgresqlRows rows =
        connection_.query("SELECT pg_catalog.count(*) FROM (SELECT FROM " + table.quoted_name +
                              " LIMIT " + std::to_string(limit) + ") AS found",
                          1);
    return rows.number<std::int64_t>(0, 0);
  }

  // Row by row: a table may have more keys than fit into the memory. Nothing is cast to a text: the
  // cast of a type that another user has made is a function of that user.
  void read_keys(const ForeignKey& key, const TakeKey& take) override {
    const std::string columns = listed_names(key.referenced_columns, ", ", "k.");
    connection_.send("SELECT " + columns + " FROM " + key.quoted_table + " k WHERE " +
                     listed_names(key.referenced_columns, " AND ", "k.", " IS NOT NULL") +
                     " ORDER BY " + columns);
    PQsetSingleRowMode(connection_.get());
    const int count = static_cast<int>(key.referenced_columns.size());
    std::vector<std::string_view> texts(key.referenced_columns.size());
    while (PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) fail_reading(result);
      const PostgresqlRows rows(std::move(result), count);
      for (int row = 0; row < rows.size(); ++row) {
        for (int i = 0; i < count; ++i) {
          texts[static_cast<std::size_t>(i)] = key_text(rows, row, i);
        }
        take(texts);
      }
    }
  }

  std::optional<std::int64_t> largest_number(const TableSchema& table,
                                             std::size_t column) override {
    const PostgresqlRows rows =
        connection_.query("SELECT pg_catalog.max(" + quoted_name(table.columns[column].name) +
                              ") FROM " + table.quoted_name,
                          1);
    const std::string_view text = rows.text(0, 0);
    std::int64_t number = 0;
    const std::errc failure = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (failure == std::errc()) return number;
    if (failure != std::errc::result_out_of_range) return std::nullopt;
    return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                 : std::numeric_limits<std::int64_t>::max();
  }

  std::optional<std::string> largest_text(const TableSchema& table, std::size_t column,
                                          const TextForm& form) override {
    const PostgresqlRows rows = connection_.query(
        "SELECT pg_catalog.max(text) FROM (SELECT " + quoted_name(table.columns[column].name) +
            "::pg_catalog.text COLLATE pg_catalog.\"C\" AS text FROM " + table.quoted_name +
            ") AS texts WHERE text OPERATOR(pg_catalog.~) $1",
        1,
        {"^" + literal(form.before) + letter_class(form) + "{" + std::to_string(form.count) + "}" +
         literal(form.after) + "$"});
    if (rows.is_null(0, 0)) return std::nullopt;
    // What does not have the form would be cut to pieces by it.
    const std::string largest(rows.text(0, 0));
    if (largest.size() != form.before.size() + form.count + form.after.size()) refuse_answer();
    return largest;
  }

  std::unique_ptr<DatabaseLoad> begin_load(LoadRequest request) override {
    return begin_postgresql_load(connection_, std::move(request));
  }

  std::vector<std::string> analyze(const std::vector<TableSchema>& tables) override {
    std::vector<std::string> failures;
    for (const TableSchema& table : tables) {
      try {
        connection_.run("ANALYZE " + table.quoted_name);
      } catch (const DatabaseError& failure) {
        failures.push_back(table.name + ": " + failure.what());
      }
    }
    return failures;
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

extern "C" __attribute__((visibility("default"))) const void* korvex_database_table(
    std::int32_t version) {
  using korvex::host::Database;
  static constexpr korvex::host::DatabasePlugin table = {
      [](const std::string& connection) -> Database* {
        return new korvex::host::PostgresqlDatabase(connection);
      }};
  return version == korvex::host::database_plugin_version ? &table : nullptr;
}
