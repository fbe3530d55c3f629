#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace korvex::host {

// An open SQLite file. Statements end early when the user interrupts the command; a lock that
// somebody else holds is waited for.
class SqliteConnection {
 public:
  // Throws DatabaseError. The file must exist.
  explicit SqliteConnection(const std::string& file);
  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  sqlite3* get() const { return database_; }
  const std::string& file() const { return file_; }

  // Runs a statement without results. Throws DatabaseError or Interrupted.
  void run(const std::string& sql);

  // For ending a transaction, which an interrupt must not keep from happening.
  void roll_back();

  // Throws what the last call failed with: Interrupted or DatabaseError.
  [[noreturn]] void fail() const;

 private:
  static int wait_for_lock(void* connection, int attempt);
  static int is_interrupted(void*);

  std::string file_;
  sqlite3* database_ = nullptr;
  std::chrono::steady_clock::time_point wait_begin_;
};

class SqliteStatement {
 public:
  // Throws DatabaseError.
  SqliteStatement(SqliteConnection& connection, const std::string& sql);
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  sqlite3_stmt* get() const { return statement_; }

  void bind(int place, std::string_view text);

  // False after the last row. Throws DatabaseError or Interrupted.
  bool next();

  // Of the current row; NULL reads as an empty text and as 0.
  std::string_view text(int column) const;
  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
  bool is_null(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }

 private:
  SqliteConnection& connection_;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace korvex::host
