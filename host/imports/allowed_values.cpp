#include <algorithm>

#include "host/imports/condition_parts.h"
#include "host/imports/exact_number.h"
#include "host/imports/table_facts.h"

namespace korvex::host {

bool allows(const ColumnFacts& facts, const std::string& value) {
  const auto has = [&](const std::vector<std::string>& values) {
    return std::count(values.begin(), values.end(), value) > 0;
  };
  if (has(facts.excluded) || (facts.choices && !has(*facts.choices))) return false;
  const auto number = ExactNumber::parse(value);
  const auto is_beyond = [&](const std::optional<ValueBound>& bound, bool is_upper) {
    const auto end = bound && bound->text ? ExactNumber::parse(*bound->text) : std::nullopt;
    if (!number || !end) return false;
    const bool is_equal = !(*number < *end) && !(*end < *number);
    return is_equal ? !bound->is_inclusive : is_upper == (*end < *number);
  };
  return !is_beyond(facts.least, false) && !is_beyond(facts.most, true);
}

bool is_free_whole_number(const ColumnSchema& column, const ColumnFacts& facts) {
  const bool is_whole = column.type == ColumnType::integer16 ||
                        column.type == ColumnType::integer32 ||
                        column.type == ColumnType::integer64;
  return is_whole && !facts.choices && !facts.is_bounded();
}

void ask_bound(const std::string& sign, const ValueBound& bound, ColumnFacts& facts) {
  const bool is_upper = sign.front() == '<';
  std::optional<ValueBound>& known = is_upper ? facts.most : facts.least;
  const bool is_narrower =
      !known || !known->text || !bound.text ||
      (is_upper ? !is_below(*known->text, *bound.text) : !is_below(*bound.text, *known->text));
  if (is_narrower) known = bound;
}

bool ask_length(const std::string& sign, int length, ColumnFacts& facts) {
  const auto at_least = [&](int size) {
    facts.least_length = std::max(facts.least_length.value_or(0), size);
  };
  const auto at_most = [&](int size) {
    facts.most_length = std::min(facts.most_length.value_or(size), size);
  };
  if (sign == "<>") {
    if (length != 0) return false;
    at_least(1);
  }
  if (sign == "=" || sign.front() == '>') at_least(sign == ">" ? length + 1 : length);
  if (sign == "=" || sign == "<" || sign == "<=") at_most(sign == "<" ? length - 1 : length);
  return true;
}

bool ask_given(const std::vector<std::size_t>& columns, const std::string& sign, int count,
               std::vector<ColumnFacts>& facts) {
  if (sign == "<>") return false;
  if (sign == ">") ++count;
  if (sign == "<") --count;
  const int most = static_cast<int>(columns.size());
  if (count < 0 || count > most) return false;
  for (int i = 0; i < most; ++i) {
    ColumnFacts& column = facts[columns[static_cast<std::size_t>(i)]];
    if (i < count && sign.front() != '<') column.is_never_null = true;
    if (i >= count && sign.front() != '>') column.is_always_null = true;
    if (column.is_never_null && column.is_always_null) return false;
  }
  return true;
}

}  // namespace korvex::host
