#include "host/records/moment_scale.h"

#include <chrono>
#include <cstdio>
#include <string>

namespace korvex::host {

namespace {

using Date = std::chrono::year_month_day;

constexpr std::int64_t seconds_a_day = 24 * 60 * 60;
constexpr std::size_t date_size = 10;
constexpr std::size_t time_size = 8;

const std::chrono::sys_days first_day =
    Date(std::chrono::year(1), std::chrono::January, std::chrono::day(1));
const std::chrono::sys_days last_day =
    Date(std::chrono::year(9999), std::chrono::December, std::chrono::day(31));

// Digits in a text that has them there.
int number_at(std::string_view text, std::size_t place, std::size_t count) {
  int number = 0;
  for (const char digit : text.substr(place, count)) number = number * 10 + (digit - '0');
  return number;
}

std::optional<std::int64_t> read_date(std::string_view text) {
  const Date date(std::chrono::year(number_at(text, 0, 4)),
                  std::chrono::month(static_cast<unsigned>(number_at(text, 5, 2))),
                  std::chrono::day(static_cast<unsigned>(number_at(text, 8, 2))));
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}

std::optional<std::int64_t> read_time(std::string_view text) {
  const int hour = number_at(text, 0, 2);
  const int minute = number_at(text, 3, 2);
  const int second = number_at(text, 6, 2);
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return (hour * 60 + minute) * 60 + second;
}

bool append_date(std::int64_t days, std::string& out) {
  if (days < first_day.time_since_epoch().count() || days > last_day.time_since_epoch().count()) {
    return false;
  }
  const Date date{std::chrono::sys_days{std::chrono::days{days}}};
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  out += text;
  return true;
}

bool append_time(std::int64_t seconds, std::string& out) {
  if (seconds < 0 || seconds >= seconds_a_day) return false;
  const int second = static_cast<int>(seconds);
  char text[48];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
  out += text;
  return true;
}

class MomentScale : public sources::Scale {
 public:
  explicit MomentScale(MomentForm form) : form_(form) {}

  std::optional<std::int64_t> read(std::string_view text) const override {
    MomentText converter;
    const std::string_view moment = converter.convert(form_, text);
    // What is no moment comes back as it is.
    if (moment.data() == text.data()) return std::nullopt;
    if (form_ == MomentForm::iso_date) return read_date(moment);
    if (form_ == MomentForm::iso_time) return read_time(moment);
    const auto day = read_date(moment.substr(0, date_size));
    const auto second = read_time(moment.substr(date_size + 1, time_size));
    if (!day || !second) return std::nullopt;
    return *day * seconds_a_day + *second;
  }

  bool append(std::int64_t number, std::string& out) const override {
    if (form_ == MomentForm::iso_date) return append_date(number, out);
    if (form_ == MomentForm::iso_time) return append_time(number, out);
    const std::int64_t second = (number % seconds_a_day + seconds_a_day) % seconds_a_day;
    if (!append_date((number - second) / seconds_a_day, out)) return false;
    out += ' ';
    return append_time(second, out);
  }

 private:
  MomentForm form_;
};

}  // namespace

std::unique_ptr<sources::Scale> moment_scale(MomentForm form) {
  return std::make_unique<MomentScale>(form);
}

}  // namespace korvex::host
