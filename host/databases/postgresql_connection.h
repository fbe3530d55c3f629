#pragma once

#include <libpq-fe.h>

#include <string>
#include <vector>

#include "host/databases/postgresql_rows.h"

namespace korvex::host {

// What the server says of an error under one of its headings; empty for none.
std::string diagnostic(const PostgresqlResult& result, int field);

// Where the user's own sessions look names up.
struct SearchPath {
  std::string setting;  // as it is set
  std::string schemas;  // those that are there, in their order, as an array of the server
};

// A connection whose every wait ends when the user interrupts the command. It looks names up in the
// server's own catalogue alone: a name that a query leaves open must not be another user's to fill.
// Operations throw DatabaseError or Interrupted.
class PostgresqlConnection {
 public:
  // Throws std::invalid_argument for a text that is no connection string.
  explicit PostgresqlConnection(const std::string& connection);
  ~PostgresqlConnection();
  PostgresqlConnection(const PostgresqlConnection&) = delete;
  PostgresqlConnection& operator=(const PostgresqlConnection&) = delete;

  PGconn* get() const { return connection_; }

  const SearchPath& user_path() const { return user_path_; }

  // Runs one statement and answers its result, which is no error.
  PostgresqlResult run(const std::string& sql, const std::vector<std::string>& parameters = {});

  // The same for a statement that answers with rows of so many columns.
  PostgresqlRows query(const std::string& sql, int columns,
                       const std::vector<std::string>& parameters = {});

  // Runs a COPY from here to the server, which then waits for its rows.
  void begin_copy(const std::string& sql);

  // Sends a statement without waiting; answers come from next_result(), the last one is null.
  void send(const std::string& sql, const std::vector<std::string>& parameters = {});
  PostgresqlResult next_result();

  // Commits the transaction. This wait cannot be interrupted: once the COMMIT is sent, only the
  // server's answer says whether it happened. Throws OutcomeUnknown when there is none.
  void commit();

  // Waits until the connection can be read from, or also written to.
  void wait_for_server(bool for_writing);

  // Throws Interrupted, or else the connection's own message, or `result`'s.
  [[noreturn]] void fail() const;
  [[noreturn]] static void fail(const PostgresqlResult& result);

  // Ends what the server is doing, and the connection; never waits long.
  void abandon();

 private:
  void connect();
  void wait(short events);
  void leave_user_path();
  PostgresqlResult next_answer();
  std::string last_words() const;

  PGconn* connection_ = nullptr;
  SearchPath user_path_;
  bool ends_on_interrupt_ = true;
};

}  // namespace korvex::host
