#include "host/records/moment_scale.h"

#include <chrono>
#include <string>

namespace korvex::host {

namespace {

using Date = std::chrono::year_month_day;

constexpr std::int64_t seconds_a_day = 24 * 60 * 60;

const std::chrono::sys_days first_day =
    Date(std::chrono::year(1), std::chrono::January, std::chrono::day(1));
const std::chrono::sys_days last_day =
    Date(std::chrono::year(9999), std::chrono::December, std::chrono::day(31));

std::optional<std::int64_t> day_of(const MomentNumbers& moment) {
  const Date date(std::chrono::year(moment.year), std::chrono::month(moment.month),
                  std::chrono::day(moment.day));
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}

std::optional<std::int64_t> second_of(const MomentNumbers& moment) {
  if (moment.hour > 23 || moment.minute > 59 || moment.second > 59) return std::nullopt;
  return (moment.hour * 60 + moment.minute) * 60 + moment.second;
}

// How moments of a kind of layout are written: what stands between digits, or nothing.
struct Separators {
  std::string_view date;
  std::string_view time;
};

Separators separators_of(LayoutKind layout_kind) {
  if (layout_kind == layout_kind::record_file) return {"", ""};
  return {layout_kind == layout_kind::iso ? "-" : "/", ":"};
}

void append_digits(unsigned number, std::size_t count, std::string& out) {
  const std::size_t begin = out.size();
  out.resize(begin + count);
  for (std::size_t i = begin + count; i > begin; number /= 10) {
    out[--i] = static_cast<char>('0' + number % 10);
  }
}

bool append_date(std::int64_t days, std::string_view separator, std::string& out) {
  if (days < first_day.time_since_epoch().count() || days > last_day.time_since_epoch().count()) {
    return false;
  }
  const Date date{std::chrono::sys_days{std::chrono::days{days}}};
  append_digits(static_cast<unsigned>(static_cast<int>(date.year())), 4, out);
  out += separator;
  append_digits(static_cast<unsigned>(date.month()), 2, out);
  out += separator;
  append_digits(static_cast<unsigned>(date.day()), 2, out);
  return true;
}

// After the last second of a day comes the first, as on a clock.
std::int64_t second_of_day(std::int64_t seconds) {
  return (seconds % seconds_a_day + seconds_a_day) % seconds_a_day;
}

void append_time(std::int64_t seconds, std::string_view separator, std::string& out) {
  const auto second = static_cast<unsigned>(second_of_day(seconds));
  append_digits(second / 3600, 2, out);
  out += separator;
  append_digits(second / 60 % 60, 2, out);
  out += separator;
  append_digits(second % 60, 2, out);
}

class MomentScale : public sources::Scale {
 public:
  MomentScale(MomentForm form, LayoutKind layout_kind)
      : form_(form), separators_(separators_of(layout_kind)) {}

  std::optional<std::int64_t> read(std::string_view text) const override {
    const auto moment = moment_numbers(form_, text);
    if (!moment) return std::nullopt;
    if (form_ == MomentForm::iso_date) return day_of(*moment);
    if (form_ == MomentForm::iso_time) return second_of(*moment);
    const auto day = day_of(*moment);
    const auto second = second_of(*moment);
    if (!day || !second) return std::nullopt;
    return *day * seconds_a_day + *second;
  }

  bool append(std::int64_t number, std::string& out) const override {
    if (form_ == MomentForm::iso_date) return append_date(number, separators_.date, out);
    if (form_ == MomentForm::iso_time) {
      append_time(number, separators_.time, out);
      return true;
    }
    const std::int64_t second = second_of_day(number);
    if (!append_date((number - second) / seconds_a_day, separators_.date, out)) return false;
    out += ' ';
    append_time(second, separators_.time, out);
    return true;
  }

 private:
  MomentForm form_;
  Separators separators_;
};

}  // namespace

std::unique_ptr<sources::Scale> moment_scale(MomentForm form, LayoutKind layout_kind) {
  return std::make_unique<MomentScale>(form, layout_kind);
}

}  // namespace korvex::host
