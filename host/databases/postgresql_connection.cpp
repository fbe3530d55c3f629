#include "host/databases/postgresql_connection.h"

#include <poll.h>

#include <cerrno>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include "host/databases/database.h"
#include "host/databases/postgresql_database.h"
#include "host/process/signals.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

// What is left of the time in which an interrupt ends a command.
constexpr auto longest_cancel = std::chrono::milliseconds(50);

// A message of the client library, which ends its lines.
std::string text_of(const char* message) { return std::string(platform::trimmed(message, "\n")); }

// What comes of `work`, which no signal ends, in a thread of its own. The thread is left to itself,
// with all that it works on, when the caller no longer waits for it.
template <typename Work>
auto in_thread(Work work) {
  auto promise = std::make_shared<std::promise<decltype(work())>>();
  auto result = promise->get_future();
  std::thread([promise, work] { promise->set_value(work()); }).detach();
  return result;
}

// A name is looked up by such a call.
template <typename Work>
auto wait_for_thread(Work work) {
  constexpr std::chrono::milliseconds slice(platform::wait_slice_ms);
  auto result = in_thread(work);
  while (result.wait_for(slice) != std::future_status::ready) check_interruption();
  return result.get();
}

void ignore_notice(void*, const PGresult*) {}

}  // namespace

std::string diagnostic(const PostgresqlResult& result, int field) {
  const char* text = PQresultErrorField(result.get(), field);
  return text == nullptr ? std::string() : std::string(text);
}

PostgresqlConnection::PostgresqlConnection(const std::string& connection) {
  check_connection_string(connection);
  connection_ = wait_for_thread([connection] { return PQconnectStart(connection.c_str()); });
  if (connection_ == nullptr) throw std::bad_alloc();
  try {
    connect();
    PQsetNoticeReceiver(connection_, ignore_notice, nullptr);
    leave_user_path();
    run("SET client_encoding = 'UTF8'");
    // Texts of moments and numbers as they are written, whatever the server's own settings: a
    // moment without a zone must mean the same everywhere.
    run("SET datestyle = 'ISO, YMD'");
    run("SET timezone = 'UTC'");
    run("SET extra_float_digits = 1");
    run("SET bytea_output = 'hex'");
    run("SET intervalstyle = 'postgres'");
  } catch (...) {
    PQfinish(connection_);
    throw;
  }
}

PostgresqlConnection::~PostgresqlConnection() { PQfinish(connection_); }

void PostgresqlConnection::connect() {
  for (PostgresPollingStatusType next = PGRES_POLLING_WRITING; next != PGRES_POLLING_OK;) {
    if (next == PGRES_POLLING_FAILED || PQstatus(connection_) == CONNECTION_BAD) fail();
    wait(next == PGRES_POLLING_WRITING ? POLLOUT : POLLIN);
    // A thread that outlives the call keeps it.
    PGconn* const connection = std::exchange(connection_, nullptr);
    next = wait_for_thread([connection] { return PQconnectPoll(connection); });
    connection_ = connection;
  }
}

// Both statements name the schema of everything in them: they are the only ones that run where
// others may have made something of the same name. A setting at the begin of the connection would
// be safe too, but would hide what the user's own path is.
void PostgresqlConnection::leave_user_path() {
  const PostgresqlRows path = query(
      "SELECT pg_catalog.current_setting('search_path'), pg_catalog.current_schemas(true)", 2);
  user_path_ = {std::string(path.text(0, 0)), std::string(path.text(0, 1))};
  query("SELECT pg_catalog.set_config('search_path', '', false)", 1);
}

PostgresqlResult PostgresqlConnection::run(const std::string& sql,
                                           const std::vector<std::string>& parameters) {
  send(sql, parameters);
  PostgresqlResult last;
  while (PostgresqlResult result = next_result()) {
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE) fail(result);
    last = std::move(result);
  }
  if (!last) fail();
  return last;
}

PostgresqlRows PostgresqlConnection::query(const std::string& sql, int columns,
                                           const std::vector<std::string>& parameters) {
  return {run(sql, parameters), columns};
}

void PostgresqlConnection::begin_copy(const std::string& sql) {
  send(sql);
  const PostgresqlResult answer = next_answer();
  const ExecStatusType status = PQresultStatus(answer.get());
  if (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE) fail(answer);
  if (status != PGRES_COPY_IN) refuse_answer();
}

void PostgresqlConnection::send(const std::string& sql,
                                const std::vector<std::string>& parameters) {
  std::vector<const char*> texts;
  for (const std::string& parameter : parameters) texts.push_back(parameter.c_str());
  if (PQsendQueryParams(connection_, sql.c_str(), static_cast<int>(texts.size()), nullptr,
                        texts.data(), nullptr, nullptr, 0) == 0) {
    fail();
  }
}

PostgresqlResult PostgresqlConnection::next_result() {
  PostgresqlResult answer = next_answer();
  const ExecStatusType status = PQresultStatus(answer.get());
  // The library would give this answer again and again.
  if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT || status == PGRES_COPY_BOTH) {
    refuse_answer();
  }
  return answer;
}

PostgresqlResult PostgresqlConnection::next_answer() {
  for (;;) {
    const int unsent = PQflush(connection_);
    if (unsent < 0) fail();
    if (unsent == 0 && PQisBusy(connection_) == 0) break;
    wait_for_server(unsent > 0);
    if (PQconsumeInput(connection_) == 0) fail();
  }
  return PostgresqlResult(PQgetResult(connection_));
}

void PostgresqlConnection::commit() {
  check_interruption();
  ends_on_interrupt_ = false;
  try {
    run("COMMIT");
  } catch (const DatabaseError& failure) {
    if (PQstatus(connection_) == CONNECTION_BAD) throw OutcomeUnknown(failure.what());
    throw;
  }
  ends_on_interrupt_ = true;
}

void PostgresqlConnection::wait_for_server(bool for_writing) {
  wait(static_cast<short>(POLLIN | (for_writing ? POLLOUT : 0)));
}

void PostgresqlConnection::wait(short events) {
  const int socket = PQsocket(connection_);
  if (socket < 0) return;  // the call that comes next tells what is wrong
  if (ends_on_interrupt_) {
    if (!platform::wait_until_ready(socket, events)) check_interruption();
    return;
  }
  struct pollfd waiting = {socket, events, 0};
  while (::poll(&waiting, 1, -1) < 0 && errno == EINTR) continue;
}

void PostgresqlConnection::fail() const {
  check_interruption();
  throw DatabaseError(last_words());
}

// A server that ends a connection says why; after a COPY the library only reads that when the COPY
// is ended, and says itself that the connection is closed.
std::string PostgresqlConnection::last_words() const {
  std::string own = text_of(PQerrorMessage(connection_));
  if (PQstatus(connection_) != CONNECTION_BAD) return own;
  PQputCopyEnd(connection_, nullptr);
  while (const PostgresqlResult result{PQgetResult(connection_)}) {
    if (!diagnostic(result, PG_DIAG_SQLSTATE).empty()) {
      return text_of(PQresultErrorMessage(result.get()));
    }
  }
  return own;
}

void PostgresqlConnection::fail(const PostgresqlResult& result) {
  check_interruption();
  throw DatabaseError(text_of(PQresultErrorMessage(result.get())));
}

void PostgresqlConnection::abandon() {
  if (PQtransactionStatus(connection_) == PQTRANS_ACTIVE) {
    // A server that cannot be reached keeps nothing of this either, it only finds out later.
    const std::shared_ptr<PGcancel> request(PQgetCancel(connection_), PQfreeCancel);
    const auto is_sent = in_thread([request] {
      char message[256];
      return PQcancel(request.get(), message, sizeof message);
    });
    is_sent.wait_for(longest_cancel);
  }
  PQfinish(connection_);
  connection_ = nullptr;
}

}  // namespace korvex::host
