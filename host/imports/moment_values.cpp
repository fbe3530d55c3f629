#include <algorithm>
#include <utility>

#include "formatlang/value_parser.h"
#include "host/imports/calendar_days.h"
#include "host/imports/column_values.h"

// The values of columns for days, moments and times of the day.
namespace korvex::host {

namespace {

constexpr std::size_t clock_length = 8;
constexpr ItemAttributes time_item = {attribute::time, Flag::off, 6, 6, 0};

// A day that is a number of its digits, such as 20240229.
std::chrono::year_month_day day_number(std::int64_t number) {
  return {std::chrono::year(static_cast<int>(number / 10'000)),
          std::chrono::month(static_cast<unsigned>(number / 100 % 100)),
          std::chrono::day(static_cast<unsigned>(number % 100))};
}

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

// A moment as the layout language has it, not beyond the first and the last that it reaches.
std::string moment_text(std::chrono::year_month_day day, std::int64_t time) {
  if (day == day_number(first_date)) time = std::max(time, first_date_time);
  if (day == day_number(last_date)) time = std::min(time, last_date_time);
  const std::string clock = std::to_string(1'000'000 + time).substr(1);
  return layout_day(day) + " " + clock;
}

// Times of the day that the column does not hold.
std::optional<ColumnValues> free_times(const ColumnTask& task) {
  constexpr std::int64_t seconds_of_day = 86'400;
  constexpr std::int64_t spread = 7919;  // a prime, so that they lie all over the day
  const std::vector<std::string> held = held_by(task);
  std::vector<std::string> times;
  for (std::int64_t i = 0; i < seconds_of_day; ++i) {
    if (std::cmp_greater_equal(times.size(), task.records)) break;
    const std::int64_t second = i * spread % seconds_of_day;
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(second / 3600),
                  static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
    if (!std::binary_search(held.begin(), held.end(), text)) times.emplace_back(text);
  }
  if (times.empty()) return std::nullopt;
  return listed(std::move(times), task.is_unique);
}

}  // namespace

ColumnValues make_moments(const ColumnTask& task) {
  using namespace std::chrono;
  ImportPeriod period = task.period;
  if (task.is_unique && task.form == DraftForm::settings) {
    period = {day_number(first_date), day_number(last_date)};
  }
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
    const sys_days earliest = day_number(first_date);
    if (sys_days(period.first) < earliest && sys_days(period.last) > earliest)
      period.first = earliest;
  }
  return moment_values(task.column, period, task.is_unique);
}

ColumnValues moment_values(const ColumnSchema& column, const ImportPeriod& given, bool is_unique) {
  using namespace std::chrono;
  constexpr std::int64_t last_time = 235959;
  ImportPeriod period = given;
  // A range has two values at least.
  if (sys_days(period.last) <= sys_days(period.first)) {
    period.last = sys_days(period.first) + days(1);
  }
  const bool is_date = column.type == ColumnType::date;
  const ItemAttributes item = is_date ? ItemAttributes{attribute::date, Flag::off, 8, 8, 0}
                                      : ItemAttributes{attribute::timestamp, Flag::off, 15, 15, 0};
  auto made = range_values(
      item,
      {is_date ? "%4YMD" : "%TS", is_date ? layout_day(period.first) : moment_text(period.first, 0),
       is_date ? layout_day(period.last) : moment_text(period.last, last_time), "1"},
      is_unique);
  if (!made) return listed_days(period, is_unique);
  made->is_measured = true;
  return std::move(*made);
}

std::optional<ColumnValues> make_times(const ColumnTask& task) {
  if (task.is_fresh) return free_times(task);
  const bool is_interval = task.column.type == ColumnType::interval;
  const ItemAttributes item = is_interval ? text_attributes(clock_length) : time_item;
  auto made = range_values(item, {"%T", "000000", task.is_followed ? "175959" : "235959", "1"},
                           task.is_unique);
  if (made) made->is_measured = item.attribute == attribute::time;
  return made;
}

}  // namespace korvex::host
