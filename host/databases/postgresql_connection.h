#pragma once

#include <libpq-fe.h>

#include <memory>
#include <string>
#include <vector>

namespace korvex::host {

struct PostgresqlResultDeleter {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresqlResult = std::unique_ptr<PGresult, PostgresqlResultDeleter>;

// A field of a result; NULL reads as an empty text.
std::string result_text(const PostgresqlResult& result, int row, int column);

// What the server says of an error under one of its headings; empty for none.
std::string diagnostic(const PostgresqlResult& result, int field);

// A connection whose every wait ends when the user interrupts the command. Operations throw
// DatabaseError or Interrupted.
class PostgresqlConnection {
 public:
  explicit PostgresqlConnection(const std::string& connection);
  ~PostgresqlConnection();
  PostgresqlConnection(const PostgresqlConnection&) = delete;
  PostgresqlConnection& operator=(const PostgresqlConnection&) = delete;

  PGconn* get() const { return connection_; }

  // Runs one statement and answers its result, which is no error.
  PostgresqlResult run(const std::string& sql, const std::vector<std::string>& parameters = {});

  // Sends a statement without waiting; answers come from next_result(), the last one is null.
  void send(const std::string& sql, const std::vector<std::string>& parameters = {});
  PostgresqlResult next_result();

  // Ends the transaction and keeps it. Waits whatever the user asks for: once the server has been
  // told, only its answer says what is kept. Throws OutcomeUnknown when there is none.
  void commit();

  // Waits until the connection can be read from, or also written to.
  void wait(bool for_writing);

  // Throws Interrupted, or else the connection's own message, or `result`'s.
  [[noreturn]] void fail() const;
  [[noreturn]] static void fail(const PostgresqlResult& result);

  // Ends what the server is doing, and the connection; never waits long.
  void abandon();

 private:
  void connect();
  std::string last_words() const;

  PGconn* connection_ = nullptr;
  bool heeds_interrupts_ = true;
};

}  // namespace korvex::host
