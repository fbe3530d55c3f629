#include <algorithm>
#include <map>

#include "host/databases/database.h"
#include "host/databases/sql_names.h"
#include "host/databases/sqlite_database.h"
#include "host/text/any_case.h"

namespace korvex::host {

namespace {

// The kinds of columns that "table_xinfo" distinguishes; the others are computed or hidden.
constexpr std::int64_t plain_column = 0;

std::size_t find_column(const TableSchema& schema, std::string_view name) {
  const auto found =
      std::find_if(schema.columns.begin(), schema.columns.end(), [&](const ColumnSchema& column) {
        return column.name.size() == name.size() &&
               ::strncasecmp(column.name.data(), name.data(), name.size()) == 0;
      });
  return static_cast<std::size_t>(found - schema.columns.begin());
}

void add_unique_set(TableSchema& schema, std::vector<std::size_t> columns) {
  const auto is_same = [&](const std::vector<std::size_t>& set) {
    return std::is_permutation(set.begin(), set.end(), columns.begin(), columns.end());
  };
  if (columns.empty() || std::any_of(schema.unique_sets.begin(), schema.unique_sets.end(), is_same))
    return;
  schema.unique_sets.push_back(std::move(columns));
}

// A pragma as a statement: as a table in a query, the file could have one of its own by that name.
std::string pragma(const std::string& name, std::string_view argument) {
  return "PRAGMA main." + name + "(" + quoted_name(argument) + ")";
}

// Where the fields are in the rows of the pragmas.
namespace column_field {
enum { name = 1, type, not_null, default_value, place_in_key, kind };
}
namespace index_field {
enum { name = 1, is_unique, origin, is_partial };
}
namespace index_column_field {
enum { column = 1 };
}
namespace key_field {
enum { id, place, table, from, to };
}

void read_columns(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement rows(connection, pragma("table_xinfo", schema.name));
  std::map<std::int64_t, std::size_t> key;
  while (rows.next()) {
    ColumnSchema column;
    column.name = rows.text(column_field::name);
    column.declared_type = rows.text(column_field::type);
    set_sqlite_type(column.declared_type, column);
    column.has_default = !rows.is_null(column_field::default_value);
    column.is_generated = rows.integer(column_field::kind) != plain_column;
    const std::int64_t place_in_key = rows.integer(column_field::place_in_key);
    column.nullable = rows.integer(column_field::not_null) == 0 && place_in_key == 0;
    if (place_in_key > 0) key[place_in_key] = schema.columns.size();
    schema.columns.push_back(column);
  }
  std::vector<std::size_t> columns;
  for (const auto& [place, column] : key) columns.push_back(column);
  add_unique_set(schema, columns);
}

// The columns of an index; none when it has an expression among them.
std::vector<std::size_t> index_columns(SqliteConnection& connection, const TableSchema& schema,
                                       const std::string& index) {
  SqliteStatement rows(connection, pragma("index_info", index));
  std::vector<std::size_t> columns;
  while (rows.next()) {
    // An expression has a number below 0, which is none of a column either.
    const auto column = static_cast<std::size_t>(rows.integer(index_column_field::column));
    if (column >= schema.columns.size()) return {};
    columns.push_back(column);
  }
  return columns;
}

// The oldest first, which the pragma has last.
void read_unique_sets(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement rows(connection, pragma("index_list", schema.name));
  std::vector<std::string> indexes;
  while (rows.next()) {
    if (rows.integer(index_field::is_unique) == 0 || rows.integer(index_field::is_partial) != 0) {
      continue;
    }
    indexes.emplace_back(rows.text(index_field::name));
  }
  for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
    add_unique_set(schema, index_columns(connection, schema, *index));
  }
}

// A foreign key may leave out the columns that it refers to, and then means the primary key.
std::vector<std::string> primary_key_of(SqliteConnection& connection, const std::string& table) {
  SqliteStatement rows(connection, pragma("table_info", table));
  std::map<std::int64_t, std::string> names;
  while (rows.next()) {
    const std::int64_t place = rows.integer(column_field::place_in_key);
    if (place > 0) names[place] = rows.text(column_field::name);
  }
  std::vector<std::string> key;
  for (auto& [place, name] : names) key.push_back(std::move(name));
  return key;
}

// A table's name in its own letters: SQLite finds it in any case. As it is when there is none.
std::string own_spelling(SqliteConnection& connection, const std::string& table) {
  SqliteStatement rows(connection,
                       "SELECT name FROM main.sqlite_schema WHERE name = ? COLLATE NOCASE"
                       " AND type IN ('table', 'view')");
  rows.bind(1, table);
  return rows.next() ? std::string(rows.text(0)) : table;
}

void read_foreign_keys(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement rows(connection, pragma("foreign_key_list", schema.name));
  std::map<std::int64_t, ForeignKey> keys;
  while (rows.next()) {
    ForeignKey& key = keys[rows.integer(key_field::id)];
    key.table = rows.text(key_field::table);
    key.quoted_table = quoted_name(own_spelling(connection, key.table));
    key.is_to_own_table = key.quoted_table == schema.quoted_name;
    key.can_wait = true;  // all of them do when a transaction asks for it
    key.columns.push_back(find_column(schema, rows.text(key_field::from)));
    if (key.columns.back() == schema.columns.size()) {
      throw DatabaseError(connection.file() + ": " + schema.name +
                          ": a foreign key of a column that is not there");
    }
    if (!rows.is_null(key_field::to)) key.referenced_columns.emplace_back(rows.text(key_field::to));
  }
  for (auto& [id, key] : keys) {
    if (key.referenced_columns.empty()) {
      key.referenced_columns = primary_key_of(connection, key.table);
    }
    schema.foreign_keys.push_back(std::move(key));
  }
}

// Why the table takes no rows, in SQLite's own words; empty for one that does. A view without a
// trigger is the usual reason.
std::string obstacle_of(SqliteConnection& connection, const TableSchema& schema) {
  try {
    const SqliteStatement probe(connection,
                                "INSERT INTO " + schema.quoted_name + " DEFAULT VALUES");
    return {};
  } catch (const DatabaseError&) {
    if (sqlite3_errcode(connection.get()) != SQLITE_ERROR) throw;
    return sqlite3_errmsg(connection.get());
  }
}

std::vector<std::string> table_names(SqliteConnection& connection) {
  SqliteStatement rows(connection,
                       "SELECT name FROM main.sqlite_schema WHERE type IN ('table', 'view')"
                       " AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
  std::vector<std::string> names;
  while (names.size() <= most_listed_tables && rows.next()) names.emplace_back(rows.text(0));
  return names;
}

}  // namespace

TableSchema read_sqlite_schema(SqliteConnection& connection, const std::string& table) {
  TableSchema schema;
  schema.name = table;
  schema.bare_name = own_spelling(connection, table);
  schema.quoted_name = quoted_name(schema.bare_name);
  read_columns(connection, schema);
  if (schema.columns.empty()) {
    throw DatabaseError(connection.file() + ": " + no_such_table(table, table_names(connection)));
  }
  schema.obstacle = obstacle_of(connection, schema);
  read_unique_sets(connection, schema);
  read_foreign_keys(connection, schema);
  return schema;
}

}  // namespace korvex::host
