#include "host/databases/sqlite_schema.h"

#include <algorithm>
#include <map>

#include "host/databases/database.h"
#include "host/databases/sql_names.h"
#include "host/databases/sqlite_types.h"
#include "host/text/letter_case.h"

namespace korvex::host {

namespace {

// The kinds of columns that "table_xinfo" tells apart; the others are computed or hidden.
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

void read_columns(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement rows(connection,
                       "SELECT name, type, \"notnull\", dflt_value, pk, hidden"
                       " FROM pragma_table_xinfo(?) ORDER BY cid");
  rows.bind(1, schema.name);
  std::map<std::int64_t, std::size_t> key;
  while (rows.next()) {
    ColumnSchema column;
    column.name = rows.text(0);
    column.declared_type = rows.text(1);
    set_sqlite_type(column.declared_type, column);
    column.has_default = !rows.is_null(3);
    column.is_generated = rows.integer(5) != plain_column;
    const std::int64_t place_in_key = rows.integer(4);
    column.nullable = rows.integer(2) == 0 && place_in_key == 0;
    if (place_in_key > 0) key[place_in_key] = schema.columns.size();
    schema.columns.push_back(column);
  }
  std::vector<std::size_t> columns;
  for (const auto& [place, column] : key) columns.push_back(column);
  add_unique_set(schema, columns);
}

void read_unique_sets(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement indexes(connection,
                          "SELECT name FROM pragma_index_list(?)"
                          " WHERE \"unique\" = 1 AND partial = 0 ORDER BY seq DESC");
  indexes.bind(1, schema.name);
  while (indexes.next()) {
    SqliteStatement rows(connection, "SELECT cid FROM pragma_index_info(?) ORDER BY seqno");
    rows.bind(1, indexes.text(0));
    std::vector<std::size_t> columns;
    bool has_expression = false;
    while (rows.next()) {
      has_expression |= rows.integer(0) < 0;
      columns.push_back(static_cast<std::size_t>(rows.integer(0)));
    }
    if (!has_expression) add_unique_set(schema, columns);
  }
}

// A foreign key may leave out the columns that it refers to, and then means the primary key.
std::vector<std::string> primary_key_of(SqliteConnection& connection, const std::string& table) {
  SqliteStatement rows(connection,
                       "SELECT name FROM pragma_table_info(?) WHERE pk > 0 ORDER BY pk");
  rows.bind(1, table);
  std::vector<std::string> names;
  while (rows.next()) names.emplace_back(rows.text(0));
  return names;
}

void read_foreign_keys(SqliteConnection& connection, TableSchema& schema) {
  SqliteStatement rows(connection,
                       "SELECT id, \"table\", \"from\", \"to\" FROM pragma_foreign_key_list(?)"
                       " ORDER BY id, seq");
  rows.bind(1, schema.name);
  std::map<std::int64_t, ForeignKey> keys;
  while (rows.next()) {
    ForeignKey& key = keys[rows.integer(0)];
    key.table = rows.text(1);
    key.quoted_table = quoted_name(key.table);
    key.is_to_own_table = is_same_in_any_case(key.table, schema.name);
    key.columns.push_back(find_column(schema, rows.text(2)));
    if (!rows.is_null(3)) key.referenced_columns.emplace_back(rows.text(3));
  }
  for (auto& [id, key] : keys) {
    if (key.referenced_columns.empty()) {
      key.referenced_columns = primary_key_of(connection, key.table);
    }
    schema.foreign_keys.push_back(std::move(key));
  }
}

std::vector<std::string> table_names(SqliteConnection& connection) {
  SqliteStatement rows(connection,
                       "SELECT name FROM sqlite_master WHERE type IN ('table', 'view')"
                       " AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
  std::vector<std::string> names;
  while (names.size() <= most_listed_tables && rows.next()) names.emplace_back(rows.text(0));
  return names;
}

}  // namespace

TableSchema read_sqlite_schema(SqliteConnection& connection, const std::string& table) {
  TableSchema schema;
  schema.name = table;
  schema.bare_name = table;
  schema.quoted_name = quoted_name(table);
  read_columns(connection, schema);
  if (schema.columns.empty()) {
    throw DatabaseError(connection.file() + ": " + no_such_table(table, table_names(connection)));
  }
  read_unique_sets(connection, schema);
  read_foreign_keys(connection, schema);
  return schema;
}

}  // namespace korvex::host
