#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/postgresql_connection.h"

namespace korvex::host {

// The rows of one statement, counted from the first of the table.
struct SentRows {
  std::int64_t before = 0;  // those of earlier statements
  std::int64_t last = 0;
};

// Reads from the server's errors which row of a table it refuses. Its own texts are made before the
// load: once a statement has failed, the server answers nothing any more.
class PostgresqlRefusals {
 public:
  PostgresqlRefusals(PostgresqlConnection& connection, const LoadedTable& table, std::size_t place);

  // The columns of the load, as the server names them.
  const std::vector<std::string>& names() const { return names_; }

  // Whether an error that was met after all tables speaks of this one.
  bool is_about(const PostgresqlResult& result) const;

  // `copied` is the table that a COPY of the rows goes to. Throws RowRefused, or DatabaseError for
  // what no row is the reason for.
  [[noreturn]] void refuse(const PostgresqlResult& result, const SentRows& rows,
                           const std::string& copied) const;

  // Throws RowRefused when not all rows were kept.
  void require_all(std::int64_t kept, const SentRows& rows) const;

 private:
  void look_for_key(RefusedRow& row, const SentRows& rows, const std::string& detail) const;
  std::vector<std::size_t> blamed_columns(const PostgresqlResult& result,
                                          const std::string& copy_column) const;

  const LoadedTable& table_;
  std::size_t place_;
  std::vector<std::string> names_;
  std::map<std::string, std::vector<std::size_t>> constraints_;
};

}  // namespace korvex::host
