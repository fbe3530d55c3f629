#include "host/imports/column_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/databases/type_mapping.h"
#include "host/imports/calendar_days.h"
#include "host/imports/pattern_samples.h"
#include "host/imports/type_samples.h"
#include "host/layout/own_text.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::int64_t plain_numbers = 1000;
constexpr std::int64_t most_number = 999'999'999'999'999'999;
constexpr std::size_t samples = 200;  // of a type or pattern, for a column that repeats
constexpr std::size_t default_text = 200;
constexpr int letters = 5;  // in one directive
constexpr int most_decimals = 9;
constexpr std::int64_t seconds_of_day = 86'400;
// What ranges of days and moments reach, without the days that the last moments are on.
constexpr std::chrono::year_month_day first_day_of_ranges{
    std::chrono::year(1970), std::chrono::January, std::chrono::day(2)};
constexpr std::chrono::year_month_day last_day_of_ranges{
    std::chrono::year(2038), std::chrono::January, std::chrono::day(18)};

std::string order_of(bool is_unique) { return toml_text(is_unique ? "shuffled" : "random"); }

std::int64_t scaled(std::int64_t number, int decimals) {
  for (; decimals > 0; --decimals) number *= 10;
  return number;
}

// The value of a bound in units of a number of decimals, moved inside where it is not allowed
// itself.
std::optional<std::int64_t> bound_units(const std::optional<ValueBound>& bound, int decimals,
                                        int inwards) {
  if (!bound || !bound->text) return std::nullopt;
  char* end = nullptr;
  const long double number = std::strtold(bound->text->c_str(), &end);
  if (bound->text->empty() || *end != '\0') return std::nullopt;
  const long double units = number * static_cast<long double>(scaled(1, decimals));
  if (std::abs(units) > static_cast<long double>(most_number)) return std::nullopt;
  const long double whole = inwards > 0 ? std::ceil(units) : std::floor(units);
  const bool is_moved = !bound->is_inclusive && whole == units;
  return static_cast<std::int64_t>(whole) + (is_moved ? inwards : 0);
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

std::optional<ColumnValues> numbers(const ColumnTask& task) {
  const auto limits = number_limits(task.column);
  if (!limits) return std::nullopt;
  const int decimals = limits->decimals;
  const auto least = bound_units(task.facts.least, decimals, 1);
  const auto most = bound_units(task.facts.most, decimals, -1);
  std::int64_t end = std::min(most.value_or(limits->largest), limits->largest);
  std::int64_t start = least.value_or(std::min<std::int64_t>(1, end));
  if (task.is_unique && task.largest && decimals == 0 && *task.largest >= start) {
    if (*task.largest >= end) return std::nullopt;
    start = *task.largest + 1;
  }
  const std::int64_t width = task.is_unique
                                 ? std::max<std::int64_t>(task.records * 10, plain_numbers)
                                 : scaled(plain_numbers, decimals);
  if (end - width > start) end = most && !least && !task.is_unique ? end : start + width - 1;
  if (most && !least && end - width > 0) start = std::max(start, end - width);
  for (const std::string& excluded : task.facts.excluded) {
    if (excluded == decimal_text(start, decimals) && start < end) ++start;
    if (excluded == decimal_text(end, decimals) && start < end) --end;
  }
  if (end < start) return std::nullopt;
  ColumnValues made = number_values(start, end, decimals, task.is_unique);
  if (task.counts_on) std::erase_if(made.keys, [](const auto& key) { return key.name == "order"; });
  return made;
}

std::optional<std::chrono::year_month_day> day_of(const std::optional<ValueBound>& bound,
                                                  const ImportPeriod& period) {
  if (!bound) return std::nullopt;
  if (!bound->text) return period.last;
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  if (std::sscanf(bound->text->c_str(), "%4d-%2u-%2u", &year, &month, &day) != 3) {
    return std::nullopt;
  }
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  return date.ok() ? std::optional(date) : std::nullopt;
}

// The texts that a unique column holds, in order.
std::vector<std::string> held_by(const ColumnTask& task) {
  std::vector<std::string> held;
  if (task.is_unique && task.held) held = task.held();
  std::sort(held.begin(), held.end());
  return held;
}

// A whole day inside of each bound, so that neither its moment nor the clock matters.
ColumnValues moments(const ColumnTask& task) {
  using namespace std::chrono;
  ImportPeriod period = task.period;
  const auto least = day_of(task.facts.least, period);
  const auto most = day_of(task.facts.most, period);
  const auto length = sys_days(period.last) - sys_days(period.first);
  if (most) period.last = sys_days(*most) - days(1);
  if (least && (sys_days(*least) > sys_days(period.first) || most)) {
    period.first = sys_days(*least) + days(task.facts.least->is_inclusive ? 0 : 1);
  }
  if (most && !least && sys_days(period.first) >= sys_days(period.last)) {
    period.first = sys_days(period.last) - length;
  }
  if (least && !most && sys_days(period.first) >= sys_days(period.last)) {
    period.last = sys_days(period.first) + length;
  }
  // A unique column goes on before what it holds: later ones may not be over yet.
  const std::vector<std::string> held = held_by(task);
  if (!held.empty()) {
    const auto first = day_of(ValueBound{held.front(), true}, period);
    if (first) period = {sys_days(*first) - days(1) - length, sys_days(*first) - days(1)};
  }
  return moment_values(task.column, period, task.is_unique);
}

ColumnValues listed(std::vector<std::string> values, bool is_unique) {
  ColumnValues made;
  std::size_t longest = 1;
  for (const std::string& value : values) longest = std::max(longest, character_count(value));
  made.attributes = text_attributes(longest);
  made.period = values.size();
  made.listed = std::move(values);
  made.keys = {{"order", order_of(is_unique)}};
  return made;
}

std::optional<ColumnValues> choices(const ColumnTask& task) {
  std::vector<std::string> values = task.column.choices;
  const bool is_boolean = task.column.type == ColumnType::boolean;
  if (task.facts.choices) {
    const std::vector<std::string>& asked = *task.facts.choices;
    if (!is_boolean) values = asked;
    // `false` and `0` are the same to a database.
    if (is_boolean && asked.size() == 1) {
      const bool is_true = asked.front() == "true" || asked.front() == "1" || asked.front() == "t";
      values = {values[is_true ? 1 : 0]};
    }
  }
  std::erase_if(values, [&](const std::string& value) {
    return std::count(task.facts.excluded.begin(), task.facts.excluded.end(), value) > 0;
  });
  if (values.empty()) return std::nullopt;
  return listed(std::move(values), task.is_unique);
}

std::optional<ColumnValues> shaped(const ColumnTask& task, const TypeShape& shape) {
  const bool is_range =
      shape.kind == TypeShape::Kind::range || shape.kind == TypeShape::Kind::multirange;
  const std::size_t count =
      task.is_unique || is_range
          ? static_cast<std::size_t>(task.records)
          : std::min<std::size_t>(samples, static_cast<std::size_t>(task.records));
  std::vector<std::string> values;
  for (std::uint64_t i = 0; values.size() < std::max<std::size_t>(count, 1); ++i) {
    auto text = sample_text(shape, task.column.declared_type, task.rows_there + i);
    if (!text) return std::nullopt;
    values.push_back(std::move(*text));
  }
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  return listed(std::move(values), task.is_unique || is_range);
}

// Texts that all patterns of a column match: those of one are made, the others are left to hope.
std::optional<ColumnValues> patterned(const ColumnTask& task) {
  const ColumnFacts& facts = task.facts;
  const std::string regular =
      facts.regular.empty() ? regular_of_like(facts.like.front()) : facts.regular.front();
  const std::size_t wanted = task.is_unique ? static_cast<std::size_t>(task.records) : samples;
  const std::vector<std::string> held = held_by(task);
  std::vector<std::string> texts = matching_texts(regular, wanted + held.size());
  const std::size_t limit = text_limit(task);
  std::erase_if(texts, [&](const std::string& text) {
    return text.size() > limit || static_cast<int>(text.size()) < facts.least_length.value_or(0) ||
           std::binary_search(held.begin(), held.end(), text);
  });
  texts.resize(std::min(texts.size(), wanted));
  if (texts.empty()) return std::nullopt;
  return listed(std::move(texts), task.is_unique);
}

ColumnUse use_of(const ColumnTask& task) {
  ColumnUse use;
  use.is_unique = task.is_unique;
  use.records = task.records;
  if (task.largest_text) use.largest_text = task.largest_text;
  return use;
}

std::optional<ColumnValues> ranged(const MappedColumn& mapped, bool is_unique) {
  if (mapped.distinct_values < 2) return std::nullopt;
  ColumnValues made;
  made.attributes = mapped.attributes;
  made.attributes.signed_flag = 0;
  made.period = static_cast<std::uint64_t>(mapped.distinct_values);
  made.keys = {{"type", toml_text("range")},
               {"format", toml_text(mapped.values.format)},
               {"start", toml_text(mapped.values.start)},
               {"end", toml_text(mapped.values.end)},
               {"order", order_of(is_unique)}};
  return made;
}

// Letters, as many as the column asks for: those beyond the directives stay the same.
std::optional<ColumnValues> lettered(const ColumnTask& task) {
  const auto limit = static_cast<int>(std::min<std::size_t>(text_limit(task), default_text));
  const int least = std::max(task.facts.least_length.value_or(1), 1);
  if (limit < least) return std::nullopt;
  const int count = std::min(limit, letters);
  const bool is_lower = task.facts.letter_case == ColumnFacts::LetterCase::lower;
  TextForm form = {
      std::string(static_cast<std::size_t>(std::max(least - count, 0)), is_lower ? 'a' : 'A'),
      is_lower ? 'a' : 'A', is_lower ? 'z' : 'Z', static_cast<std::size_t>(count), ""};
  auto made = ranged(map_text_form(form, use_of(task)), task.is_unique);
  if (!made) return std::nullopt;
  made->attributes = text_attributes(
      task.column.length > 0 ? static_cast<std::size_t>(task.column.length)
                             : std::max<std::size_t>(form.before.size() + form.count, 40));
  return made;
}

ColumnValues words(std::size_t limit) {
  ColumnValues made;
  made.attributes = text_attributes(limit);
  made.keys = {{"type", toml_text("builtin")},
               {"set", toml_text("words.word")},
               {"language", toml_text("en")},
               {"order", toml_text("random")}};
  return made;
}

std::optional<ColumnValues> texts(const ColumnTask& task) {
  constexpr std::size_t longest_word = 16;
  const ColumnFacts& facts = task.facts;
  if (!facts.json_type.empty()) {
    return shaped(task, {TypeShape::Kind::plain, "json", {}, {}});
  }
  if (!facts.regular.empty() || !facts.like.empty()) return patterned(task);
  const bool is_free =
      facts.letter_case != ColumnFacts::LetterCase::upper && facts.least_length.value_or(0) <= 1;
  const std::size_t limit = text_limit(task);
  if (task.has_readable_texts && !task.is_unique && is_free && limit >= longest_word) {
    return words(limit);
  }
  return lettered(task);
}

std::optional<ColumnValues> times(const ColumnTask& task) {
  ColumnValues made;
  made.attributes = {attribute::time, 0, 6, 6, 0};
  made.keys = {{"type", toml_text("range")},
               {"format", toml_text("%T")},
               {"start", toml_text("000000")},
               {"end", toml_text("235959")},
               {"order", order_of(task.is_unique)}};
  made.period = static_cast<std::uint64_t>(seconds_of_day);
  return made;
}

std::optional<ColumnValues> identifiers(const ColumnTask& task) {
  const auto mapped = map_column(task.column, use_of(task));
  return mapped ? ranged(*mapped, task.is_unique) : std::nullopt;
}

TypeShape plain_shape(std::string name) {
  return {TypeShape::Kind::plain, std::move(name), {}, {}};
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

ItemAttributes text_attributes(std::size_t length) {
  const auto size = static_cast<std::int32_t>(length);
  return {attribute::character, 0, size, size, 0};
}

std::size_t text_limit(const ColumnTask& task) {
  std::size_t limit =
      task.column.length > 0 ? static_cast<std::size_t>(task.column.length) : default_text;
  if (task.facts.most_length && *task.facts.most_length > 0) {
    const auto most = static_cast<std::size_t>(*task.facts.most_length);
    limit = task.column.length > 0 ? std::min(limit, most) : most;
  }
  return std::max(limit, static_cast<std::size_t>(
                             task.column.length > 0 ? 0 : task.facts.least_length.value_or(0)));
}

ColumnValues number_values(std::int64_t least, std::int64_t most, int decimals, bool is_unique) {
  ColumnValues made;
  const bool is_signed = least < 0;
  const std::string first = decimal_text(least, decimals);
  const std::string last = decimal_text(most, decimals);
  made.period = static_cast<std::uint64_t>(most - least) + 1;
  const std::size_t before = std::max(first.size(), last.size()) -
                             (is_signed && first.size() >= last.size() ? 1 : 0) -
                             (decimals > 0 ? static_cast<std::size_t>(decimals) + 1 : 0);
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

// Days that no range of the layout language reaches.
ColumnValues listed_days(const ImportPeriod& period, bool is_unique) {
  using namespace std::chrono;
  constexpr std::int64_t most_days = 1000;
  const auto count = (sys_days(period.last) - sys_days(period.first)).count() + 1;
  const auto step = std::max<std::int64_t>(count / most_days, 1);
  std::vector<std::string> values;
  for (std::int64_t i = 0; i < count; i += step) {
    values.push_back(sql_day(sys_days(period.first) + days(i)));
  }
  return listed(std::move(values), is_unique);
}

ColumnValues moment_values(const ColumnSchema& column, const ImportPeriod& given, bool is_unique) {
  using namespace std::chrono;
  ImportPeriod period = given;
  // A range has two values at least.
  if (sys_days(period.last) <= sys_days(period.first)) {
    period.last = sys_days(period.first) + days(1);
  }
  const bool is_date = column.type == ColumnType::date;
  if (period.first < first_day_of_ranges || period.last > last_day_of_ranges) {
    return listed_days(period, is_unique);
  }
  ColumnValues made;
  made.attributes = is_date ? ItemAttributes{attribute::date, 0, 8, 8, 0}
                            : ItemAttributes{attribute::timestamp, 0, 15, 15, 0};
  made.keys = {{"type", toml_text("range")},
               {"format", toml_text(is_date ? "%4YMD" : "%TS")},
               {"start", toml_text(layout_day(period.first) + (is_date ? "" : " 000000"))},
               {"end", toml_text(layout_day(period.last) + (is_date ? "" : " 235959"))},
               {"order", order_of(is_unique)}};
  const auto span = (sys_days(period.last) - sys_days(period.first)).count() + 1;
  made.is_measured = true;
  made.period = static_cast<std::uint64_t>(is_date ? span : span * seconds_of_day);
  return made;
}

std::optional<ColumnValues> make_values(const ColumnTask& task) {
  if (task.facts.choices || task.column.type == ColumnType::choice ||
      task.column.type == ColumnType::boolean) {
    return choices(task);
  }
  if (auto made = numbers(task)) return made;
  switch (task.column.type) {
    case ColumnType::text:
    case ColumnType::binary:
      return texts(task);
    case ColumnType::date:
    case ColumnType::timestamp:
      return moments(task);
    case ColumnType::time:
      return times(task);
    case ColumnType::uuid:
      return identifiers(task);
    case ColumnType::hex_binary:
      return shaped(task, plain_shape("bytea"));
    case ColumnType::json:
      return shaped(task, plain_shape("json"));
    case ColumnType::interval:
      return shaped(task, plain_shape("interval"));
    case ColumnType::unknown:
      if (task.shape == nullptr) return texts(task);
      return shaped(task, *task.shape);
    default:
      return std::nullopt;
  }
}

}  // namespace korvex::host
