#include <algorithm>

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

}  // namespace korvex::host
