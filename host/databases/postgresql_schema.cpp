#include "host/databases/postgresql_schema.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "host/databases/database.h"
#include "host/databases/sql_names.h"

namespace korvex::host {

namespace {

// A type's modifier holds sizes behind this many bytes of header.
constexpr int modifier_header = 4;
constexpr int scale_bits = 0x7FF;
constexpr int scale_sign = 0x400;
constexpr int precision_shift = 16;
constexpr int precision_bits = 0xFFFF;

constexpr char enum_type = 'e';
constexpr char string_category = 'S';

// Names as SQL takes them, made by the server by the same rule that reads them: an exact name wins
// over one that SQL would fold to lower case.
constexpr const char* table_query =
    "SELECT c.oid, format('%I.%I', n.nspname, c.relname), c.relname"
    " FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace"
    " WHERE c.oid = coalesce(to_regclass(quote_ident($1)), to_regclass($1))";

// Tables, views and what reads like them; those of other schemas come with theirs.
constexpr const char* names_query =
    "SELECT c.oid::regclass FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace"
    " WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND n.nspname <> 'information_schema'"
    " AND n.nspname NOT LIKE 'pg\\_%' ORDER BY c.oid::regclass::text LIMIT $1::int";

// A domain is followed to the type that it stands for.
constexpr const char* column_query =
    "WITH RECURSIVE base AS ("
    " SELECT attnum, atttypid AS type, atttypmod AS modifier, attnotnull AS required"
    " FROM pg_attribute WHERE attrelid = $1::oid AND attnum > 0 AND NOT attisdropped"
    " UNION ALL"
    " SELECT b.attnum, t.typbasetype,"
    "  CASE WHEN t.typtypmod >= 0 THEN t.typtypmod ELSE b.modifier END,"
    "  b.required OR t.typnotnull"
    " FROM base b JOIN pg_type t ON t.oid = b.type WHERE t.typtype = 'd')"
    " SELECT a.attname, format_type(a.atttypid, a.atttypmod), t.typname, t.typtype, t.typcategory,"
    "  b.modifier, b.required, a.atthasdef OR a.attidentity <> '', a.attgenerated <> '', t.oid,"
    "  a.attnum, t.typnamespace = 'pg_catalog'::regnamespace"
    " FROM base b JOIN pg_type t ON t.oid = b.type JOIN pg_attribute a"
    "  ON a.attrelid = $1::oid AND a.attnum = b.attnum"
    " WHERE t.typtype <> 'd' ORDER BY a.attnum";

constexpr const char* unique_query =
    "SELECT i.indexrelid, k.attnum FROM pg_index i,"
    " unnest(string_to_array(i.indkey::text, ' ')::int[]) WITH ORDINALITY AS k(attnum, place)"
    " WHERE i.indrelid = $1::oid AND i.indisunique AND i.indpred IS NULL AND i.indexprs IS NULL"
    " AND k.place <= i.indnkeyatts"
    " ORDER BY NOT i.indisprimary, i.indexrelid, k.place";

// A key that refers to a partitioned table has another constraint for each of its partitions, which
// say the same once more; one that a partition has from its own table counts.
constexpr const char* foreign_key_query =
    "SELECT c.oid, f.relname, format('%I.%I', n.nspname, f.relname), c.confrelid = c.conrelid,"
    " k.own, a.attname"
    " FROM pg_constraint c CROSS JOIN unnest(c.conkey, c.confkey) WITH ORDINALITY"
    "  AS k(own, other, place)"
    " JOIN pg_class f ON f.oid = c.confrelid JOIN pg_namespace n ON n.oid = f.relnamespace"
    " JOIN pg_attribute a ON a.attrelid = c.confrelid AND a.attnum = k.other"
    " WHERE c.conrelid = $1::oid AND c.contype = 'f' AND NOT EXISTS (SELECT FROM pg_constraint p"
    "  WHERE p.oid = c.conparentid AND p.conrelid = c.conrelid)"
    " ORDER BY c.oid, k.place";

constexpr const char* constraint_query =
    "SELECT c.conname, a.attname, k.place FROM pg_constraint c"
    " CROSS JOIN unnest(c.conkey) WITH ORDINALITY AS k(attnum, place)"
    " JOIN pg_attribute a ON a.attrelid = c.conrelid AND a.attnum = k.attnum"
    " WHERE c.conrelid = $1::regclass"
    " UNION SELECT x.relname, a.attname, k.place FROM pg_index i"
    " JOIN pg_class x ON x.oid = i.indexrelid"
    " CROSS JOIN unnest(string_to_array(i.indkey::text, ' ')::int[]) WITH ORDINALITY"
    "  AS k(attnum, place)"
    " JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = k.attnum"
    " WHERE i.indrelid = $1::regclass AND i.indisunique AND k.place <= i.indnkeyatts"
    " ORDER BY 1, 3";

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

bool is_true(const PostgresqlResult& rows, int row, int column) {
  return result_text(rows, row, column) == "t";
}

int number(const PostgresqlResult& rows, int row, int column) {
  return std::atoi(PQgetvalue(rows.get(), row, column));
}

class SchemaReader {
 public:
  SchemaReader(PostgresqlConnection& connection, const std::string& table)
      : connection_(connection) {
    const PostgresqlResult rows = connection.run(table_query, {table});
    if (PQntuples(rows.get()) == 0) throw DatabaseError(no_such_table(table, table_names()));
    oid_ = result_text(rows, 0, 0);
    schema_.name = table;
    schema_.quoted_name = result_text(rows, 0, 1);
    schema_.bare_name = result_text(rows, 0, 2);
  }

  TableSchema read() {
    read_columns();
    read_unique_sets();
    read_foreign_keys();
    return std::move(schema_);
  }

 private:
  std::vector<std::string> table_names() {
    const PostgresqlResult rows =
        connection_.run(names_query, {std::to_string(most_listed_tables + 1)});
    std::vector<std::string> names;
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
      names.push_back(result_text(rows, row, 0));
    }
    return names;
  }

  void read_columns() {
    const PostgresqlResult rows = connection_.run(column_query, {oid_});
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
      ColumnSchema column;
      column.name = result_text(rows, row, 0);
      column.declared_type = result_text(rows, row, 1);
      set_type(rows, row, column);
      column.nullable = !is_true(rows, row, 6);
      column.has_default = is_true(rows, row, 7);
      column.is_generated = is_true(rows, row, 8);
      places_[number(rows, row, 10)] = schema_.columns.size();
      schema_.columns.push_back(std::move(column));
    }
  }

  void set_type(const PostgresqlResult& rows, int row, ColumnSchema& column) {
    // Users may give types of theirs the names of the server's own.
    const std::string name = is_true(rows, row, 11) ? result_text(rows, row, 2) : "";
    const auto found = std::find_if(named_types.begin(), named_types.end(),
                                    [&](const NamedType& entry) { return entry.name == name; });
    column.is_padded = name == "bpchar";
    if (found != named_types.end()) {
      column.type = found->type;
    } else if (result_text(rows, row, 3).front() == enum_type) {
      column.type = ColumnType::choice;
      column.choices = labels_of(result_text(rows, row, 9));
    } else if (result_text(rows, row, 4).front() == string_category) {
      column.type = ColumnType::text;
    }
    if (column.type == ColumnType::boolean) column.choices = {"false", "true"};
    set_sizes(number(rows, row, 5), column);
  }

  std::vector<std::string> labels_of(const std::string& type) {
    const PostgresqlResult rows = connection_.run(
        "SELECT enumlabel FROM pg_enum WHERE enumtypid = $1::oid ORDER BY enumsortorder", {type});
    std::vector<std::string> labels;
    for (int row = 0; row < PQntuples(rows.get()); ++row)
      labels.push_back(result_text(rows, row, 0));
    return labels;
  }

  void read_unique_sets() {
    const PostgresqlResult rows = connection_.run(unique_query, {oid_});
    std::string last;
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
      if (result_text(rows, row, 0) != last) schema_.unique_sets.emplace_back();
      last = result_text(rows, row, 0);
      schema_.unique_sets.back().push_back(places_.at(number(rows, row, 1)));
    }
  }

  void read_foreign_keys() {
    const PostgresqlResult rows = connection_.run(foreign_key_query, {oid_});
    std::string last;
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
      if (result_text(rows, row, 0) != last) schema_.foreign_keys.emplace_back();
      last = result_text(rows, row, 0);
      ForeignKey& key = schema_.foreign_keys.back();
      key.table = result_text(rows, row, 1);
      key.quoted_table = result_text(rows, row, 2);
      key.is_to_own_table = is_true(rows, row, 3);
      key.columns.push_back(places_.at(number(rows, row, 4)));
      key.referenced_columns.push_back(result_text(rows, row, 5));
    }
  }

  PostgresqlConnection& connection_;
  std::string oid_;
  TableSchema schema_;
  std::map<int, std::size_t> places_;  // by the numbers that the server gives columns
};

}  // namespace

TableSchema read_postgresql_schema(PostgresqlConnection& connection, const std::string& table) {
  return SchemaReader(connection, table).read();
}

std::map<std::string, std::vector<std::size_t>> read_constraints(PostgresqlConnection& connection,
                                                                 const TableSchema& table) {
  const PostgresqlResult rows = connection.run(constraint_query, {table.quoted_name});
  std::map<std::string, std::vector<std::size_t>> constraints;
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    const std::string name = result_text(rows, row, 1);
    const auto column = std::find_if(table.columns.begin(), table.columns.end(),
                                     [&](const ColumnSchema& each) { return each.name == name; });
    constraints[result_text(rows, row, 0)].push_back(
        static_cast<std::size_t>(column - table.columns.begin()));
  }
  return constraints;
}

}  // namespace korvex::host
