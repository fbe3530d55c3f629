#include <algorithm>
#include <optional>

#include "host/databases/postgresql_database.h"
#include "host/databases/sql_words.h"

namespace korvex::host {

namespace {

// In all of these queries each function, type, operator and table of the server comes with its
// schema, so that they ask for the same under any search path.

// A table of an extension is the extension's business.
constexpr const char* tables_query = R"(
SELECT n.nspname, c.relname, c.relkind, c.relispartition,
  EXISTS (SELECT FROM pg_catalog.pg_depend d
    WHERE d.classid OPERATOR(pg_catalog.=) 'pg_catalog.pg_class'::pg_catalog.regclass
      AND d.objid OPERATOR(pg_catalog.=) c.oid AND d.deptype OPERATOR(pg_catalog.=) 'e'),
  pg_catalog.has_schema_privilege(n.oid, 'USAGE')
    AND pg_catalog.has_table_privilege(c.oid, 'INSERT')
    AND pg_catalog.has_table_privilege(c.oid, 'SELECT')
FROM pg_catalog.pg_class c
JOIN pg_catalog.pg_namespace n ON n.oid OPERATOR(pg_catalog.=) c.relnamespace
WHERE c.relkind OPERATOR(pg_catalog.=) ANY ('{r,p,v,m,f}'::pg_catalog."char"[])
  AND n.nspname OPERATOR(pg_catalog.<>) 'information_schema'
  AND NOT pg_catalog.starts_with(n.nspname::pg_catalog.text, 'pg_')
ORDER BY 1, 2)";

// What a table has at all: most have little, and each question takes its time.
constexpr const char* kinds_query = R"(
SELECT relchecks OPERATOR(pg_catalog.>) 0, relhastriggers, relkind OPERATOR(pg_catalog.=) 'p'
FROM pg_catalog.pg_class WHERE oid OPERATOR(pg_catalog.=) $1::pg_catalog.oid)";

constexpr const char* checks_query = R"(
SELECT pg_catalog.pg_get_expr(conbin, conrelid) FROM pg_catalog.pg_constraint
WHERE conrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND contype OPERATOR(pg_catalog.=) 'c'
ORDER BY conname)";

// A domain may stand for another one.
constexpr const char* domain_checks_query = R"(
WITH RECURSIVE chain AS (
  SELECT attnum, atttypid AS type FROM pg_catalog.pg_attribute
  WHERE attrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND attnum OPERATOR(pg_catalog.>) 0
    AND NOT attisdropped
  UNION ALL
  SELECT c.attnum, t.typbasetype FROM chain c
  JOIN pg_catalog.pg_type t ON t.oid OPERATOR(pg_catalog.=) c.type
  WHERE t.typtype OPERATOR(pg_catalog.=) 'd')
SELECT c.attnum, pg_catalog.pg_get_expr(k.conbin, 0) FROM chain c
JOIN pg_catalog.pg_constraint k ON k.contypid OPERATOR(pg_catalog.=) c.type
WHERE k.contype OPERATOR(pg_catalog.=) 'c' ORDER BY 1, 2)";

constexpr const char* indexes_query = R"(
SELECT i.indexrelid, pg_catalog.pg_get_indexdef(i.indexrelid, k, false),
  pg_catalog.pg_get_expr(i.indpred, i.indrelid)
FROM pg_catalog.pg_index i
CROSS JOIN pg_catalog.generate_series(1, i.indnkeyatts::pg_catalog.int4) AS k
WHERE i.indrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND i.indisunique
  AND (i.indpred IS NOT NULL OR i.indexprs IS NOT NULL) ORDER BY 1, k)";

// Of a trigger's kind, 7 are the bits of FOR EACH ROW, BEFORE and INSERT.
constexpr const char* triggers_query = R"(
SELECT p.proname, p.prosrc, pg_catalog.encode(t.tgargs, 'escape')
FROM pg_catalog.pg_trigger t JOIN pg_catalog.pg_proc p ON p.oid OPERATOR(pg_catalog.=) t.tgfoid
WHERE t.tgrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND NOT t.tgisinternal
  AND t.tgenabled OPERATOR(pg_catalog.<>) 'D'
  AND t.tgtype::pg_catalog.int4 OPERATOR(pg_catalog.&) 7 OPERATOR(pg_catalog.=) 7)";

// Partitions of partitions count with the column that their own table goes by.
constexpr const char* partitions_query = R"(
WITH RECURSIVE tree AS (
  SELECT inhrelid, inhparent FROM pg_catalog.pg_inherits
  WHERE inhparent OPERATOR(pg_catalog.=) $1::pg_catalog.oid
  UNION ALL
  SELECT i.inhrelid, i.inhparent FROM pg_catalog.pg_inherits i
  JOIN tree t ON t.inhrelid OPERATOR(pg_catalog.=) i.inhparent)
SELECT a.attname, pg_catalog.pg_get_expr(c.relpartbound, c.oid) FROM tree
JOIN pg_catalog.pg_class c ON c.oid OPERATOR(pg_catalog.=) tree.inhrelid
JOIN pg_catalog.pg_partitioned_table p ON p.partrelid OPERATOR(pg_catalog.=) tree.inhparent
JOIN pg_catalog.pg_attribute a ON a.attrelid OPERATOR(pg_catalog.=) p.partrelid
  AND a.attnum OPERATOR(pg_catalog.=) p.partattrs[0]
WHERE c.relpartbound IS NOT NULL AND p.partstrat OPERATOR(pg_catalog.<>) 'h' ORDER BY 1, 2)";

constexpr const char* column_type_query = R"(
SELECT atttypid FROM pg_catalog.pg_attribute
WHERE attrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid
  AND attnum OPERATOR(pg_catalog.=) $2::pg_catalog.int2)";

constexpr const char* type_query = R"(
SELECT t.typname, t.typtype, t.typcategory, t.typelem, t.typbasetype, t.typrelid, r.rngsubtype,
  EXISTS (SELECT FROM pg_catalog.pg_constraint k
    WHERE k.contypid OPERATOR(pg_catalog.=) t.oid AND k.contype OPERATOR(pg_catalog.=) 'c')
FROM pg_catalog.pg_type t LEFT JOIN pg_catalog.pg_range r
  ON r.rngtypid OPERATOR(pg_catalog.=) t.oid OR r.rngmultitypid OPERATOR(pg_catalog.=) t.oid
WHERE t.oid OPERATOR(pg_catalog.=) $1::pg_catalog.oid)";

constexpr const char* part_query = R"(
SELECT atttypid FROM pg_catalog.pg_attribute
WHERE attrelid OPERATOR(pg_catalog.=) $1::pg_catalog.oid AND attnum OPERATOR(pg_catalog.>) 0
  AND NOT attisdropped ORDER BY attnum)";

constexpr char array_category = 'A';
// Types of types of types: nobody's table goes as deep, and a server may answer anything.
constexpr int deepest_type = 8;

// A part of SCHEMA.TABLE as read_schema() takes it.
std::string written_part(std::string_view name) {
  if (name.find('.') == std::string_view::npos && !name.starts_with('"')) return std::string(name);
  std::string quoted = "\"";
  for (const char letter : name) quoted += letter == '"' ? "\"\"" : std::string(1, letter);
  return quoted + '"';
}

std::string reason_left_out(char kind, bool is_partition, bool is_of_extension, bool is_allowed) {
  if (kind == 'v') return "a view";
  if (kind == 'm') return "a materialized view";
  if (kind == 'f') return "a foreign table";
  if (is_partition) return "a partition, filled through its table";
  if (is_of_extension) return "belongs to an extension";
  if (!is_allowed) return "not yours to read and fill";
  return {};
}

class RuleReader {
 public:
  RuleReader(PostgresqlConnection& connection, const TableSchema& table)
      : connection_(connection), table_(table) {}

  TableRules read() {
    const PostgresqlRows kinds = connection_.query(kinds_query, 3, {table_.id});
    if (kinds.size() == 0) refuse_answer();
    if (kinds.is_true(0, 0)) read_checks();
    const PostgresqlRows domains = connection_.query(domain_checks_query, 2, {table_.id});
    for (int row = 0; row < domains.size(); ++row) {
      const auto column = find_number(domains.number<int>(row, 0));
      if (column) rules_.domain_checks.push_back({*column, std::string(domains.text(row, 1))});
    }
    if (kinds.is_true(0, 2)) read_partitions();
    if (kinds.is_true(0, 1)) read_triggers();
    const PostgresqlRows members = connection_.query(indexes_query, 3, {table_.id});
    for (int row = 0; row < members.size(); ++row) {
      if (members.begins_group(row, 0)) {
        rules_.unique_indexes.push_back({{}, std::string(members.text(row, 2))});
      }
      rules_.unique_indexes.back().members.emplace_back(members.text(row, 1));
    }
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      if (table_.columns[i].type == ColumnType::unknown) read_shape(i);
    }
    return std::move(rules_);
  }

 private:
  std::optional<std::size_t> find_number(int number) const {
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      if (table_.columns[i].number == number) return i;
    }
    return std::nullopt;
  }

  std::optional<std::size_t> find_name(std::string_view name) const {
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      if (table_.columns[i].name == name) return i;
    }
    return std::nullopt;
  }

  void read_checks() {
    const PostgresqlRows rows = connection_.query(checks_query, 1, {table_.id});
    for (int row = 0; row < rows.size(); ++row) rules_.checks.emplace_back(rows.text(row, 0));
  }

  void read_partitions() {
    const PostgresqlRows rows = connection_.query(partitions_query, 2, {table_.id});
    for (int row = 0; row < rows.size(); ++row) {
      const auto column = find_name(rows.text(row, 0));
      if (column) rules_.partitions.push_back({*column, std::string(rows.text(row, 1))});
    }
  }

  void read_triggers() {
    const PostgresqlRows rows = connection_.query(triggers_query, 3, {table_.id});
    for (int row = 0; row < rows.size(); ++row) {
      const std::string_view arguments = rows.text(row, 2);
      if (rows.text(row, 0).starts_with("tsvector_update_trigger")) {
        add_filled(arguments.substr(0, arguments.find("\\000")));
      } else {
        read_assignments(sql_words(rows.text(row, 1), Brackets::are_symbols));
      }
    }
  }

  void add_filled(std::string_view name) {
    if (const auto column = find_name(name)) rules_.filled.push_back(*column);
  }

  // `NEW.column := ...;` gives the column a value, unless that is made of its own.
  void read_assignments(const std::vector<SqlWord>& words) {
    const auto names_column = [&](std::size_t i) {
      return i + 2 < words.size() && words[i].is_keyword("NEW") && words[i + 1].is_symbol('.');
    };
    for (std::size_t i = 0; i + 4 < words.size(); ++i) {
      if (!names_column(i) || !words[i + 3].is_symbol(':') || !words[i + 4].is_symbol('=')) {
        continue;
      }
      bool is_own = false;
      for (std::size_t j = i + 5; j < words.size() && !words[j].is_symbol(';'); ++j) {
        is_own = is_own || (names_column(j) && words[j + 2].text == words[i + 2].text);
      }
      if (!is_own) add_filled(words[i + 2].text);
    }
  }

  void read_shape(std::size_t column) {
    const PostgresqlRows rows = connection_.query(
        column_type_query, 1, {table_.id, std::to_string(table_.columns[column].number)});
    if (rows.size() == 0) return;
    rules_.shapes.push_back({column, shape_of(std::string(rows.text(0, 0)), 0)});
  }

  TypeShape shape_of(const std::string& type, int depth) {
    TypeShape shape;
    const PostgresqlRows rows = connection_.query(type_query, 8, {type});
    if (rows.size() == 0 || depth == deepest_type) return shape;
    shape.name = rows.text(0, 0);
    const char kind = rows.letter(0, 1);
    const auto add = [&](std::string_view part) {
      shape.parts.push_back(shape_of(std::string(part), depth + 1));
    };
    // What a domain inside of another type asks for is not looked at.
    if (depth > 0 && rows.is_true(0, 7)) return {};
    if (kind == 'd') return shape_of(std::string(rows.text(0, 4)), depth + 1);
    if (rows.letter(0, 2) == array_category) {
      shape.kind = TypeShape::Kind::array;
      add(rows.text(0, 3));
    } else if (kind == 'r' || kind == 'm') {
      shape.kind = kind == 'r' ? TypeShape::Kind::range : TypeShape::Kind::multirange;
      add(rows.text(0, 6));
    } else if (kind == 'c') {
      shape.kind = TypeShape::Kind::composite;
      const PostgresqlRows parts = connection_.query(part_query, 1, {std::string(rows.text(0, 5))});
      for (int row = 0; row < parts.size(); ++row) add(parts.text(row, 0));
    } else if (kind == 'e') {
      shape.kind = TypeShape::Kind::choice;
      shape.choices = read_labels(connection_, type);
    }
    return shape;
  }

  PostgresqlConnection& connection_;
  const TableSchema& table_;
  TableRules rules_;
};

}  // namespace

std::vector<ListedTable> list_postgresql_tables(PostgresqlConnection& connection) {
  const PostgresqlRows rows = connection.query(tables_query, 6);
  std::vector<ListedTable> tables;
  for (int row = 0; row < rows.size(); ++row) {
    tables.push_back({written_part(rows.text(row, 0)) + "." + written_part(rows.text(row, 1)),
                      reason_left_out(rows.letter(row, 2), rows.is_true(row, 3),
                                      rows.is_true(row, 4), rows.is_true(row, 5))});
  }
  return tables;
}

TableRules read_postgresql_rules(PostgresqlConnection& connection, const TableSchema& table) {
  return RuleReader(connection, table).read();
}

}  // namespace korvex::host
