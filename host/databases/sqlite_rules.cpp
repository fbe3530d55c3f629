#include "host/databases/sql_words.h"
#include "host/databases/sqlite_database.h"

namespace korvex::host {

namespace {

// Where the fields are in the rows of "table_list".
namespace listed_field {
enum { schema, name, kind };
}

}  // namespace

std::vector<ListedTable> list_sqlite_tables(SqliteConnection& connection) {
  SqliteStatement rows(connection, "PRAGMA main.table_list");
  std::vector<ListedTable> tables;
  while (rows.next()) {
    ListedTable table;
    table.name = rows.text(listed_field::name);
    const std::string_view kind = rows.text(listed_field::kind);
    if (rows.text(listed_field::schema) != "main" || table.name.starts_with("sqlite_")) continue;
    if (kind == "view") table.left_out = "a view";
    if (kind == "virtual") table.left_out = "a virtual table";
    if (kind == "shadow") table.left_out = "belongs to a virtual table";
    tables.push_back(std::move(table));
  }
  return tables;
}

TableRules read_sqlite_rules(SqliteConnection& connection, const TableSchema& table) {
  SqliteStatement rows(connection,
                       "SELECT sql FROM main.sqlite_schema WHERE type = 'table' AND name = ?"
                       " COLLATE NOCASE");
  rows.bind(1, table.name);
  TableRules rules;
  if (rows.next()) rules.checks = check_texts(rows.text(0));
  SqliteStatement indexes(connection,
                          "SELECT sql FROM main.sqlite_schema WHERE type = 'index' AND tbl_name = ?"
                          " COLLATE NOCASE AND sql LIKE 'CREATE UNIQUE%'");
  indexes.bind(1, table.name);
  while (indexes.next()) {
    const IndexText index = index_text(indexes.text(0));
    const bool is_plain = index.condition.empty() && !index.has_expression;
    if (!is_plain) rules.unique_indexes.push_back({index.members, index.condition});
  }
  return rules;
}

}  // namespace korvex::host
