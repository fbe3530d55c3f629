#include "host/imports/table_facts.h"

#include <algorithm>

#include "host/imports/condition_parts.h"
#include "host/imports/pattern_samples.h"

namespace korvex::host {

namespace {

using Kind = Expression::Kind;
using Relation = ColumnOrder::Kind;

class FactReader {
 public:
  FactReader(const TableSchema& table, bool is_sqlite)
      : table_(table),
        brackets_(is_sqlite ? Brackets::quote_names : Brackets::are_symbols),
        columns_(table, brackets_) {
    facts_.columns.resize(table.columns.size());
    facts_.unique_sets = table.unique_sets;
  }

  void add_check(const std::string& text, std::optional<std::size_t> value) {
    columns_.set_value(value);
    const Expression expression = read_expression(text, brackets_);
    // What is read in part holds in part: each member of a conjunction counts for itself.
    if (take(expression)) return;
    UnreadCondition unread = {text, {}};
    if (value) unread.columns.push_back(*value);
    columns_.add(expression, unread.columns);
    if (unread.columns.empty()) columns_.add_named(text, unread.columns);
    facts_.unread.push_back(std::move(unread));
  }

  // Columns that must differ in some rows are made to differ in all, if that costs nothing; else no
  // row is one of them, if that can be had.
  void add_unique_index(const UniqueIndex& index) {
    columns_.set_value(std::nullopt);
    std::vector<std::size_t> columns;
    for (const std::string& member : index.members) {
      columns_.add(read_expression(member, brackets_), columns);
    }
    if (columns.empty()) return;
    const bool has_keys_alone = std::all_of(columns.begin(), columns.end(), [&](std::size_t i) {
      return is_of_key(i) || table_.columns[i].type == ColumnType::boolean;
    });
    if (has_keys_alone && !index.condition.empty()) {
      TableFacts before = facts_;
      if (take_negation(read_expression(index.condition, brackets_))) return;
      facts_ = std::move(before);
    }
    facts_.unique_sets.push_back(std::move(columns));
  }

  TableFacts take_facts() { return std::move(facts_); }

 private:
  ColumnFacts& facts_of(std::size_t column) { return facts_.columns[column]; }

  bool take(const Expression& expression) {
    switch (expression.kind) {
      case Kind::conjunction: {
        bool is_read = true;
        for (const Expression& part : expression.parts) is_read = take(part) && is_read;
        return is_read;
      }
      case Kind::disjunction:
        return take_disjunction(expression);
      case Kind::negation:
        return take_negation(expression.parts.front());
      case Kind::comparison:
        return take_comparison(expression);
      case Kind::is_in:
        return take_choices(expression);
      case Kind::like:
        return take_pattern(expression);
      case Kind::is_null:
      case Kind::is_not_null:
        return take_null_test(expression);
      case Kind::truth:
        return expression.text == "true";
      case Kind::column: {
        const auto column = columns_.find(expression);
        return column && take_one_of(*column, {"true"});
      }
      case Kind::call:
        return take_call(expression);
      default:
        return false;
    }
  }

  bool is_of_key(std::size_t column) const {
    return std::any_of(table_.foreign_keys.begin(), table_.foreign_keys.end(),
                       [&](const ForeignKey& key) {
                         return std::count(key.columns.begin(), key.columns.end(), column) > 0;
                       });
  }

  bool take_null_test(const Expression& expression) {
    const auto column = columns_.find(expression.parts.front());
    if (!column) return false;
    ColumnFacts& facts = facts_of(*column);
    (expression.is(Kind::is_null) ? facts.is_always_null : facts.is_never_null) = true;
    return !(facts.is_always_null && facts.is_never_null);
  }

  bool take_one_of(std::size_t column, std::vector<std::string> values) {
    ColumnFacts& facts = facts_of(column);
    if (facts.choices) {
      std::erase_if(values, [&](const std::string& value) {
        return std::count(facts.choices->begin(), facts.choices->end(), value) == 0;
      });
    }
    if (values.empty()) return false;
    facts.choices = std::move(values);
    return true;
  }

  bool take_choices(const Expression& expression) {
    const Expression& tested = expression.parts.front();
    // Texts that are in capitals stay so.
    const bool is_folded =
        (tested.is_call("upper") || tested.is_call("lower")) && tested.parts.size() == 1;
    const auto column = columns_.find(is_folded ? tested.parts.front() : tested);
    std::vector<std::string> values;
    for (std::size_t i = 1; i < expression.parts.size(); ++i) {
      const auto value = columns_.constant_of(expression.parts[i]);
      if (value) values.push_back(*value);
      if (!value && !expression.parts[i].is(Kind::null_value)) return false;
    }
    if (column) return take_one_of(*column, std::move(values));
    if (tested.is_call("length")) {
      return !values.empty() && take_bound_of_call(tested, "=", values.front());
    }
    // So many of some columns: none or all is the one that says something of its own.
    const auto counted = columns_.counted(expression.parts.front());
    if (counted.size() < 2 ||
        values != std::vector{std::string("0"), std::to_string(counted.size())}) {
      return false;
    }
    facts_.together.push_back(counted);
    return true;
  }

  bool take_pattern(const Expression& expression) {
    const Expression& sought = expression.parts[1];
    const bool is_similar = sought.is_call("similar_to_escape") && !sought.parts.empty();
    const auto pattern = columns_.constant_of(is_similar ? sought.parts.front() : sought);
    const auto column = columns_.find(stripped(expression.parts[0]));
    if (!column || !pattern) return false;
    ColumnFacts& facts = facts_of(*column);
    if (is_similar) {
      facts.regular.push_back(regular_of_similar(*pattern));
    } else if (expression.text == "GLOB") {
      facts.regular.push_back(regular_of_glob(*pattern));
    } else if (expression.text.front() != '~') {
      facts.like.push_back(*pattern);
    } else if (!is_met_by_any_word(*pattern)) {
      facts.regular.push_back(*pattern);
    }
    return true;
  }

  // All equal to something of one column: choices. Otherwise the first branch that can be had,
  // those that ask for NULL last.
  bool take_disjunction(const Expression& expression) {
    std::vector<std::string> values;
    std::optional<std::size_t> column;
    bool are_choices = true;
    for (const Expression& part : expression.parts) {
      const bool is_equality = part.is(Kind::comparison) && part.text == "=";
      if (!is_equality && !part.is(Kind::is_in)) are_choices = false;
      if (!are_choices) break;
      const auto own = columns_.find(part.parts.front());
      are_choices = own && (!column || *own == *column);
      column = own;
      for (std::size_t i = 1; i < part.parts.size() && are_choices; ++i) {
        const auto value = columns_.constant_of(part.parts[i]);
        are_choices = value.has_value();
        if (value) values.push_back(*value);
      }
    }
    if (are_choices && column) return take_one_of(*column, std::move(values));
    for (const bool asks_for_null : {false, true}) {
      for (const Expression& part : expression.parts) {
        if (part.is(Kind::is_null) != asks_for_null) continue;
        TableFacts before = facts_;
        if (take(part)) return true;
        facts_ = std::move(before);
      }
    }
    return false;
  }

  bool take_negation(const Expression& inner) {
    Expression turned = inner;
    switch (inner.kind) {
      case Kind::negation:
        return take(inner.parts.front());
      case Kind::is_null:
      case Kind::is_not_null:
        turned.kind = inner.is(Kind::is_null) ? Kind::is_not_null : Kind::is_null;
        return take(turned);
      case Kind::comparison:
        turned.text = denied(inner.text);
        return take(turned);
      case Kind::conjunction:
      case Kind::disjunction:
        turned.kind = inner.is(Kind::conjunction) ? Kind::disjunction : Kind::conjunction;
        for (Expression& part : turned.parts) {
          part = Expression{Kind::negation, "", {std::move(part)}};
        }
        return take(turned);
      case Kind::is_in: {
        const auto column = columns_.find(inner.parts.front());
        if (!column) return false;
        for (std::size_t i = 1; i < inner.parts.size(); ++i) {
          const auto value = columns_.constant_of(inner.parts[i]);
          if (!value) return false;
          facts_of(*column).excluded.push_back(*value);
        }
        return true;
      }
      case Kind::column: {
        const auto column = columns_.find(inner);
        return column && take_one_of(*column, {"false"});
      }
      default:
        return false;
    }
  }

  bool take_comparison(const Expression& expression) {
    const Expression& left = expression.parts[0];
    const Expression& right = expression.parts[1];
    const auto is_fixed = [&](const Expression& side) {
      return days_from_now(side).has_value() || columns_.constant_of(side).has_value();
    };
    if (is_fixed(right)) return take_bound(left, expression.text, right);
    if (is_fixed(left)) return take_bound(right, turned_round(expression.text), left);
    const auto first = columns_.find(left);
    const auto second = columns_.find(right);
    if (first && second) return take_order(*first, expression.text, *second);
    if (take_gap(left, expression.text, right)) return true;
    if (take_letter_case(left, right, expression.text)) return true;
    if (take_letter_case(right, left, expression.text)) return true;
    return take_null_parity(left, right, expression.text);
  }

  bool take_order(std::size_t left, const std::string& sign, std::size_t right) {
    if (sign.front() == '>') return take_order(right, turned_round(sign), left);
    const Relation kind = sign == "="    ? Relation::equal
                          : sign == "<>" ? Relation::unequal
                          : sign == "<"  ? Relation::less
                                         : Relation::less_or_equal;
    facts_.orders.push_back({left, kind, right});
    return true;
  }

  // `expires > issued + interval '1 year'`: at least so many days later, or at most.
  bool take_gap(const Expression& left, const std::string& sign, const Expression& right) {
    if (sign.front() == '<' && sign != "<>") return take_gap(right, turned_round(sign), left);
    const auto later = columns_.find_shifted(left);
    const auto earlier = columns_.find_shifted(right);
    if (!later || !earlier || sign.front() != '>') return false;
    const int gap = earlier->shift - later->shift;
    const Relation kind = sign == ">" ? Relation::less : Relation::less_or_equal;
    if (gap >= 0) {
      facts_.orders.push_back({earlier->column, kind, later->column, 0, false, gap});
    } else {
      facts_.orders.push_back({later->column, Relation::less_or_equal, earlier->column, -gap - 1});
    }
    return true;
  }

  // `code = upper(code)`.
  bool take_letter_case(const Expression& plain, const Expression& changed,
                        const std::string& sign) {
    const auto column = columns_.find(plain);
    const bool is_upper = changed.is_call("upper");
    if (!column || sign != "=" || (!is_upper && !changed.is_call("lower"))) return false;
    if (changed.parts.size() != 1 || columns_.find(changed.parts.front()) != column) return false;
    facts_of(*column).letter_case =
        is_upper ? ColumnFacts::LetterCase::upper : ColumnFacts::LetterCase::lower;
    return true;
  }

  // `(a IS NULL) = (b IS NULL)`, or `<>`, or with one of them turned round.
  bool take_null_parity(const Expression& left, const Expression& right, const std::string& sign) {
    const auto is_test = [](const Expression& side) {
      return side.is(Kind::is_null) || side.is(Kind::is_not_null);
    };
    if (sign != "=" && sign != "<>") return false;
    // Two conditions of which both, or just one, are to hold.
    if (left.is(Kind::comparison) || right.is(Kind::comparison)) {
      return take(left) && (sign == "=" ? take(right) : take_negation(right));
    }
    if (!is_test(left) || !is_test(right)) return false;
    const auto first = columns_.find(left.parts.front());
    const auto second = columns_.find(right.parts.front());
    if (!first || !second) return false;
    if ((left.kind == right.kind) == (sign == "=")) {
      facts_.together.push_back({*first, *second});
      return true;
    }
    return ask_given({*first, *second}, "=", 1, facts_.columns);
  }

  // A comparison with a constant, which is on the right.
  bool take_bound(const Expression& left, const std::string& sign, const Expression& right) {
    const auto constant = columns_.constant_of(right);
    if (left.is(Kind::call)) {
      return constant && take_bound_of_call(left, sign, *constant);
    }
    const auto column = columns_.find(left);
    if (!column) return false;
    ColumnFacts& facts = facts_of(*column);
    if (constant && sign == "=") return take_one_of(*column, {*constant});
    if (constant && sign == "<>") {
      facts.excluded.push_back(*constant);
      return true;
    }
    if (sign == "=" || sign == "<>") return false;
    const ValueBound bound = {constant, sign.size() == 2, days_from_now(right).value_or(0)};
    ask_bound(sign, bound, facts);
    return true;
  }

  bool take_bound_of_call(const Expression& left, const std::string& sign,
                          const std::string& constant) {
    const auto number = whole_number(constant);
    const auto counted = columns_.counted(left);
    if (counted.size() > 1) return number && ask_given(counted, sign, *number, facts_.columns);
    const auto empty = columns_.counted(left, true);
    if (empty.size() > 1) {
      const int rest = static_cast<int>(empty.size()) - number.value_or(0);
      return number && ask_given(empty, turned_round(sign), rest, facts_.columns);
    }
    if (left.parts.empty()) return false;
    const auto column = columns_.find(stripped(left.parts.front()));
    if (!column) return false;
    for (const std::string_view function :
         {"length", "char_length", "character_length", "octet_length"}) {
      if (left.is_call(function)) return number && ask_length(sign, *number, facts_of(*column));
    }
    if ((left.is_call("upper") || left.is_call("lower")) && sign == "=") {
      return take_one_of(*column, {constant});
    }
    const bool is_trimmed = &stripped(left) != &left;
    if (is_trimmed && constant.empty()) return ask_length(sign, 0, facts_of(*column));
    if (left.is_call("jsonb_typeof") || left.is_call("json_typeof") || left.is_call("json_type")) {
      facts_of(*column).json_type = constant;
      return sign == "=";
    }
    // Arrays are made with two elements.
    const bool is_size = left.is_call("array_length") || left.is_call("cardinality");
    if (!is_size || !number) return false;
    return sign.front() == '>' ? *number < 2 || sign == ">=" : *number > 2;
  }

  bool take_call(const Expression& expression) {
    if (expression.is_call("json_valid") && expression.parts.size() == 1) {
      const auto column = columns_.find(expression.parts.front());
      if (!column) return false;
      if (facts_of(*column).json_type.empty()) facts_of(*column).json_type = "object";
      return facts_of(*column).is_never_null = true;
    }
    return false;
  }

  const TableSchema& table_;
  const Brackets brackets_;
  ConditionColumns columns_;
  TableFacts facts_;
};

}  // namespace

TableFacts read_facts(const TableSchema& table, const TableRules& rules, bool is_sqlite) {
  FactReader reader(table, is_sqlite);
  for (const std::string& check : rules.checks) reader.add_check(check, std::nullopt);
  for (const DomainCheck& check : rules.domain_checks) reader.add_check(check.text, check.column);
  for (const UniqueIndex& index : rules.unique_indexes) reader.add_unique_index(index);
  return reader.take_facts();
}

}  // namespace korvex::host
