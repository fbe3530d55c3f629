#include "host/databases/postgresql_rows.h"

#include "host/databases/database.h"

namespace korvex::host {

void refuse_answer() { throw DatabaseError("the server's answer is none to what was asked"); }

PostgresqlRows::PostgresqlRows(PostgresqlResult result, int columns) : result_(std::move(result)) {
  if (PQnfields(result_.get()) != columns) refuse_answer();
}

bool PostgresqlRows::is_null(int row, int column) const {
  if (row < 0 || row >= size()) refuse_answer();
  return PQgetisnull(result_.get(), row, column) != 0;
}

std::string_view PostgresqlRows::text(int row, int column) const {
  if (is_null(row, column)) return {};
  return {PQgetvalue(result_.get(), row, column),
          static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
}

char PostgresqlRows::letter(int row, int column) const {
  const std::string_view letters = text(row, column);
  if (letters.size() != 1) refuse_answer();
  return letters.front();
}

}  // namespace korvex::host
