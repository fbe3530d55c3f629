#include <charconv>

#include "host/database.h"
#include "host/postgresql_connection.h"
#include "host/postgresql_loader.h"
#include "host/postgresql_schema.h"

namespace korvex::host {

namespace {

// Of the table that a query calls "k": a bare name would mean the text made of it, which sorts in
// another order.
std::string joined(const std::vector<std::string>& names, const std::string& separator,
                   const std::string& behind) {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : separator) + "k." + postgresql_quoted(name) + behind;
  }
  return list;
}

class PostgresqlDatabase : public Database {
 public:
  explicit PostgresqlDatabase(const std::string& connection) : connection_(connection) {}

  TableSchema read_schema(const std::string& table) override {
    return read_postgresql_schema(connection_, table);
  }

  // Row by row: a table may have more keys than fit into the memory.
  void read_keys(const ForeignKey& key, const TakeKey& take) override {
    const std::vector<std::string>& names = key.referenced_columns;
    connection_.send("SELECT " + joined(names, ", ", "::text") + " FROM " + key.quoted_table +
                     " k WHERE " + joined(names, " AND ", " IS NOT NULL") + " ORDER BY " +
                     joined(names, ", ", ""));
    PQsetSingleRowMode(connection_.get());
    std::vector<std::string_view> texts(names.size());
    while (const PostgresqlResult rows = connection_.next_result()) {
      if (PQresultStatus(rows.get()) == PGRES_FATAL_ERROR) PostgresqlConnection::fail(rows);
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
    const PostgresqlResult rows =
        connection_.run("SELECT max(" + postgresql_quoted(table.columns[column].name) + ") FROM " +
                        table.quoted_name);
    const std::string text = result_text(rows, 0, 0);
    std::int64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc()) return std::nullopt;
    return number;
  }

  std::unique_ptr<TableLoader> begin_load(const TableSchema& table,
                                          std::vector<std::size_t> columns) override {
    return begin_postgresql_load(connection_, table, std::move(columns));
  }

 private:
  PostgresqlConnection connection_;
};

}  // namespace

std::unique_ptr<Database> open_postgresql(const std::string& connection) {
  return std::make_unique<PostgresqlDatabase>(connection);
}

}  // namespace korvex::host
