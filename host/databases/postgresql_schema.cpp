#include <algorithm>
#include <array>

#include "host/databases/database.h"
#include "host/databases/postgresql_database.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

// A type's modifier holds sizes after this many bytes of header.
constexpr int modifier_header = 4;
constexpr int scale_bits = 0x7FF;
constexpr int scale_sign = 0x400;
constexpr int precision_shift = 16;
constexpr int precision_bits = 0xFFFF;

constexpr char view = 'v';
constexpr char materialized_view = 'm';
constexpr char enum_type = 'e';
constexpr char string_category = 'S';

// In all of these queries each function, type, operator and table of the server comes with its
// schema, so that they ask for the same under any search path.

// Tables, views and what reads like them.
#define KORVEX_IS_TABLE \
  R"( c.relkind OPERATOR(pg_catalog.=) ANY ('{r,p,v,m,f}'::pg_catalog."char"[]))"

// The first table of a name in some schemas, and whether a trigger puts rows in its place
// somewhere: of a trigger's kind, 68 are the bits of INSTEAD OF and of INSERT.
constexpr const char* table_query = R"(
SELECT c.oid, n.nspname, c.relname, c.relkind,
  EXISTS (SELECT FROM pg_catalog.pg_trigger t WHERE t.tgrelid OPERATOR(pg_catalog.=) c.oid
    AND t.tgtype::pg_catalog.int4 OPERATOR(pg_catalog.&) 68 OPERATOR(pg_catalog.=) 68)
FROM pg_catalog.pg_class c
JOIN pg_catalog.pg_namespace n ON n.oid OPERATOR(pg_catalog.=) c.relnamespace
WHERE c.relname OPERATOR(pg_catalog.=) $1::pg_catalog.name
  AND n.nspname OPERATOR(pg_catalog.=) ANY ($2::pg_catalog.name[]) AND)" KORVEX_IS_TABLE R"(
ORDER BY pg_catalog.array_position($2::pg_catalog.name[], n.nspname) LIMIT 1)";

// Those that a bare name would not find come with their schema.
constexpr const char* names_query = R"(
SELECT CASE WHEN n.nspname OPERATOR(pg_catalog.=) ANY ($1::pg_catalog.name[]) AND NOT EXISTS (
    SELECT FROM pg_catalog.pg_class o
    JOIN pg_catalog.pg_namespace m ON m.oid OPERATOR(pg_catalog.=) o.relnamespace
    WHERE o.relname OPERATOR(pg_catalog.=) c.relname
      AND pg_catalog.array_position($1::pg_catalog.name[], m.nspname)
        OPERATOR(pg_catalog.<) pg_catalog.array_position($1::pg_catalog.name[], n.nspname))
  THEN pg_catalog.quote_ident(c.relname)
  ELSE pg_catalog.format('%I.%I', n.nspname, c.relname) END
FROM pg_catalog.pg_class c
JOIN pg_catalog.pg_namespace n ON n.oid OPERATOR(pg_catalog.=) c.relnamespace
WHERE)" KORVEX_IS_TABLE R"( AND n.nspname OPERATOR(pg_catalog.<>) 'information_schema'
  AND NOT pg_catalog.starts_with(n.nspname::pg_catalog.text, 'pg_')
ORDER BY 1 LIMIT $2::pg_catalog.int4)";

// A domain is followed to the type that it stands for.
constexpr const char* column_query = R"(
WITH RECURSIVE base AS (
  SELECT attnum, atttypid AS type, atttypmod AS modifier, attnotnull AS required
  FROM pg_catalog.pg_attribute
  WHERE attrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND attnum OPERATOR(pg_catalog.>) 0
    AND NOT attisdropped
  UNION ALL
  SELECT b.attnum, t.typbasetype,
    CASE WHEN t.typtypmod OPERATOR(pg_catalog.>=) 0 THEN t.typtypmod ELSE b.modifier END,
    b.required OR t.typnotnull
  FROM base b JOIN pg_catalog.pg_type t ON t.oid OPERATOR(pg_catalog.=) b.type
  WHERE t.typtype OPERATOR(pg_catalog.=) 'd')
SELECT a.attname, pg_catalog.format_type(a.atttypid, a.atttypmod), t.typname, t.typtype,
  t.typcategory, b.modifier, b.required, a.atthasdef OR a.attidentity OPERATOR(pg_catalog.<>) '',
  a.attgenerated OPERATOR(pg_catalog.<>) '', t.oid, a.attnum,
  t.typnamespace OPERATOR(pg_catalog.=) 'pg_catalog'::pg_catalog.regnamespace
FROM base b JOIN pg_catalog.pg_type t ON t.oid OPERATOR(pg_catalog.=) b.type
JOIN pg_catalog.pg_attribute a ON a.attrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid
  AND a.attnum OPERATOR(pg_catalog.=) b.attnum
WHERE t.typtype OPERATOR(pg_catalog.<>) 'd' ORDER BY a.attnum)";

constexpr const char* label_query = R"(
SELECT enumlabel FROM pg_catalog.pg_enum
WHERE enumtypid OPERATOR(pg_catalog.=) $1::pg_catalog.oid ORDER BY enumsortorder)";

constexpr const char* unique_query = R"(
SELECT i.indexrelid, k.attnum
FROM pg_catalog.pg_index i,
  pg_catalog.unnest(i.indkey::pg_catalog.int2[]) WITH ORDINALITY AS k(attnum, place)
WHERE i.indrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND i.indisunique
  AND i.indpred IS NULL AND i.indexprs IS NULL AND k.place OPERATOR(pg_catalog.<=) i.indnkeyatts
ORDER BY NOT i.indisprimary, i.indexrelid, k.place)";

// A key that refers to a partitioned table has another constraint for each of its partitions, which
// say the same once more; one that a partition has from its own table counts.
constexpr const char* foreign_key_query = R"(
SELECT c.oid, n.nspname, f.relname, c.confrelid OPERATOR(pg_catalog.=) c.conrelid, k.own, a.attname,
  c.condeferrable
FROM pg_catalog.pg_constraint c
CROSS JOIN ROWS FROM (pg_catalog.unnest(c.conkey), pg_catalog.unnest(c.confkey)) WITH ORDINALITY
  AS k(own, other, place)
JOIN pg_catalog.pg_class f ON f.oid OPERATOR(pg_catalog.=) c.confrelid
JOIN pg_catalog.pg_namespace n ON n.oid OPERATOR(pg_catalog.=) f.relnamespace
JOIN pg_catalog.pg_attribute a ON a.attrelid OPERATOR(pg_catalog.=) c.confrelid
  AND a.attnum OPERATOR(pg_catalog.=) k.other
WHERE c.conrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid
  AND c.contype OPERATOR(pg_catalog.=) 'f'
  AND NOT EXISTS (SELECT FROM pg_catalog.pg_constraint p
    WHERE p.oid OPERATOR(pg_catalog.=) c.conparentid
      AND p.conrelid OPERATOR(pg_catalog.=) c.conrelid)
ORDER BY c.oid, k.place)";

constexpr const char* constraint_query = R"(
SELECT c.conname, k.attnum, k.place
FROM pg_catalog.pg_constraint c
CROSS JOIN pg_catalog.unnest(c.conkey) WITH ORDINALITY AS k(attnum, place)
WHERE c.conrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid
UNION ALL
SELECT x.relname, k.attnum, k.place
FROM pg_catalog.pg_index i
JOIN pg_catalog.pg_class x ON x.oid OPERATOR(pg_catalog.=) i.indexrelid
CROSS JOIN pg_catalog.unnest(i.indkey::pg_catalog.int2[]) WITH ORDINALITY AS k(attnum, place)
WHERE i.indrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND i.indisunique
  AND k.place OPERATOR(pg_catalog.<=) i.indnkeyatts
  AND NOT EXISTS (SELECT FROM pg_catalog.pg_constraint p
    WHERE p.conindid OPERATOR(pg_catalog.=) i.indexrelid)
ORDER BY 1, 3)";

#undef KORVEX_IS_TABLE

struct NamedType {
  std::string_view name;
  ColumnType type;
};

constexpr std::array named_types = std::to_array<NamedType>({
    {"int2", ColumnType::integer16},
    {"int4", ColumnType::integer32},
    {"int8", ColumnType::integer64},
    {"numeric", ColumnType::decimal},
    {"float4", ColumnType::floating4},
    {"float8", ColumnType::floating8},
    {"bool", ColumnType::boolean},
    {"date", ColumnType::date},
    {"time", ColumnType::time},
    {"timetz", ColumnType::time},
    {"timestamp", ColumnType::timestamp},
    {"timestamptz", ColumnType::timestamp},
    {"uuid", ColumnType::uuid},
    {"bytea", ColumnType::hex_binary},
    {"json", ColumnType::json},
    {"jsonb", ColumnType::json},
    {"interval", ColumnType::interval},
});

void set_sizes(int modifier, ColumnSchema& column) {
  if (modifier < modifier_header) return;
  const int size = modifier - modifier_header;
  if (column.type == ColumnType::text) column.length = size;
  if (column.type != ColumnType::decimal) return;
  column.precision = (size >> precision_shift) & precision_bits;
  column.scale = ((size & scale_bits) ^ scale_sign) - scale_sign;
}

// An array of the server with one text in it.
std::string array_of(std::string_view text) {
  std::string array = "{\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') array += '\\';
    array += character;
  }
  return array + "\"}";
}

// As SQL reads a name without quotation marks.
std::string folded(const NamePart& part) {
  std::string name = part.text;
  if (part.is_quoted) return name;
  for (char& letter : name) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return name;
}

// Where a table may be, by what a person has written.
struct TablePlace {
  std::string name;
  std::string schemas;  // an array of the server
};

// An exact name wins over one that SQL would fold to lower case.
std::vector<TablePlace> table_places(const std::string& written, const std::string& user_schemas) {
  std::vector<TablePlace> places = {{written, user_schemas}};
  const std::vector<NamePart> parts = name_parts(written);
  const auto add = [&](const auto& text_of) {
    if (parts.size() > 2) return;
    const std::string schema = text_of(parts.front());
    places.push_back({text_of(parts.back()), parts.size() == 2 ? array_of(schema) : user_schemas});
  };
  add([](const NamePart& part) { return part.text; });
  add(folded);
  return places;
}

// By the number that the server gives a column; the number of columns when none has it.
std::size_t find_column(const TableSchema& table, int number) {
  const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                  [&](const ColumnSchema& each) { return each.number == number; });
  return static_cast<std::size_t>(found - table.columns.begin());
}

// Why a COPY cannot fill a table of a kind; empty where it can.
std::string obstacle_of(char kind, bool has_trigger) {
  if (kind == materialized_view) return "it is a materialized view";
  if (kind == view && !has_trigger) return "it is a view without an INSTEAD OF INSERT trigger";
  return {};
}

// The texts of a query that answers with one column.
std::vector<std::string> texts_of(PostgresqlConnection& connection, const char* query,
                                  const std::vector<std::string>& parameters) {
  const PostgresqlRows rows = connection.query(query, 1, parameters);
  std::vector<std::string> texts;
  for (int row = 0; row < rows.size(); ++row) texts.emplace_back(rows.text(row, 0));
  return texts;
}

class SchemaReader {
 public:
  SchemaReader(PostgresqlConnection& connection, const std::string& table)
      : connection_(connection) {
    const std::string& user_schemas = connection.user_path().schemas;
    for (const TablePlace& place : table_places(table, user_schemas)) {
      const PostgresqlRows rows = connection.query(table_query, 5, {place.name, place.schemas});
      if (rows.size() == 0) continue;
      schema_.name = table;
      schema_.id = rows.text(0, 0);
      schema_.bare_name = rows.text(0, 2);
      schema_.quoted_name = quoted_name(rows.text(0, 1)) + "." + quoted_name(schema_.bare_name);
      schema_.obstacle = obstacle_of(rows.letter(0, 3), rows.is_true(0, 4));
      return;
    }
    throw DatabaseError(no_such_table(table, table_names()));
  }

  TableSchema read() {
    read_columns();
    read_unique_sets();
    read_foreign_keys();
    return std::move(schema_);
  }

 private:
  std::vector<std::string> table_names() {
    return texts_of(connection_, names_query,
                    {connection_.user_path().schemas, std::to_string(most_listed_tables + 1)});
  }

  void read_columns() {
    const PostgresqlRows rows = connection_.query(column_query, 12, {schema_.id});
    for (int row = 0; row < rows.size(); ++row) {
      ColumnSchema column;
      column.name = rows.text(row, 0);
      column.declared_type = rows.text(row, 1);
      set_type(rows, row, column);
      column.nullable = !rows.is_true(row, 6);
      column.has_default = rows.is_true(row, 7);
      column.is_generated = rows.is_true(row, 8);
      column.number = rows.number<int>(row, 10);
      schema_.columns.push_back(std::move(column));
    }
  }

  void set_type(const PostgresqlRows& rows, int row, ColumnSchema& column) {
    // Users may give types of theirs the names of the server's own.
    const std::string_view name = rows.is_true(row, 11) ? rows.text(row, 2) : "";
    const auto found = std::find_if(named_types.begin(), named_types.end(),
                                    [&](const NamedType& entry) { return entry.name == name; });
    column.is_padded = name == "bpchar";
    if (found != named_types.end()) {
      column.type = found->type;
    } else if (rows.letter(row, 3) == enum_type) {
      column.type = ColumnType::choice;
      column.choices = read_labels(connection_, std::string(rows.text(row, 9)));
    } else if (rows.letter(row, 4) == string_category) {
      column.type = ColumnType::text;
    }
    if (column.type == ColumnType::boolean) column.choices = {"false", "true"};
    set_sizes(rows.number<int>(row, 5), column);
  }

  std::size_t place_of(const PostgresqlRows& rows, int row, int column) const {
    const std::size_t place = find_column(schema_, rows.number<int>(row, column));
    if (place == schema_.columns.size()) refuse_answer();
    return place;
  }

  void read_unique_sets() {
    const PostgresqlRows rows = connection_.query(unique_query, 2, {schema_.id});
    for (int row = 0; row < rows.size(); ++row) {
      if (rows.begins_group(row, 0)) schema_.unique_sets.emplace_back();
      schema_.unique_sets.back().push_back(place_of(rows, row, 1));
    }
  }

  void read_foreign_keys() {
    const PostgresqlRows rows = connection_.query(foreign_key_query, 7, {schema_.id});
    for (int row = 0; row < rows.size(); ++row) {
      if (rows.begins_group(row, 0)) schema_.foreign_keys.emplace_back();
      ForeignKey& key = schema_.foreign_keys.back();
      key.table = rows.text(row, 2);
      key.quoted_table = quoted_name(rows.text(row, 1)) + "." + quoted_name(key.table);
      key.is_to_own_table = rows.is_true(row, 3);
      key.can_wait = rows.is_true(row, 6);
      key.columns.push_back(place_of(rows, row, 4));
      key.referenced_columns.emplace_back(rows.text(row, 5));
    }
  }

  PostgresqlConnection& connection_;
  TableSchema schema_;
};

}  // namespace

TableSchema read_postgresql_schema(PostgresqlConnection& connection, const std::string& table) {
  return SchemaReader(connection, table).read();
}

std::vector<std::string> read_labels(PostgresqlConnection& connection, const std::string& type) {
  return texts_of(connection, label_query, {type});
}

std::map<std::string, std::vector<std::size_t>> read_constraints(PostgresqlConnection& connection,
                                                                 const TableSchema& table) {
  const PostgresqlRows rows = connection.query(constraint_query, 3, {table.id});
  std::map<std::string, std::vector<std::size_t>> constraints;
  for (int row = 0; row < rows.size(); ++row) {
    const std::size_t column = find_column(table, rows.number<int>(row, 1));
    // A constraint may look at what the server keeps beside the columns.
    if (column == table.columns.size()) continue;
    constraints[std::string(rows.text(row, 0))].push_back(column);
  }
  return constraints;
}

}  // namespace korvex::host
