#include "host/postgresql_loader.h"

#include <algorithm>

#include "host/copy_text.h"
#include "host/postgresql_schema.h"
#include "host/sql_names.h"

namespace korvex::host {

namespace {

constexpr std::size_t message_size = 256 * 1024;
// One COPY does not say that a row was refused before its end. A load is a chain of them, each long
// enough that ending it costs nothing that can be measured.
constexpr std::size_t copy_size = 32 * 1024 * 1024;

std::string diagnostic(const PostgresqlResult& result, int field) {
  const char* text = PQresultErrorField(result.get(), field);
  return text == nullptr ? std::string() : std::string(text);
}

class PostgresqlLoader : public TableLoader {
 public:
  PostgresqlLoader(PostgresqlConnection& connection, const TableSchema& table,
                   std::vector<std::size_t> columns)
      : connection_(connection), columns_(std::move(columns)), bare_name_(table.bare_name) {
    for (const std::size_t column : columns_) names_.push_back(table.columns[column].name);
    copy_ = "COPY " + table.quoted_name + " (" + listed_names(names_, ", ") + ") FROM STDIN";
    for (const auto& [name, places] : read_constraints(connection_, table)) {
      constraints_[name] = places_among(columns_, places);
    }
    PQsetnonblocking(connection_.get(), 1);
    connection_.run("BEGIN");
    connection_.run(copy_);
  }

  ~PostgresqlLoader() override {
    if (!is_finished_) connection_.abandon();
  }

  void add(const RowFields& fields) override {
    append_copy_row(fields, message_);
    ++rows_;
    if (message_.size() < message_size) return;
    copied_ += message_.size();
    send_message();
    if (copied_ < copy_size) return;
    end_copy();
    connection_.run(copy_);
  }

  void finish() override {
    send_message();
    end_copy();
    // What is checked at the end of the transaction is checked here, where it can still be told
    // which row it was.
    copy_begin_ = 0;
    connection_.send("SET CONSTRAINTS ALL IMMEDIATE");
    take_results();
    connection_.commit();
    is_finished_ = true;
  }

 private:
  void send_message() {
    if (PQputCopyData(connection_.get(), message_.data(), static_cast<int>(message_.size())) < 0) {
      connection_.fail();
    }
    message_.clear();
    flush();
  }

  // Without this the library would keep what a slow server does not take, however much.
  void flush() {
    for (;;) {
      const int unsent = PQflush(connection_.get());
      if (unsent == 0) return;
      if (unsent < 0) connection_.fail();
      connection_.wait(true);
      if (PQconsumeInput(connection_.get()) == 0) connection_.fail();
    }
  }

  void end_copy() {
    if (PQputCopyEnd(connection_.get(), nullptr) < 0) connection_.fail();
    take_results();
    copy_begin_ = rows_;
    copied_ = 0;
  }

  void take_results() {
    while (const PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) refuse(result);
    }
  }

  [[noreturn]] void refuse(const PostgresqlResult& result) {
    RefusedRow row;
    row.message = diagnostic(result, PG_DIAG_MESSAGE_PRIMARY);
    const std::string detail = diagnostic(result, PG_DIAG_MESSAGE_DETAIL);
    if (!detail.empty()) row.message += ": " + detail;
    const CopyPlace place =
        find_copy_place(diagnostic(result, PG_DIAG_CONTEXT), bare_name_, names_);
    row.columns = blamed_columns(result, place);
    if (place.line > 0) {
      row.record = copy_begin_ + place.line;
    } else if (detail.empty() || row.columns.empty()) {
      PostgresqlConnection::fail(result);
    } else {
      row.first = copy_begin_ + 1;
      row.last = rows_;
      row.is_row = [detail, columns = row.columns](const RowFields& fields) {
        std::vector<std::string_view> values;
        for (const std::size_t column : columns) values.push_back(fields[column]);
        return names_key(detail, values);
      };
    }
    throw RowRefused(std::move(row));
  }

  std::vector<std::size_t> blamed_columns(const PostgresqlResult& result,
                                          const CopyPlace& place) const {
    std::string column = place.column;
    if (column.empty()) column = diagnostic(result, PG_DIAG_COLUMN_NAME);
    const auto name = std::find(names_.begin(), names_.end(), column);
    if (name != names_.end()) return {static_cast<std::size_t>(name - names_.begin())};
    const auto constraint = constraints_.find(diagnostic(result, PG_DIAG_CONSTRAINT_NAME));
    return constraint == constraints_.end() ? std::vector<std::size_t>() : constraint->second;
  }

  PostgresqlConnection& connection_;
  const std::vector<std::size_t> columns_;
  const std::string bare_name_;
  std::string copy_;
  std::vector<std::string> names_;
  std::map<std::string, std::vector<std::size_t>> constraints_;
  std::string message_;
  std::size_t copied_ = 0;
  std::int64_t rows_ = 0;
  std::int64_t copy_begin_ = 0;  // rows before the current COPY
  bool is_finished_ = false;
};

}  // namespace

std::unique_ptr<TableLoader> begin_postgresql_load(PostgresqlConnection& connection,
                                                   const TableSchema& table,
                                                   std::vector<std::size_t> columns) {
  return std::make_unique<PostgresqlLoader>(connection, table, std::move(columns));
}

}  // namespace korvex::host
