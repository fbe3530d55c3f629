#include <algorithm>
#include <charconv>
#include <deque>

#include "host/databases/copy_text.h"
#include "host/databases/postgresql_database.h"
#include "host/databases/postgresql_refusal.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

constexpr std::size_t message_size = 256 * 1024;
// One COPY does not say that a row was refused before its end. A load is a chain of them, each long
// enough that ending it costs nothing that can be measured.
constexpr std::size_t copy_size = 32 * 1024 * 1024;

std::int64_t rows_of(const PostgresqlResult& result) {
  const std::string_view text = PQcmdTuples(result.get());
  std::int64_t rows = 0;
  std::from_chars(text.data(), text.data() + text.size(), rows);
  return rows;
}

// A table while it is loaded.
struct Target {
  Target(PostgresqlConnection& connection, const LoadedTable& loaded, std::size_t place)
      : table(loaded),
        refusals(connection, table, place),
        columns(listed_names(refusals.names(), ", ")),
        sequences(read_sequences(connection, table)) {
    if (table.cycle == 0) {
      copied = table.schema.bare_name;
      copy = "COPY " + table.schema.quoted_name;
    } else {
      copied = "korvex_staged_" + std::to_string(place);
      copy = "COPY " + staged();
    }
    copy += " (" + columns + ") FROM STDIN";
  }

  // The table that the rows of one in a cycle wait in.
  std::string staged() const { return "pg_temp." + quoted_name(copied); }

  const LoadedTable& table;
  const PostgresqlRefusals refusals;
  const std::string columns;
  const std::vector<ColumnSequence> sequences;
  std::string copied;  // what the rows are copied to, by its bare name
  std::string copy;
  std::int64_t rows = 0;
};

class PostgresqlLoad : public DatabaseLoad {
 public:
  PostgresqlLoad(PostgresqlConnection& connection, LoadRequest request)
      : connection_(connection), request_(std::move(request)) {
    for (std::size_t i = 0; i < request_.tables.size(); ++i) {
      targets_.emplace_back(connection_, request_.tables[i], i);
    }
    PQsetnonblocking(connection_.get(), 1);
    connection_.run("BEGIN");
    // Triggers and checks of the tables may count on the path of the user whose rows these are. The
    // statements of a load leave no name open.
    connection_.query("SELECT pg_catalog.set_config('search_path', $1, true)", 1,
                      {connection_.user_path().setting});
    if (request_.empties_first) empty_tables();
    if (request_.defers_keys) connection_.run("SET CONSTRAINTS ALL DEFERRED");
  }

  ~PostgresqlLoad() override {
    if (!is_finished_) connection_.abandon();
  }

  void begin_table(std::size_t table) override {
    place_ = table;
    copy_begin_ = 0;
    if (target().table.cycle != 0) make_staged();
    connection_.begin_copy(target().copy);
  }

  void add(const RowFields& fields) override {
    append_copy_row(fields, message_);
    ++target().rows;
    if (message_.size() < message_size) return;
    copied_ += message_.size();
    send_message();
    if (copied_ < copy_size) return;
    end_copy();
    connection_.begin_copy(target().copy);
  }

  void end_table() override {
    send_message();
    end_copy();
    const std::size_t cycle = target().table.cycle;
    const bool is_last = place_ + 1 == targets_.size() || targets_[place_ + 1].table.cycle != cycle;
    if (cycle != 0 && is_last) insert_staged(cycle);
  }

  std::vector<std::string> finish() override {
    // What is checked at the end of the transaction is checked here, where it can still be told
    // which row it was.
    connection_.send("SET CONSTRAINTS ALL IMMEDIATE");
    while (const PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) refuse_whole(result);
    }
    std::vector<std::string> notes;
    for (const Target& target : targets_) continue_sequences(target, notes);
    connection_.commit();
    is_finished_ = true;
    return notes;
  }

 private:
  Target& target() { return targets_[place_]; }

  void empty_tables() {
    std::string list;
    for (const LoadedTable& table : request_.tables) {
      list += (list.empty() ? "" : ", ") + table.schema.quoted_name;
    }
    connection_.run("TRUNCATE " + list);
  }

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
    const SentRows rows = {copy_begin_, target().rows};
    std::int64_t kept = 0;
    while (const PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) {
        target().refusals.refuse(result, rows, target().copied);
      }
      kept = std::max(kept, rows_of(result));
    }
    target().refusals.require_all(kept, rows);
    copy_begin_ = target().rows;
    copied_ = 0;
  }

  // A table with the loaded columns alone and with their checks: what they refuse, they refuse
  // here, where the server says which row it was.
  void make_staged() {
    const TableSchema& schema = target().table.schema;
    connection_.run("CREATE TEMPORARY TABLE " + target().staged() + " (LIKE " + schema.quoted_name +
                    " INCLUDING CONSTRAINTS) ON COMMIT DROP");
    std::string left_out;
    for (std::size_t i = 0; i < schema.columns.size(); ++i) {
      const auto& columns = target().table.columns;
      if (std::find(columns.begin(), columns.end(), i) != columns.end()) continue;
      left_out += (left_out.empty() ? " DROP COLUMN " : ", DROP COLUMN ") +
                  quoted_name(schema.columns[i].name) + " CASCADE";
    }
    if (!left_out.empty()) connection_.run("ALTER TABLE " + target().staged() + left_out);
  }

  // Keys that are checked at once are checked when a statement ends: so one puts in all the rows
  // of a cycle.
  void insert_staged(std::size_t cycle) {
    std::vector<const Target*> targets;
    for (const Target& target : targets_) {
      if (target.table.cycle == cycle) targets.push_back(&target);
    }
    std::string insertions;
    std::string counts;
    for (std::size_t i = 0; i < targets.size(); ++i) {
      const Target& target = *targets[i];
      const std::string name = "rows_" + std::to_string(i);
      insertions += (i == 0 ? "WITH " : ", ") + name + " AS (INSERT INTO " +
                    target.table.schema.quoted_name + " (" + target.columns +
                    ") OVERRIDING SYSTEM VALUE SELECT " + target.columns + " FROM " +
                    target.staged() + " RETURNING 1)";
      counts += (i == 0 ? " SELECT " : ", ") + ("(SELECT pg_catalog.count(*) FROM " + name + ")");
    }
    connection_.send(insertions + counts);
    while (PostgresqlResult result = connection_.next_result()) {
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) refuse_whole(result);
      const PostgresqlRows kept(std::move(result), static_cast<int>(targets.size()));
      for (std::size_t i = 0; i < targets.size(); ++i) {
        targets[i]->refusals.require_all(kept.number<std::int64_t>(0, static_cast<int>(i)),
                                         {0, targets[i]->rows});
      }
    }
  }

  // For an error that may be about any row of any table.
  [[noreturn]] void refuse_whole(const PostgresqlResult& result) const {
    for (const Target& target : targets_) {
      if (targets_.size() > 1 && !target.refusals.is_about(result)) continue;
      target.refusals.refuse(result, {0, target.rows}, target.copied);
    }
    PostgresqlConnection::fail(result);
  }

  void continue_sequences(const Target& target, std::vector<std::string>& notes) {
    for (const ColumnSequence& sequence : target.sequences) {
      if (sequence.is_allowed) {
        continue_sequence(connection_, sequence);
      } else {
        notes.push_back(sequence.column + ": the sequence " + sequence.name +
                        " does not go on after the loaded values: you may not change it");
      }
    }
  }

  PostgresqlConnection& connection_;
  const LoadRequest request_;
  std::deque<Target> targets_;  // side by side with the request's
  std::size_t place_ = 0;       // of the one that takes the rows
  std::string message_;
  std::size_t copied_ = 0;
  std::int64_t copy_begin_ = 0;  // rows before the current COPY
  bool is_finished_ = false;
};

}  // namespace

std::unique_ptr<DatabaseLoad> begin_postgresql_load(PostgresqlConnection& connection,
                                                    LoadRequest request) {
  return std::make_unique<PostgresqlLoad>(connection, std::move(request));
}

}  // namespace korvex::host
