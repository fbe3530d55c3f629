#include "host/databases/sqlite_connection.h"

#include "host/databases/database.h"
#include "host/process/signals.h"

namespace korvex::host {

namespace {

constexpr auto longest_wait = std::chrono::seconds(10);
constexpr int lock_poll_ms = 10;
// Steps of the database's own machine between two looks at the interrupt: well below a millisecond.
constexpr int steps_between_looks = 10'000;

}  // namespace

SqliteConnection::SqliteConnection(const std::string& file) : file_(file) {
  const int result = sqlite3_open_v2(file.c_str(), &database_,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (result != SQLITE_OK) {
    const std::string message = sqlite3_errmsg(database_);
    sqlite3_close(database_);
    throw DatabaseError(file + ": " + message);
  }
  sqlite3_extended_result_codes(database_, 1);
  sqlite3_busy_handler(database_, wait_for_lock, this);
  sqlite3_progress_handler(database_, steps_between_looks, is_interrupted, nullptr);
}

SqliteConnection::~SqliteConnection() { sqlite3_close(database_); }

void SqliteConnection::run(const std::string& sql) {
  if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

void SqliteConnection::roll_back() {
  sqlite3_progress_handler(database_, 0, nullptr, nullptr);
  if (sqlite3_get_autocommit(database_) == 0) {
    sqlite3_exec(database_, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  // After some failures, as of a full disk, the file itself is only put back by who reads it next.
  sqlite3_exec(database_, "SELECT 1 FROM sqlite_schema LIMIT 1", nullptr, nullptr, nullptr);
}

void SqliteConnection::fail() const {
  const std::string message = sqlite3_errmsg(database_);
  check_interruption();
  throw DatabaseError(file_ + ": " + message);
}

int SqliteConnection::wait_for_lock(void* connection, int attempt) {
  auto& self = *static_cast<SqliteConnection*>(connection);
  const auto now = std::chrono::steady_clock::now();
  if (attempt == 0) self.wait_begin_ = now;
  if (platform::is_interrupted() || now - self.wait_begin_ > longest_wait) return 0;
  sqlite3_sleep(lock_poll_ms);
  return 1;
}

int SqliteConnection::is_interrupted(void*) { return platform::is_interrupted() ? 1 : 0; }

SqliteStatement::SqliteStatement(SqliteConnection& connection, const std::string& sql)
    : connection_(connection) {
  const int size = static_cast<int>(sql.size());
  if (sqlite3_prepare_v2(connection.get(), sql.c_str(), size, &statement_, nullptr) != SQLITE_OK) {
    connection.fail();
  }
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(statement_); }

void SqliteStatement::bind(int place, std::string_view text) {
  sqlite3_bind_text64(statement_, place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

bool SqliteStatement::next() {
  const int result = sqlite3_step(statement_);
  if (result != SQLITE_ROW && result != SQLITE_DONE) connection_.fail();
  return result == SQLITE_ROW;
}

std::string_view SqliteStatement::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  return bytes == nullptr ? std::string_view()
                          : std::string_view(bytes, static_cast<std::size_t>(size));
}

}  // namespace korvex::host
