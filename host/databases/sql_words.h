#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// A piece of an SQL text.
struct SqlWord {
  enum class Kind {
    name,         // bare: a keyword, or a name without quotation marks
    quoted_name,  // what is between the marks of "a", [a] or `a`
    text,         // what is written between apostrophes
    symbol,       // anything else, one character each
  };
  Kind kind = Kind::symbol;
  std::string text;

  bool is_symbol(char symbol) const { return kind == Kind::symbol && text.front() == symbol; }
  bool is_keyword(std::string_view keyword) const;
};

// Whether a byte can stand in a name without quotation marks.
bool is_word_part(char byte);

// Whether `[a]` is a name, as SQLite takes it, or brackets are around an index or an array.
enum class Brackets { quote_names, are_symbols };

// The words of an SQL text; blanks and comments are none. Takes any text, also one that is no SQL.
std::vector<SqlWord> sql_words(std::string_view sql, Brackets brackets = Brackets::quote_names);

// Which of some names an expression speaks of, in the names' order.
std::vector<std::size_t> names_in(const std::vector<SqlWord>& expression,
                                  const std::vector<std::string>& names);

// The expressions of the CHECK constraints with a name in a CREATE TABLE, as one; empty without
// any.
std::vector<SqlWord> check_expression(std::string_view create_table, std::string_view name);

// What a CREATE INDEX says of the rows.
struct IndexText {
  std::vector<std::string> members;  // columns and expressions
  std::string condition;             // after WHERE
  bool has_expression = false;
};
IndexText index_text(std::string_view create_index);

// The texts of all CHECK constraints in a CREATE TABLE, without the parentheses around them.
std::vector<std::string> check_texts(std::string_view create_table);

}  // namespace korvex::host
