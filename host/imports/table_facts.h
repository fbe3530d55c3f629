#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"

namespace korvex::host {

// The least or the largest value that a condition allows. The text is as SQL has it; none means the
// present day or moment.
struct ValueBound {
  std::optional<std::string> text;
  bool is_inclusive = true;
  int days = 0;  // from the present day on
};

// What the conditions of a table ask of one column.
struct ColumnFacts {
  std::optional<ValueBound> least;
  std::optional<ValueBound> most;
  std::optional<std::vector<std::string>> choices;
  std::vector<std::string> excluded;
  std::optional<int> least_length;
  std::optional<int> most_length;
  std::vector<std::string> like;     // patterns of LIKE
  std::vector<std::string> regular;  // regular expressions
  enum class LetterCase { any, upper, lower };
  LetterCase letter_case = LetterCase::any;
  bool is_never_null = false;
  bool is_always_null = false;
  std::string json_type;  // object, array, string or number

  bool is_bounded() const { return least || most; }
};

// Whether the choices, the bounds and the excluded values let a number or text through.
bool allows(const ColumnFacts& facts, const std::string& value);

// A column of whole numbers of which no condition says more.
bool is_free_whole_number(const ColumnSchema& column, const ColumnFacts& facts);

// Takes a comparison of a column, or of its length, with a constant. False for one that says
// nothing.
void ask_bound(const std::string& sign, const ValueBound& bound, ColumnFacts& facts);
bool ask_length(const std::string& sign, int length, ColumnFacts& facts);

// The same of how many of some columns are given: the first ones are, those that are too many
// never.
bool ask_given(const std::vector<std::size_t>& columns, const std::string& sign, int count,
               std::vector<ColumnFacts>& facts);

// Two columns of which the first is to be less than the second, or not more.
struct ColumnOrder {
  enum class Kind { less, less_or_equal, equal, unequal };
  std::size_t left = 0;
  Kind kind = Kind::less;
  std::size_t right = 0;
  int days = 0;  // at most in between, of days and moments; 0 where nothing is known
  bool is_guess = false;
  int gap = 0;  // days, or numbers, that are to be in between
};

// A condition that nobody here can read, with the columns that it speaks of.
struct UnreadCondition {
  std::string text;
  std::vector<std::size_t> columns;
};

// What the conditions of a table, of its columns' domains and of its partitions ask.
struct TableFacts {
  std::vector<ColumnFacts> columns;
  std::vector<ColumnOrder> orders;
  std::vector<std::vector<std::size_t>> together;     // all of them NULL, or none
  std::vector<std::vector<std::size_t>> unique_sets;  // of the schema and of its other indexes
  std::vector<UnreadCondition> unread;
};

TableFacts read_facts(const TableSchema& table, const TableRules& rules, bool is_sqlite);

}  // namespace korvex::host
