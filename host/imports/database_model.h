#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/imports/table_facts.h"

namespace korvex::host {

// Which tables of a database an import is about. Patterns name tables, with or without their
// schema; a `*` stands for any text.
struct TableChoice {
  std::vector<std::string> tables;  // all, without any
  std::vector<std::string> except;
  std::vector<std::string> keep;  // whose rows stay as they are
};

// A table that the import knows.
struct ImportedTable {
  TableSchema schema;
  TableRules rules;
  TableFacts facts;
  std::int64_t rows = 0;  // that are there
  bool is_kept = false;   // a source of keys, without a layout of its own
};

struct LeftOutTable {
  std::string name;
  std::string reason;
};

struct DatabaseModel {
  std::vector<ImportedTable> tables;
  std::vector<LeftOutTable> left_out;
  std::vector<std::string> unmatched;  // patterns that name no table
  bool is_sqlite = false;

  // The table that a foreign key refers to; the number of tables when it is none of them.
  std::size_t find(const ForeignKey& key) const;
};

// Throws DatabaseError or Interrupted, as the next one.
ImportedTable read_table(Database& database, const std::string& name, bool is_sqlite);

DatabaseModel read_database(Database& database, const TableChoice& choice, bool is_sqlite);

}  // namespace korvex::host
