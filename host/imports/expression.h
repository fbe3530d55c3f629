#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/databases/sql_words.h"

namespace korvex::host {

// A condition of SQL as a tree. Casts are left out: what a constant stands for follows from the
// column that it is compared with.
struct Expression {
  enum class Kind {
    column,    // text: its name
    constant,  // text: a number or a text
    null_value,
    truth,  // text: "true" or "false"
    now,    // the present day or moment
    conjunction,
    disjunction,
    negation,
    comparison,  // text: =, <>, <, <=, > or >=; of two parts
    is_in,       // the first part among the others
    like,        // text: LIKE, ILIKE, GLOB, ~ or ~*; of two parts
    is_null,
    is_not_null,
    list,  // ARRAY[...]
    call,  // text: the function or the operator, in lower case
    unreadable,
  };
  Kind kind = Kind::unreadable;
  std::string text;
  std::vector<Expression> parts;

  bool is(Kind other) const { return kind == other; }
  bool is_call(std::string_view function) const { return is(Kind::call) && text == function; }
};

// Reads any text; what is no condition, or one of words that are not known, is unreadable.
Expression read_expression(std::string_view sql, Brackets brackets);

}  // namespace korvex::host
