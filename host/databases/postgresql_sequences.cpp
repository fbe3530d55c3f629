#include <algorithm>

#include "host/databases/postgresql_database.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

// A column has a sequence of its own, or one that its default names.
constexpr const char* sequence_query = R"(
SELECT c.oid, n.nspname, c.relname, l.attnum, s.seqincrement OPERATOR(pg_catalog.<) 0,
  pg_catalog.has_sequence_privilege(c.oid, 'UPDATE')
    AND pg_catalog.has_sequence_privilege(c.oid, 'SELECT')
    AND pg_catalog.has_column_privilege($1::pg_catalog.oid, l.attnum::pg_catalog.int2, 'SELECT')
FROM (
  SELECT d.objid AS sequence, d.refobjsubid AS attnum FROM pg_catalog.pg_depend d
  WHERE d.classid OPERATOR(pg_catalog.=) 'pg_catalog.pg_class'::pg_catalog.regclass
    AND d.refclassid OPERATOR(pg_catalog.=) 'pg_catalog.pg_class'::pg_catalog.regclass
    AND d.refobjid OPERATOR(pg_catalog.=) $1::pg_catalog.oid
    AND d.refobjsubid OPERATOR(pg_catalog.>) 0
  UNION
  SELECT d.refobjid, f.adnum FROM pg_catalog.pg_attrdef f JOIN pg_catalog.pg_depend d
    ON d.classid OPERATOR(pg_catalog.=) 'pg_catalog.pg_attrdef'::pg_catalog.regclass
    AND d.objid OPERATOR(pg_catalog.=) f.oid
    AND d.refclassid OPERATOR(pg_catalog.=) 'pg_catalog.pg_class'::pg_catalog.regclass
  WHERE f.adrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid) l
JOIN pg_catalog.pg_sequence s ON s.seqrelid OPERATOR(pg_catalog.=) l.sequence
JOIN pg_catalog.pg_class c ON c.oid OPERATOR(pg_catalog.=) l.sequence
JOIN pg_catalog.pg_namespace n ON n.oid OPERATOR(pg_catalog.=) c.relnamespace
ORDER BY l.attnum, c.oid)";

bool holds_numbers(const ColumnSchema& column) {
  return column.type == ColumnType::integer16 || column.type == ColumnType::integer32 ||
         column.type == ColumnType::integer64 || column.type == ColumnType::decimal;
}

}  // namespace

std::vector<ColumnSequence> read_sequences(PostgresqlConnection& connection,
                                           const LoadedTable& table) {
  const PostgresqlRows rows = connection.query(sequence_query, 6, {table.schema.id});
  std::vector<ColumnSequence> sequences;
  for (int row = 0; row < rows.size(); ++row) {
    const auto loaded =
        std::find_if(table.columns.begin(), table.columns.end(), [&](std::size_t column) {
          return table.schema.columns[column].number == rows.number<int>(row, 3);
        });
    if (loaded == table.columns.end()) continue;
    const ColumnSchema& column = table.schema.columns[*loaded];
    if (!holds_numbers(column)) continue;
    ColumnSequence sequence;
    sequence.id = rows.text(row, 0);
    sequence.quoted_name = quoted_name(rows.text(row, 1)) + "." + quoted_name(rows.text(row, 2));
    sequence.name = rows.text(row, 2);
    sequence.column = table.schema.name + ": column " + column.name;
    sequence.column_name = column.name;
    sequence.quoted_table = table.schema.quoted_name;
    sequence.goes_down = rows.is_true(row, 4);
    sequence.is_allowed = rows.is_true(row, 5);
    sequences.push_back(std::move(sequence));
  }
  return sequences;
}

void continue_sequence(PostgresqlConnection& connection, const ColumnSequence& sequence) {
  const std::string column = quoted_name(sequence.column_name);
  const std::string further = sequence.goes_down ? "<" : ">";
  const auto bound = [](const std::string& name) {
    return "(SELECT " + name +
           " FROM pg_catalog.pg_sequence WHERE seqrelid OPERATOR(pg_catalog.=) "
           "$1::pg_catalog.oid)";
  };
  // A value beyond the sequence's bounds is none that it will come to.
  connection.query(
      "SELECT pg_catalog.setval($1::pg_catalog.oid::pg_catalog.regclass, v.value) "
      "FROM (SELECT pg_catalog." +
          std::string(sequence.goes_down ? "min(" : "max(") + column +
          ")::pg_catalog.int8 AS value FROM " + sequence.quoted_table + " WHERE " + column +
          " OPERATOR(pg_catalog.>=) " + bound("seqmin") + " AND " + column +
          " OPERATOR(pg_catalog.<=) " + bound("seqmax") + ") v, " + sequence.quoted_name +
          " s WHERE v.value OPERATOR(pg_catalog." + further +
          ") s.last_value OR (v.value OPERATOR(pg_catalog.=) s.last_value"
          " AND NOT s.is_called)",
      1, {sequence.id});
}

}  // namespace korvex::host
