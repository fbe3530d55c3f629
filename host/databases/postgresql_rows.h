#pragma once

#include <libpq-fe.h>

#include <charconv>
#include <memory>
#include <string>
#include <string_view>

namespace korvex::host {

struct PostgresqlResultDeleter {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresqlResult = std::unique_ptr<PGresult, PostgresqlResultDeleter>;

// Throws DatabaseError for an answer that is none to what was asked.
[[noreturn]] void refuse_answer();

// The rows that a server answers with. Whatever calls itself a server may answer anything, so each
// field is looked at before it is taken for what it should be. Operations throw DatabaseError.
class PostgresqlRows {
 public:
  // Refuses rows that do not have so many columns.
  PostgresqlRows(PostgresqlResult result, int columns);

  int size() const { return PQntuples(result_.get()); }

  bool is_null(int row, int column) const;

  // NULL reads as an empty text.
  std::string_view text(int row, int column) const;

  bool is_true(int row, int column) const { return text(row, column) == "t"; }

  // A text of one character.
  char letter(int row, int column) const;

  template <typename Number>
  Number number(int row, int column) const {
    const std::string_view digits = text(row, column);
    const char* const end = digits.data() + digits.size();
    Number number = 0;
    const auto [stop, failure] = std::from_chars(digits.data(), end, number);
    if (failure != std::errc() || stop != end) refuse_answer();
    return number;
  }

  // Whether the row is the first of those with its text in a column, by which they are sorted.
  bool begins_group(int row, int column) const {
    return row == 0 || text(row, column) != text(row - 1, column);
  }

  // The number by which the server knows the type of a column.
  Oid type(int column) const { return PQftype(result_.get(), column); }

 private:
  PostgresqlResult result_;
};

}  // namespace korvex::host
