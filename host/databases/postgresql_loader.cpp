#include "host/databases/postgresql_loader.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "host/databases/copy_text.h"
#include "host/databases/postgresql_schema.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

constexpr std::size_t message_size = 256 * 1024;
// One COPY does not say that a row was refused before its end. A load is a chain of them, each long
// enough that ending it costs nothing that can be measured.
constexpr std::size_t copy_size = 32 * 1024 * 1024;

constexpr std::string_view foreign_key_violation = "23503";
constexpr std::string_view unique_violation = "23505";
// Classes of errors that no row is the reason for, wherever the server was: the connection, the
// state of a transaction, other transactions, resources, locks, the people who run the server, and
// its own faults.
constexpr std::array foreign_reasons = {"08", "25", "40", "53", "55", "57", "58", "XX"};

bool is_about_rows(std::string_view state) {
  return !state.empty() &&
         std::none_of(foreign_reasons.begin(), foreign_reasons.end(),
                      [state](const char* begin) { return state.starts_with(begin); });
}

std::int64_t rows_of(const PostgresqlResult& result) {
  const std::string_view text = PQcmdTuples(result.get());
  std::int64_t rows = 0;
  std::from_chars(text.data(), text.data() + text.size(), rows);
  return rows;
}

class PostgresqlLoader : public TableLoader {
 public:
  PostgresqlLoader(PostgresqlConnection& connection, const TableSchema& table,
                   std::vector<std::size_t> columns)
      : connection_(connection), table_(table), columns_(std::move(columns)) {
    for (const std::size_t column : columns_) names_.push_back(table.columns[column].name);
    copy_ = "COPY " + table.quoted_name + " (" + listed_names(names_, ", ") + ") FROM STDIN";
    for (const auto& [name, places] : read_constraints(connection_, table)) {
      constraints_[name] = places_among(columns_, places);
    }
    PQsetnonblocking(connection_.get(), 1);
    connection_.run("BEGIN");
    // Triggers and checks of the table may count on the path of the user whose rows these are. The
    // statements of a load leave no name open.
    connection_.query("SELECT pg_catalog.set_config('search_path', $1, true)", 1,
                      {connection_.user_path().setting});
    connection_.begin_copy(copy_);
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
    connection_.begin_copy(copy_);
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
      connection_.wait_for_server(true);
      if (PQconsumeInput(connection_.get()) == 0) connection_.fail();
    }
  }

  void end_copy() {
    if (PQputCopyEnd(connection_.get(), nullptr) < 0) connection_.fail();
    const std::int64_t kept = take_results();
    const std::int64_t sent = rows_ - copy_begin_;
    if (kept != sent) refuse_dropping(kept, sent);
    copy_begin_ = rows_;
    copied_ = 0;
  }

  // Answers the number of rows that the server speaks of.
  std::int64_t take_results() {
    std::int64_t rows = 0;
    while (const PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) refuse(result);
      rows = std::max(rows, rows_of(result));
    }
    return rows;
  }

  [[noreturn]] void refuse_dropping(std::int64_t kept, std::int64_t sent) const {
    RefusedRow row;
    row.message = "records " + std::to_string(copy_begin_ + 1) + " to " + std::to_string(rows_) +
                  ": the database kept " + std::to_string(kept) + " of " + std::to_string(sent) +
                  " rows and gave no error, as a trigger may ask it to";
    throw RowRefused(std::move(row));
  }

  [[noreturn]] void refuse(const PostgresqlResult& result) {
    RefusedRow row;
    row.message = diagnostic(result, PG_DIAG_MESSAGE_PRIMARY);
    const std::string detail = diagnostic(result, PG_DIAG_MESSAGE_DETAIL);
    if (!detail.empty()) row.message += ": " + detail;
    const std::string state = diagnostic(result, PG_DIAG_SQLSTATE);
    if (!is_about_rows(state)) PostgresqlConnection::fail(result);
    const CopyPlace place =
        find_copy_place(diagnostic(result, PG_DIAG_CONTEXT), table_.bare_name, names_);
    row.columns = blamed_columns(result, place);
    // A partition has constraints of its own.
    const std::vector<std::size_t> key = key_places(detail, names_);
    if (row.columns.empty()) row.columns = key;
    if (row.columns.empty()) row.columns = partition_places(detail, names_);
    if (place.line > 0 && place.line <= rows_ - copy_begin_) {
      row.record = copy_begin_ + place.line;
    } else if (row.columns.empty()) {
      PostgresqlConnection::fail(result);
    } else if (row.columns == key) {
      row.is_repetition = state == unique_violation;
      if (row.is_repetition || state == foreign_key_violation) look_for_key(row, detail);
    }
    throw RowRefused(std::move(row));
  }

  void look_for_key(RefusedRow& row, const std::string& detail) const {
    row.first = copy_begin_ + 1;
    row.last = rows_;
    row.blame = [this, detail, columns = row.columns](const RowFields& fields) {
      std::vector<KeyPart> key;
      for (const std::size_t column : columns) {
        key.push_back({fields[column], table_.columns[columns_[column]]});
      }
      return names_key(detail, key) ? columns : std::vector<std::size_t>();
    };
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
  const TableSchema table_;
  const std::vector<std::size_t> columns_;
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
