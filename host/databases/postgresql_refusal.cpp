#include "host/databases/postgresql_refusal.h"

#include <algorithm>
#include <array>

#include "host/databases/copy_text.h"
#include "host/databases/postgresql_database.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

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

// The server's words, which speak of the table that the rows are meant for.
std::string message_of(const PostgresqlResult& result, const std::string& copied,
                       const std::string& meant) {
  std::string message = diagnostic(result, PG_DIAG_MESSAGE_PRIMARY);
  const std::string detail = diagnostic(result, PG_DIAG_MESSAGE_DETAIL);
  if (!detail.empty()) message += ": " + detail;
  if (copied == meant) return message;
  const std::size_t name = message.find(copied);
  if (name != std::string::npos) message.replace(name, copied.size(), meant);
  return message;
}

}  // namespace

PostgresqlRefusals::PostgresqlRefusals(PostgresqlConnection& connection, const LoadedTable& table,
                                       std::size_t place)
    : table_(table), place_(place) {
  for (const std::size_t column : table.columns) {
    names_.push_back(table.schema.columns[column].name);
  }
  for (const auto& [name, places] : read_constraints(connection, table.schema)) {
    constraints_[name] = places_among(table.columns, places);
  }
}

bool PostgresqlRefusals::is_about(const PostgresqlResult& result) const {
  return quoted_name(diagnostic(result, PG_DIAG_SCHEMA_NAME)) + "." +
             quoted_name(diagnostic(result, PG_DIAG_TABLE_NAME)) ==
         table_.schema.quoted_name;
}

void PostgresqlRefusals::refuse(const PostgresqlResult& result, const SentRows& rows,
                                const std::string& copied) const {
  RefusedRow row;
  row.table = place_;
  row.message = message_of(result, copied, table_.schema.bare_name);
  const std::string detail = diagnostic(result, PG_DIAG_MESSAGE_DETAIL);
  const std::string state = diagnostic(result, PG_DIAG_SQLSTATE);
  if (!is_about_rows(state)) PostgresqlConnection::fail(result);
  const CopyPlace place = find_copy_place(diagnostic(result, PG_DIAG_CONTEXT), copied, names_);
  row.columns = blamed_columns(result, place.column);
  // A partition has constraints of its own.
  const std::vector<std::size_t> key = key_places(detail, names_);
  if (row.columns.empty()) row.columns = key;
  if (row.columns.empty()) row.columns = partition_places(detail, names_);
  if (place.line > 0 && place.line <= rows.last - rows.before) {
    row.record = rows.before + place.line;
  } else if (row.columns.empty()) {
    PostgresqlConnection::fail(result);
  } else if (row.columns == key) {
    row.is_repetition = state == unique_violation;
    if (row.is_repetition || state == foreign_key_violation) look_for_key(row, rows, detail);
  }
  throw RowRefused(std::move(row));
}

void PostgresqlRefusals::require_all(std::int64_t kept, const SentRows& rows) const {
  const std::int64_t sent = rows.last - rows.before;
  if (kept == sent) return;
  RefusedRow row;
  row.table = place_;
  row.message = "records " + std::to_string(rows.before + 1) + " to " + std::to_string(rows.last) +
                ": the database kept " + std::to_string(kept) + " of " + std::to_string(sent) +
                " rows and gave no error, as a trigger may ask it to";
  throw RowRefused(std::move(row));
}

void PostgresqlRefusals::look_for_key(RefusedRow& row, const SentRows& rows,
                                      const std::string& detail) const {
  row.first = rows.before + 1;
  row.last = rows.last;
  row.blame = [this, detail, columns = row.columns](const RowFields& fields) {
    std::vector<KeyPart> key;
    for (const std::size_t column : columns) {
      key.push_back({fields[column], table_.schema.columns[table_.columns[column]]});
    }
    return names_key(detail, key) ? columns : std::vector<std::size_t>();
  };
}

std::vector<std::size_t> PostgresqlRefusals::blamed_columns(const PostgresqlResult& result,
                                                            const std::string& copy_column) const {
  const std::string column =
      copy_column.empty() ? diagnostic(result, PG_DIAG_COLUMN_NAME) : copy_column;
  const auto name = std::find(names_.begin(), names_.end(), column);
  if (name != names_.end()) return {static_cast<std::size_t>(name - names_.begin())};
  const auto constraint = constraints_.find(diagnostic(result, PG_DIAG_CONSTRAINT_NAME));
  return constraint == constraints_.end() ? std::vector<std::size_t>() : constraint->second;
}

}  // namespace korvex::host
