#include "host/imports/condition_parts.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>

#include "host/imports/exact_number.h"
#include "host/text/any_case.h"

namespace korvex::host {

using Kind = Expression::Kind;

std::string turned_round(const std::string& sign) {
  if (sign == "<") return ">";
  if (sign == "<=") return ">=";
  if (sign == ">") return "<";
  if (sign == ">=") return "<=";
  return sign;
}

std::string denied(const std::string& sign) {
  if (sign == "=") return "<>";
  if (sign == "<>") return "=";
  if (sign == "<") return ">=";
  if (sign == "<=") return ">";
  return sign == ">" ? "<=" : "<";
}

std::optional<int> whole_number(const std::string& text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

bool is_below(const std::string& left, const std::string& right) {
  const auto a = ExactNumber::parse(left);
  const auto b = ExactNumber::parse(right);
  return a && b ? *a < *b : left < right;
}

const Expression& stripped(const Expression& expression) {
  for (const std::string_view function : {"trim", "btrim", "ltrim", "rtrim"}) {
    if (expression.is_call(function) && expression.parts.size() == 1) {
      return stripped(expression.parts.front());
    }
  }
  return expression;
}

namespace {

// `1 year`: 366 days; `6000`: as many.
std::optional<int> days_of(const std::string& text) {
  int count = 0;
  char unit[16] = "";
  if (std::sscanf(text.c_str(), "%6d %15s", &count, unit) < 1) return std::nullopt;
  const std::string_view name = unit;
  constexpr int days_of_year = 366;
  constexpr int days_of_month = 31;
  int days = name.starts_with("day") || name.empty() ? 1 : 0;
  if (name.starts_with("year")) days = days_of_year;
  if (name.starts_with("mon")) days = days_of_month;
  if (name.starts_with("week")) days = 7;
  return count * days;
}

// The days or numbers of a sum, and what they are added to.
const Expression* summed(const Expression& expression, int& days) {
  const bool is_sum = expression.is_call("+") || expression.is_call("-");
  if (!is_sum || !expression.parts[1].is(Kind::constant)) return nullptr;
  const auto number = days_of(expression.parts[1].text);
  if (!number) return nullptr;
  days = expression.text == "-" ? -*number : *number;
  return &expression.parts.front();
}

}  // namespace

std::optional<int> days_from_now(const Expression& expression) {
  int days = 0;
  if (expression.is(Kind::now)) return 0;
  const Expression* const start = summed(expression, days);
  return start != nullptr && start->is(Kind::now) ? std::optional(days) : std::nullopt;
}

std::optional<ShiftedColumn> ConditionColumns::find_shifted(const Expression& expression) const {
  int shift = 0;
  const Expression* const start = summed(expression, shift);
  const auto column = find(start == nullptr ? expression : *start);
  return column ? std::optional(ShiftedColumn{*column, shift}) : std::nullopt;
}

std::optional<std::size_t> ConditionColumns::find(const Expression& expression) const {
  if (!expression.is(Kind::column)) return std::nullopt;
  if (value_ && is_same_in_any_case(expression.text, "VALUE")) return value_;
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    if (table_.columns[i].name == expression.text) return i;
  }
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    if (is_same_in_any_case(table_.columns[i].name, expression.text)) return i;
  }
  return std::nullopt;
}

std::optional<std::string> ConditionColumns::constant_of(const Expression& expression) const {
  if (expression.is(Kind::constant) || expression.is(Kind::truth)) return expression.text;
  const bool is_quoted_text = expression.is(Kind::column) && !find(expression) && !value_;
  return is_quoted_text ? std::optional(expression.text) : std::nullopt;
}

void ConditionColumns::add(const Expression& expression, std::vector<std::size_t>& columns) const {
  const auto column = find(expression);
  if (column && std::count(columns.begin(), columns.end(), *column) == 0) {
    columns.push_back(*column);
  }
  for (const Expression& part : expression.parts) add(part, columns);
}

void ConditionColumns::add_named(const std::string& text, std::vector<std::size_t>& columns) const {
  std::vector<std::string> names;
  for (const ColumnSchema& column : table_.columns) names.push_back(column.name);
  columns = names_in(sql_words(text, brackets_), names);
}

std::vector<std::size_t> ConditionColumns::counted(const Expression& expression,
                                                   bool of_null) const {
  std::vector<std::size_t> columns;
  std::vector<const Expression*> waiting = {&expression};
  while (!waiting.empty()) {
    const Expression& next = *waiting.back();
    waiting.pop_back();
    if (next.is_call("+") || next.is_call("num_nonnulls")) {
      for (auto part = next.parts.rbegin(); part != next.parts.rend(); ++part) {
        waiting.push_back(&*part);
      }
      continue;
    }
    const bool is_of_call = expression.is_call("num_nonnulls");
    if (!is_of_call && !next.is(of_null ? Kind::is_null : Kind::is_not_null)) return {};
    const auto column = find(is_of_call ? next : next.parts.front());
    if (!column) return {};
    columns.push_back(*column);
  }
  return columns;
}

}  // namespace korvex::host
