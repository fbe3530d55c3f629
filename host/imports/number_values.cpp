#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "host/imports/column_values.h"
#include "host/imports/exact_number.h"
#include "platform/text_lines.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::int64_t plain_numbers = 1000;
constexpr std::int64_t most_number = 999'999'999'999'999'999;
constexpr int most_decimals = 9;
constexpr int default_decimals = 2;

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

// How large the numbers of a type get, and the item that has room for them.
struct NumberLimits {
  Attribute attribute;
  int digits;
  int decimals;
  std::int64_t largest;  // in units of the last of the decimals that values have
  int value_decimals;
};

NumberLimits whole(Attribute attribute, int digits, std::int64_t largest) {
  return {attribute, digits, 0, largest, 0};
}

// The sizes that a decimal column has without saying so are those of the largest item. More
// decimals than anybody compares leave room for the digits in front of the point.
NumberLimits decimal_limits(int precision, int scale) {
  const bool is_wide = precision == 0 || precision > max_number_digits;
  if (precision == 0) {
    precision = max_number_digits;
    scale = default_decimals;
  }
  const int decimals = std::clamp(scale, 0, most_decimals);
  const int digits = std::clamp(precision - (scale - decimals), 1, max_number_digits);
  // A scale below 0 rounds in front of the point, one above the precision begins after zeros.
  const int item_digits = std::max(precision - std::min(scale, 0), scale);
  return {is_wide ? attribute::number : attribute::decimal, item_digits, std::max(scale, 0),
          scaled(1, digits) - 1, decimals};
}

std::optional<NumberLimits> number_limits(const ColumnSchema& column) {
  switch (column.type) {
    case ColumnType::integer16:
      return whole(attribute::small_integer, 5, std::numeric_limits<std::int16_t>::max());
    case ColumnType::integer32:
      return whole(attribute::integer, 10, std::numeric_limits<std::int32_t>::max());
    case ColumnType::integer64:
      return whole(attribute::number, max_number_digits, most_number);
    case ColumnType::floating4:
      return NumberLimits{attribute::number, 6, 2, 999'999, 2};
    case ColumnType::floating8:
      return NumberLimits{attribute::number, 15, 2, 999'999'999'999'999, 2};
    case ColumnType::decimal:
      return decimal_limits(column.precision, column.scale);
    default:
      return std::nullopt;
  }
}

ItemAttributes signed_item(Attribute attribute, int digits, int decimals) {
  return {attribute, Flag::on, digits + 1 + (decimals > 0 ? 1 : 0), digits, decimals};
}

// The sizes of the type, with the sign that all numbers of such an item have.
void take_type(const NumberLimits& limits, ColumnValues& values) {
  values.attributes = signed_item(limits.attribute, limits.digits, limits.decimals);
  for (LayoutKey& key : values.keys) {
    if (key.name != "format") continue;
    std::replace(key.value.begin(), key.value.end(), 'U', 'D');
    // No digit stands in front of the point.
    if (limits.digits == limits.decimals) key.value.erase(key.value.find('1'), 1);
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
  const bool is_signed = least < 0;
  const std::string first = decimal_text(least, decimals);
  const std::int64_t largest = std::max(least < 0 ? -least : least, most < 0 ? -most : most);
  const std::size_t before = std::to_string(largest / scaled(1, decimals)).size();
  const std::size_t digits = before + static_cast<std::size_t>(decimals);
  const ItemAttributes item = {
      attribute::number, flag_of(is_signed),
      static_cast<std::int32_t>(digits) + (is_signed ? 1 : 0) + (decimals > 0 ? 1 : 0),
      static_cast<std::int32_t>(digits), decimals};
  std::string format = "%" + std::to_string(before);
  if (decimals > 0) format += "." + std::to_string(decimals);
  auto range = range_values(item,
                            {format + (is_signed ? "D" : "U"), first, decimal_text(most, decimals),
                             decimal_text(1, decimals)},
                            is_unique);
  ColumnValues made;
  if (range) {
    made = std::move(*range);
    made.is_measured = true;
    made.least = least;
    made.most = most;
  } else {
    made.attributes = item;
    made.period = 1;
    made.listed = {first};
    made.keys = {{"order", order_of(is_unique)}};
  }
  return made;
}

std::optional<ItemAttributes> number_attributes(const ColumnSchema& column) {
  const auto limits = number_limits(column);
  if (!limits) return std::nullopt;
  return signed_item(limits->attribute, limits->digits, limits->decimals);
}

ItemAttributes sum_attributes(int decimals) {
  constexpr std::int32_t digits = 15;
  return {attribute::number, Flag::off, digits + 1, digits, decimals};
}

namespace {

// The largest number that a column holds, in units.
std::optional<std::int64_t> largest_units(const ColumnTask& task, int decimals) {
  if (!task.is_fresh) return std::nullopt;
  if (task.largest || decimals == 0) return task.largest;
  std::optional<std::int64_t> largest;
  for (const std::string& text : task.held()) {
    const auto number = ExactNumber::parse(text);
    const auto units = number ? number->in_units(decimals) : std::nullopt;
    if (units) largest = std::max(largest.value_or(units->number), units->number);
  }
  return largest;
}

// The numbers between two that a column does not hold, as far as they are needed.
std::optional<ColumnValues> free_numbers(const ColumnTask& task, std::int64_t least,
                                         std::int64_t most, int decimals) {
  std::set<std::int64_t> held;
  for (const std::string& text : task.held()) {
    const auto number = ExactNumber::parse(text);
    const auto units = number ? number->in_units(decimals) : std::nullopt;
    if (units) held.insert(units->number);
  }
  ColumnValues made = number_values(least, most, decimals, task.is_unique);
  made.keys = {{"order", order_of(task.is_unique)}};
  for (std::int64_t next = least; next <= most; ++next) {
    if (std::cmp_greater_equal(made.listed.size(), task.records)) break;
    if (!held.contains(next)) made.listed.push_back(decimal_text(next, decimals));
  }
  if (made.listed.empty()) return std::nullopt;
  made.period = made.listed.size();
  made.is_measured = false;
  return made;
}

}  // namespace

std::optional<ColumnValues> make_numbers(const ColumnTask& task) {
  auto limits = number_limits(task.column);
  if (!limits) return std::nullopt;
  // An integer column of SQLite is a wide one in spite of its name, should its rows need that.
  const bool is_too_short =
      task.is_unique && limits->largest - task.largest.value_or(0) < task.records;
  if (task.column.takes_wide_integers && is_too_short) {
    limits = whole(attribute::number, max_number_digits, most_number);
  }
  const int decimals = limits->value_decimals;
  const auto least = bound_units(task.facts.least, decimals, 1);
  const auto most = bound_units(task.facts.most, decimals, -1);
  const std::int64_t width = !task.is_unique ? scaled(plain_numbers, decimals)
                             : task.form == DraftForm::settings
                                 ? limits->largest
                                 : std::max<std::int64_t>(task.records * 10, plain_numbers);
  // What the conditions bound on both sides is theirs; elsewhere the width bounds it.
  std::int64_t end = std::min(most.value_or(limits->largest), limits->largest);
  std::int64_t start = std::max(least.value_or(end > 0 ? 1 : end - width + 1), -limits->largest);
  if (const auto largest = largest_units(task, decimals); largest && *largest >= start) {
    if (*largest > end - task.records) return free_numbers(task, start, end, decimals);
    start = *largest + 1;
  }
  // Numbers with decimals have as many digits in front of the point: they begin just above 0.
  const std::int64_t first = decimals > 0 && start == 1 ? 0 : start;
  if (!most && end - width > first) end = first + width - 1;
  for (const std::string& excluded : task.facts.excluded) {
    if (excluded == decimal_text(start, decimals) && start < end) ++start;
    if (excluded == decimal_text(end, decimals) && start < end) --end;
  }
  if (end < start) return std::nullopt;
  ColumnValues made = number_values(start, end, decimals, task.is_unique);
  if (task.counts_on) std::erase_if(made.keys, [](const auto& key) { return key.name == "order"; });
  if (task.form == DraftForm::settings) take_type(*limits, made);
  return made;
}

}  // namespace korvex::host
