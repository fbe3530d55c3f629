#include "host/sqlite_loader.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "host/interrupt.h"
#include "host/sql_names.h"

namespace korvex::host {

namespace {

constexpr int primary_code_mask = 0xFF;

bool is_word_part(char byte) {
  return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '_' || (byte & 0x80) != 0;
}

bool has_word(std::string_view text, std::string_view word) {
  for (std::size_t at = text.find(word); at != std::string_view::npos;
       at = text.find(word, at + 1)) {
    const bool begins = at == 0 || !is_word_part(text[at - 1]);
    const std::size_t end = at + word.size();
    if (begins && (end == text.size() || !is_word_part(text[end]))) return true;
  }
  return false;
}

std::string insertion(const TableSchema& table, const std::vector<std::size_t>& columns) {
  std::vector<std::string> names;
  std::string places;
  for (const std::size_t column : columns) {
    names.push_back(table.columns[column].name);
    places += places.empty() ? "?" : ", ?";
  }
  return "INSERT INTO " + table.quoted_name + " (" + listed_names(names, ", ") + ") VALUES (" +
         places + ")";
}

class SqliteLoader : public TableLoader {
 public:
  SqliteLoader(SqliteConnection& connection, const TableSchema& table,
               std::vector<std::size_t> columns)
      : connection_(connection), table_(table), columns_(std::move(columns)) {
    connection_.run("PRAGMA foreign_keys = ON");
    connection_.run("BEGIN IMMEDIATE");
    try {
      insert_ = std::make_unique<SqliteStatement>(connection_, insertion(table_, columns_));
    } catch (...) {
      connection_.roll_back();
      throw;
    }
  }

  ~SqliteLoader() override {
    insert_.reset();
    connection_.roll_back();
  }

  void add(const RowFields& fields) override {
    sqlite3_stmt* const insert = insert_->get();
    for (std::size_t i = 0; i < fields.size(); ++i) bind(insert, i, fields[i]);
    const int result = sqlite3_step(insert);
    if (result != SQLITE_DONE) refuse(fields, result);
    sqlite3_reset(insert);
    ++rows_;
    if (rows_ == 1) first_row_id_ = sqlite3_last_insert_rowid(connection_.get());
  }

  void finish() override {
    last_row_id_ = sqlite3_last_insert_rowid(connection_.get());
    InterruptWatch::check();
    const int result = sqlite3_exec(connection_.get(), "COMMIT", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK) return;
    const std::string message = sqlite3_errmsg(connection_.get());
    InterruptWatch::check();
    if (result == SQLITE_CONSTRAINT_FOREIGNKEY) find_unreferenced(message);
    throw DatabaseError(connection_.file() + ": " + message);
  }

 private:
  // A number that the column would turn into an integer is handed over as one: SQLite need not read
  // it again.
  void bind(sqlite3_stmt* insert, std::size_t index, std::string_view field) {
    const int place = static_cast<int>(index) + 1;
    if (field.empty()) {
      sqlite3_bind_null(insert, place);
      return;
    }
    const ColumnType type = table_.columns[columns_[index]].type;
    if (type == ColumnType::integer16 || type == ColumnType::integer32 ||
        type == ColumnType::integer64) {
      const char* const end = field.data() + field.size();
      const char* const begin = field.data() + (field.front() == '+' ? 1 : 0);
      std::int64_t number = 0;
      const auto [stop, failure] = std::from_chars(begin, end, number);
      if (failure == std::errc() && stop == end) {
        sqlite3_bind_int64(insert, place, number);
        return;
      }
    }
    if (type == ColumnType::binary) {
      sqlite3_bind_blob64(insert, place, field.data(), field.size(), SQLITE_STATIC);
    } else {
      sqlite3_bind_text64(insert, place, field.data(), field.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
  }

  [[noreturn]] void refuse(const RowFields& fields, int result) {
    RefusedRow row;
    row.message = sqlite3_errmsg(connection_.get());
    InterruptWatch::check();
    const int code = result & primary_code_mask;
    if (code != SQLITE_CONSTRAINT && code != SQLITE_MISMATCH && code != SQLITE_TOOBIG &&
        code != SQLITE_ERROR) {
      throw DatabaseError(connection_.file() + ": " + row.message);
    }
    row.record = rows_ + 1;
    row.columns = result == SQLITE_CONSTRAINT_FOREIGNKEY ? unreferenced_columns(fields)
                                                         : blamed_columns(row.message);
    throw RowRefused(std::move(row));
  }

  // The message names columns behind the table's name, or an expression that holds them.
  std::vector<std::size_t> blamed_columns(const std::string& message) const {
    std::vector<std::size_t> exact;
    std::vector<std::size_t> mentioned;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::string& name = table_.columns[columns_[i]].name;
      if (has_word(message, table_.name + "." + name)) exact.push_back(i);
      if (has_word(message, name)) mentioned.push_back(i);
    }
    return exact.empty() ? mentioned : exact;
  }

  // SQLite does not say which foreign key failed, so each is asked for.
  std::vector<std::size_t> unreferenced_columns(const RowFields& fields) {
    for (const ForeignKey& key : table_.foreign_keys) {
      const auto places = places_among(columns_, key.columns);
      if (places.size() != key.columns.size()) continue;
      const std::string condition = listed_names(key.referenced_columns, " AND ", "", " = ?");
      SqliteStatement parent(connection_,
                             "SELECT 1 FROM " + key.quoted_table + " WHERE " + condition);
      for (std::size_t i = 0; i < places.size(); ++i) {
        parent.bind(static_cast<int>(i) + 1, fields[places[i]]);
      }
      if (!parent.next()) return places;
    }
    return {};
  }

  // For a foreign key that is only checked at the end. Rows are known by their number alone, so a
  // record can be told where the rows of this load have numbers in a row.
  void find_unreferenced(const std::string& message) {
    RefusedRow row;
    row.message = message;
    if (last_row_id_ - first_row_id_ + 1 != rows_) return;
    SqliteStatement rows(connection_,
                         "SELECT rowid, fkid FROM pragma_foreign_key_check(?)"
                         " WHERE rowid BETWEEN ? AND ? ORDER BY rowid LIMIT 1");
    rows.bind(1, table_.name);
    sqlite3_bind_int64(rows.get(), 2, first_row_id_);
    sqlite3_bind_int64(rows.get(), 3, last_row_id_);
    if (!rows.next()) return;
    row.record = rows.integer(0) - first_row_id_ + 1;
    const auto key = static_cast<std::size_t>(rows.integer(1));
    if (key < table_.foreign_keys.size())
      row.columns = places_among(columns_, table_.foreign_keys[key].columns);
    throw RowRefused(std::move(row));
  }

  SqliteConnection& connection_;
  const TableSchema table_;
  const std::vector<std::size_t> columns_;
  std::unique_ptr<SqliteStatement> insert_;
  std::int64_t rows_ = 0;
  std::int64_t first_row_id_ = 0;
  std::int64_t last_row_id_ = 0;
};

}  // namespace

std::unique_ptr<TableLoader> begin_sqlite_load(SqliteConnection& connection,
                                               const TableSchema& table,
                                               std::vector<std::size_t> columns) {
  return std::make_unique<SqliteLoader>(connection, table, std::move(columns));
}

}  // namespace korvex::host
