#include "host/imports/column_values.h"

#include <algorithm>

#include "host/databases/type_mapping.h"
#include "host/imports/calendar_days.h"
#include "host/imports/pattern_samples.h"
#include "host/imports/type_samples.h"
#include "host/layout/own_text.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::size_t samples = 200;  // of a type or pattern, for a column that repeats
constexpr std::size_t default_text = 200;
constexpr int letters = 5;  // in one directive
constexpr std::int64_t seconds_of_day = 86'400;
// What ranges of days and moments reach, without the days that the last moments are on.
constexpr std::chrono::year_month_day first_day_of_ranges{
    std::chrono::year(1970), std::chrono::January, std::chrono::day(2)};
constexpr std::chrono::year_month_day last_day_of_ranges{
    std::chrono::year(2038), std::chrono::January, std::chrono::day(18)};

std::optional<std::chrono::year_month_day> day_of(const std::optional<ValueBound>& bound,
                                                  const ImportPeriod& period) {
  if (!bound) return std::nullopt;
  if (!bound->text) {
    return std::chrono::sys_days(period.last) + std::chrono::days(bound->days);
  }
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
  const std::vector<std::string> held = held_by(task);
  std::erase_if(values, [&](const std::string& value) {
    return std::binary_search(held.begin(), held.end(), value);
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
               {"end", toml_text(task.is_followed ? "175959" : "235959")},
               {"order", order_of(task.is_unique)}};
  made.is_measured = true;
  made.period =
      static_cast<std::uint64_t>(task.is_followed ? seconds_of_day * 3 / 4 : seconds_of_day);
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

std::string order_of(bool is_unique) { return toml_text(is_unique ? "shuffled" : "random"); }

ItemAttributes text_attributes(std::size_t length) {
  const auto size = static_cast<std::int32_t>(length);
  return {attribute::character, 0, size, size, 0};
}

const std::vector<std::string>& choices_of(const ColumnTask& task) {
  return task.facts.choices ? *task.facts.choices : task.column.choices;
}

std::size_t text_limit(const ColumnTask& task) {
  std::size_t longest = 0;
  for (const std::string& each : choices_of(task)) {
    longest = std::max(longest, character_count(each));
  }
  if (longest > 0) return longest;
  std::size_t limit =
      task.column.length > 0 ? static_cast<std::size_t>(task.column.length) : default_text;
  if (task.facts.most_length && *task.facts.most_length > 0) {
    const auto most = static_cast<std::size_t>(*task.facts.most_length);
    limit = task.column.length > 0 ? std::min(limit, most) : most;
  }
  return std::max(limit, static_cast<std::size_t>(
                             task.column.length > 0 ? 0 : task.facts.least_length.value_or(0)));
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
  if (auto made = make_numbers(task)) return made;
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
