#include "host/databases/sqlite_insertion.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

#include "host/databases/sql_names.h"
#include "host/databases/sql_words.h"
#include "host/process/signals.h"

namespace korvex::host {

namespace {

constexpr int primary_code_mask = 0xFF;

constexpr std::string_view failed_check = "CHECK constraint failed: ";
constexpr const char* dropped_row =
    "the database dropped the row without an error, as a trigger may ask it to";

bool has_word(std::string_view text, std::string_view word) {
  for (std::size_t at = text.find(word); at != std::string_view::npos;
       at = text.find(word, at + 1)) {
    const bool begins = at == 0 || !is_word_part(text[at - 1]);
    const std::size_t end = at + word.size();
    if (begins && (end == text.size() || !is_word_part(text[end]))) return true;
  }
  return false;
}

SqliteDefinition read_definition(SqliteConnection& connection, const std::string& table) {
  SqliteStatement rows(connection,
                       "SELECT type = 'view', sql FROM main.sqlite_schema"
                       " WHERE name = ? COLLATE NOCASE AND type IN ('table', 'view')");
  rows.bind(1, table);
  if (!rows.next()) return {};
  return {rows.integer(0) != 0, std::string(rows.text(1))};
}

// A column may say that rows in conflict are dropped or replaced, which is no way to load all of
// them. Only then is that overruled: it would also overrule what triggers say for rows of theirs.
std::string insertion(const TableSchema& table, const std::vector<std::size_t>& columns,
                      const SqliteDefinition& definition) {
  const std::vector<SqlWord> words = sql_words(definition.sql);
  const bool has_conflict_clause = std::any_of(
      words.begin(), words.end(), [](const SqlWord& word) { return word.is_keyword("CONFLICT"); });
  std::vector<std::string> names;
  std::string places;
  for (const std::size_t column : columns) {
    names.push_back(table.columns[column].name);
    places += places.empty() ? "?" : ", ?";
  }
  const std::string verb = has_conflict_clause ? "INSERT OR ABORT" : "INSERT";
  return verb + " INTO " + table.quoted_name + " (" + listed_names(names, ", ") + ") VALUES (" +
         places + ")";
}

}  // namespace

SqliteInsertion::SqliteInsertion(SqliteConnection& connection, const LoadedTable& table,
                                 std::size_t place)
    : connection_(connection), table_(table.schema), columns_(table.columns), place_(place) {
  for (const std::size_t column : columns_) {
    types_.push_back(table_.columns[column].type);
    names_.push_back(table_.columns[column].name);
  }
  refuse_missing_parents();
  definition_ = read_definition(connection_, table_.bare_name);
  insert_ =
      std::make_unique<SqliteStatement>(connection_, insertion(table_, columns_, definition_));
}

void SqliteInsertion::add(const RowFields& fields) {
  sqlite3_stmt* const insert = insert_->get();
  for (std::size_t i = 0; i < fields.size(); ++i) bind(insert, i + 1, i, fields[i]);
  const int changes = definition_.is_view ? sqlite3_total_changes(connection_.get()) : 0;
  const int result = sqlite3_step(insert);
  if (result != SQLITE_DONE) refuse(fields, result);
  // What a view's triggers do with a row counts as their changes alone.
  const bool is_kept = definition_.is_view ? sqlite3_total_changes(connection_.get()) != changes
                                           : sqlite3_changes(connection_.get()) == 1;
  sqlite3_reset(insert);
  ++rows_;
  if (is_kept) return;
  RefusedRow row;
  row.table = place_;
  row.message = dropped_row;
  row.record = rows_;
  throw RowRefused(std::move(row));
}

// The number that a field of the load becomes in its column, if it becomes an integer.
std::optional<std::int64_t> SqliteInsertion::whole_number(std::size_t index,
                                                          std::string_view field) const {
  const ColumnType type = types_[index];
  if (field.empty() || (type != ColumnType::integer16 && type != ColumnType::integer32 &&
                        type != ColumnType::integer64)) {
    return std::nullopt;
  }
  const char* const end = field.data() + field.size();
  const char* const begin = field.data() + (field.front() == '+' ? 1 : 0);
  std::int64_t number = 0;
  const auto [stop, failure] = std::from_chars(begin, end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

// A number that the column would turn into an integer is handed over as one: SQLite need not read
// it again.
void SqliteInsertion::bind(sqlite3_stmt* statement, std::size_t parameter, std::size_t index,
                           std::string_view field) const {
  const int place = static_cast<int>(parameter);
  if (field.empty()) {
    sqlite3_bind_null(statement, place);
  } else if (const auto number = whole_number(index, field)) {
    sqlite3_bind_int64(statement, place, *number);
  } else if (types_[index] == ColumnType::binary) {
    sqlite3_bind_blob64(statement, place, field.data(), field.size(), SQLITE_STATIC);
  } else {
    sqlite3_bind_text64(statement, place, field.data(), field.size(), SQLITE_STATIC, SQLITE_UTF8);
  }
}

// SQLite's own message about such a key names the other table only.
void SqliteInsertion::refuse_missing_parents() {
  for (const ForeignKey& key : table_.foreign_keys) {
    SqliteStatement parent(connection_,
                           "SELECT 1 FROM main.sqlite_schema WHERE name = ? COLLATE NOCASE");
    parent.bind(1, key.table);
    if (parent.next()) continue;
    throw DatabaseError(table_.name + ": column " + table_.columns[key.columns.front()].name +
                        ": refers to " + key.table +
                        ", which does not exist: SQLite then takes no rows");
  }
}

void SqliteInsertion::refuse(const RowFields& fields, int result) {
  RefusedRow row;
  row.table = place_;
  row.message = sqlite3_errmsg(connection_.get());
  check_interruption();
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

// The message names a CHECK, or shows it where it has no name; else it names columns after the
// table's name.
std::vector<std::size_t> SqliteInsertion::blamed_columns(const std::string& message) const {
  if (message.starts_with(failed_check)) {
    const std::string check = message.substr(failed_check.size());
    const std::vector<SqlWord> named = check_expression(definition_.sql, check);
    return names_in(named.empty() ? sql_words(check) : named, names_);
  }
  std::vector<std::size_t> exact;
  std::vector<std::size_t> mentioned;
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (has_word(message, table_.bare_name + "." + names_[i])) exact.push_back(i);
    if (has_word(message, names_[i])) mentioned.push_back(i);
  }
  return exact.empty() ? mentioned : exact;
}

// SQLite does not say which foreign key failed, so each is asked for. Not even whether a key may
// wait for its parent can be learned: with several in doubt, all of them are named.
std::vector<std::size_t> SqliteInsertion::unreferenced_columns(const RowFields& fields) {
  parents_.resize(table_.foreign_keys.size());
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i < parents_.size(); ++i) {
    const ForeignKey& key = table_.foreign_keys[i];
    const auto places = places_among(columns_, key.columns);
    const bool has_null = std::any_of(places.begin(), places.end(),
                                      [&](std::size_t place) { return fields[place].empty(); });
    if (places.size() != key.columns.size() || has_null || is_own_parent(key, places, fields))
      continue;
    if (!has_parent(i, places, fields)) columns.insert(columns.end(), places.begin(), places.end());
  }
  std::sort(columns.begin(), columns.end());
  columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
  return columns;
}

bool SqliteInsertion::has_parent(std::size_t key_number, const std::vector<std::size_t>& places,
                                 const RowFields& fields) {
  auto& parent = parents_[key_number];
  if (!parent) {
    const ForeignKey& key = table_.foreign_keys[key_number];
    const std::string condition = listed_names(key.referenced_columns, " AND ", "", " = ?");
    parent = std::make_unique<SqliteStatement>(
        connection_, "SELECT 1 FROM " + key.quoted_table + " WHERE " + condition);
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    bind(parent->get(), i + 1, places[i], fields[places[i]]);
  }
  const bool is_there = parent->next();
  sqlite3_reset(parent->get());
  return is_there;
}

// Whether the row refers to itself, which a row that was refused cannot be asked for.
bool SqliteInsertion::is_own_parent(const ForeignKey& key, const std::vector<std::size_t>& places,
                                    const RowFields& fields) const {
  if (!key.is_to_own_table) return false;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto other = std::find_if(columns_.begin(), columns_.end(), [&](std::size_t column) {
      return table_.columns[column].name == key.referenced_columns[i];
    });
    if (other == columns_.end()) return false;
    const auto place = static_cast<std::size_t>(other - columns_.begin());
    const auto number = whole_number(place, fields[place]);
    const bool is_same = number ? number == whole_number(places[i], fields[places[i]])
                                : fields[place] == fields[places[i]];
    if (!is_same) return false;
  }
  return true;
}

// The foreign keys that have rows without parents.
std::set<std::size_t> SqliteInsertion::unreferenced_keys() {
  constexpr int key_field = 3;  // of what the pragma answers with
  SqliteStatement rows(connection_,
                       "PRAGMA main.foreign_key_check(" + quoted_name(table_.bare_name) + ")");
  std::set<std::size_t> keys;
  while (rows.next()) keys.insert(static_cast<std::size_t>(rows.integer(key_field)));
  return keys;
}

void SqliteInsertion::refuse_unreferenced(const std::string& message) {
  const std::set<std::size_t> keys = unreferenced_keys();
  if (keys.empty()) return;
  RefusedRow row;
  row.table = place_;
  row.message = message;
  // With several, only the row can tell which one it was.
  if (keys.size() == 1 && *keys.begin() < table_.foreign_keys.size()) {
    row.columns = places_among(columns_, table_.foreign_keys[*keys.begin()].columns);
  }
  row.first = 1;
  row.last = rows_;
  row.blame = [this](const RowFields& fields) { return unreferenced_columns(fields); };
  throw RowRefused(std::move(row));
}

}  // namespace korvex::host
