#include <algorithm>
#include <limits>

#include "host/imports/column_values.h"
#include "host/imports/exact_number.h"
#include "platform/digits.h"

namespace korvex::host {

namespace {

constexpr std::int64_t plain_numbers = 1000;
constexpr std::int64_t most_number = 999'999'999'999'999'999;
constexpr int most_decimals = 9;

std::int64_t scaled(std::int64_t number, int decimals) {
  return number * platform::power_of_ten<std::int64_t>(decimals);
}

// The value of a bound in units of a number of decimals, moved inside where it is not allowed
// itself.
std::optional<std::int64_t> bound_units(const std::optional<ValueBound>& bound, int decimals,
                                        int inwards) {
  const auto number = bound && bound->text ? ExactNumber::parse(*bound->text) : std::nullopt;
  const auto units = number ? number->in_units(decimals) : std::nullopt;
  if (!number) return std::nullopt;
  const bool is_inside = number->is_negative() == (inwards < 0);
  // A bound beyond all numbers either allows none of them, or it is as good as none.
  if (!units) return is_inside ? std::optional(inwards * (most_number + 1)) : std::nullopt;
  const bool is_moved = units->is_exact ? !bound->is_inclusive : is_inside;
  return units->number + (is_moved ? inwards : 0);
}

struct NumberLimits {
  int decimals = 0;
  std::int64_t largest = 0;  // in units
};

std::optional<NumberLimits> number_limits(const ColumnSchema& column) {
  switch (column.type) {
    case ColumnType::integer16:
      return NumberLimits{0, std::numeric_limits<std::int16_t>::max()};
    case ColumnType::integer32:
      return NumberLimits{0, std::numeric_limits<std::int32_t>::max()};
    case ColumnType::integer64:
      return NumberLimits{0, most_number};
    case ColumnType::floating4:
      return NumberLimits{2, 999'999};
    case ColumnType::floating8:
      return NumberLimits{2, 999'999'999'999'999};
    case ColumnType::decimal: {
      if (column.precision == 0) return NumberLimits{2, most_number};
      const int decimals = std::clamp(column.scale, 0, most_decimals);
      const int digits = std::clamp(column.precision - (column.scale - decimals), 1, 18);
      return NumberLimits{decimals, scaled(1, digits) - 1};
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string decimal_text(std::int64_t units, int decimals) {
  const std::string sign = units < 0 ? "-" : "";
  std::string digits = std::to_string(units < 0 ? -units : units);
  if (decimals == 0) return sign + digits;
  const auto after = static_cast<std::size_t>(decimals);
  if (digits.size() <= after) digits.insert(0, after + 1 - digits.size(), '0');
  return sign + digits.substr(0, digits.size() - after) + "." +
         digits.substr(digits.size() - after);
}

ColumnValues number_values(std::int64_t least, std::int64_t most, int decimals, bool is_unique) {
  ColumnValues made;
  const bool is_signed = least < 0;
  const std::string first = decimal_text(least, decimals);
  const std::string last = decimal_text(most, decimals);
  made.period = static_cast<std::uint64_t>(most - least) + 1;
  const std::int64_t largest = std::max(least < 0 ? -least : least, most < 0 ? -most : most);
  const std::size_t before = std::to_string(largest / scaled(1, decimals)).size();
  const std::size_t digits = before + static_cast<std::size_t>(decimals);
  made.attributes = {
      attribute::number, is_signed ? 1 : 0,
      static_cast<std::int32_t>(digits) + (is_signed ? 1 : 0) + (decimals > 0 ? 1 : 0),
      static_cast<std::int32_t>(digits), decimals};
  if (made.period < 2) {
    made.listed = {first};
    made.keys = {{"order", order_of(is_unique)}};
    return made;
  }
  std::string format = "%" + std::to_string(before);
  if (decimals > 0) format += "." + std::to_string(decimals);
  made.keys = {{"type", toml_text("range")},
               {"format", toml_text(format + (is_signed ? "D" : "U"))},
               {"start", toml_text(first)},
               {"end", toml_text(last)}};
  if (decimals > 0) made.keys.push_back({"increment", toml_text(decimal_text(1, decimals))});
  made.keys.push_back({"order", order_of(is_unique)});
  made.is_measured = true;
  made.least = least;
  made.most = most;
  return made;
}

ItemAttributes sum_attributes(int decimals) {
  constexpr std::int32_t digits = 15;
  return {attribute::number, 0, digits + 1, digits, decimals};
}

std::optional<ColumnValues> make_numbers(const ColumnTask& task) {
  const auto limits = number_limits(task.column);
  if (!limits) return std::nullopt;
  const int decimals = limits->decimals;
  const auto least = bound_units(task.facts.least, decimals, 1);
  const auto most = bound_units(task.facts.most, decimals, -1);
  const std::int64_t width = task.is_unique
                                 ? std::max<std::int64_t>(task.records * 10, plain_numbers)
                                 : scaled(plain_numbers, decimals);
  // What the conditions bound on both sides is theirs; elsewhere the width bounds it.
  std::int64_t end = std::min(most.value_or(limits->largest), limits->largest);
  std::int64_t start = std::max(least.value_or(end > 0 ? 1 : end - width + 1), -limits->largest);
  if (task.is_unique && task.largest && decimals == 0 && *task.largest >= start) {
    if (*task.largest >= end) return std::nullopt;
    start = *task.largest + 1;
  }
  if (!most && end - width > start) end = start + width - 1;
  for (const std::string& excluded : task.facts.excluded) {
    if (excluded == decimal_text(start, decimals) && start < end) ++start;
    if (excluded == decimal_text(end, decimals) && start < end) --end;
  }
  if (end < start) return std::nullopt;
  ColumnValues made = number_values(start, end, decimals, task.is_unique);
  if (task.counts_on) std::erase_if(made.keys, [](const auto& key) { return key.name == "order"; });
  return made;
}

}  // namespace korvex::host
