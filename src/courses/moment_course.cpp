#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "courses/calendar.h"
#include "courses/make_course.h"
#include "courses/moment_text.h"
#include "courses/wheel.h"
#include "values/record_text.h"

namespace korvex {

namespace {

// The largest step that the checks let through; larger ones carry in ways of their own.
constexpr std::int64_t largest_step = 9;

constexpr std::int64_t seconds_per_hour = 3600;
constexpr std::int64_t days_in_long_year = months_per_year * longest_month;

// What all moments share: the start, the step, and how their fields are shown.
struct MomentPlan {
  const FmtItemRec& settings;
  MomentLayout layout;
  bool leads = false;
  bool up = false;
  std::int64_t change = 0;
  MomentFields start = {};
  MomentFields end = {};
  std::int64_t start_key = 0;
  std::int64_t end_key = 0;

  std::int64_t step() const { return std::abs(change); }
};

class MomentCourse : public Course {
 public:
  void write(Steps step, char* out) const final { layout_.write_display(fields_at(step), out); }

 protected:
  explicit MomentCourse(const MomentPlan& plan) : layout_(plan.layout), change_(plan.change) {
    char shown[MomentLayout::max_size];
    facts_.size = layout_.write_display(plan.start, shown);
  }

  virtual MomentFields fields_at(Steps step) const = 0;

  // Values on a line between the ends of the calendar: `values` until the end value is passed,
  // `until_overflow` until the calendar ends.
  void tell_line(const MomentPlan& plan, Steps values, Steps until_overflow) {
    if (plan.leads) {
      facts_.end = std::min(values, until_overflow);
      facts_.cuts = values >= until_overflow;
      facts_.different = facts_.distinct = facts_.end;
    } else {
      facts_.restart = facts_.period = until_overflow;
      facts_.overflows = true;
      facts_.different = facts_.distinct = until_overflow;
      facts_.past_end = values;
    }
  }

  // Values on a circle of `size` places, `allowed` of which, from the start on, do not pass the
  // end. A step may jump over the rest, and the end is missed then.
  void tell_circle(const MomentPlan& plan, std::int64_t size, std::int64_t allowed) {
    const std::int64_t step = plan.step();
    Steps values = 0;
    bool is_missed = false;
    for (std::int64_t place = 0; place < allowed;) {
      const std::int64_t met = (allowed - place + step - 1) / step;
      values += static_cast<Steps>(met);
      place += met * step;
      if (place < size) break;
      place -= size;
      is_missed = place == 0;
      if (is_missed) break;
    }
    const auto round = static_cast<Steps>(size / std::gcd(size, step));
    if (plan.leads && !is_missed) {
      facts_.end = facts_.different = facts_.distinct = values;
    } else {
      facts_.period = facts_.different = facts_.distinct = round;
      if (!is_missed) facts_.past_end = values;
    }
  }

  const MomentLayout layout_;
  const std::int64_t change_;
};

// Days on the calendar.
class DateCourse : public MomentCourse {
 public:
  explicit DateCourse(const MomentPlan& plan)
      : MomentCourse(plan), first_(day_number(plan.start)), first_fields_(plan.start) {
    const std::int64_t end = day_number(plan.end);
    const std::int64_t to_end = plan.up ? end - first_ : first_ - end;
    const std::int64_t to_overflow = plan.up ? day_number(last_moment) - first_ : first_;
    const Steps until_overflow = texts_within(to_overflow, plan.step());
    tell_line(plan, texts_within(to_end, plan.step()), until_overflow);
    if (plan.leads || !plan.up || text_stops_at_last(plan, until_overflow)) return;
    last_step_ = until_overflow - 1;
    facts_.restart = facts_.period = endless;
    facts_.overflows = false;
  }

  WheelRun run(Steps step) const override {
    if (step >= last_step_) return {{}, 0, 0, endless};
    const MomentFields fields = fields_at(step);
    return run_on(calendar_wheel(is_leap_year(fields.year), layout_.date_separator()),
                  day_of_year(fields.year, fields.month, fields.day), change_);
  }

 private:
  MomentFields fields_at(Steps step) const override {
    MomentFields fields = first_fields_;
    const auto steps = static_cast<std::int64_t>(std::min(step, last_step_));
    set_date(first_ + steps * change_, fields);
    return fields;
  }

  // Beyond the calendar's last day the texts decide: a two-digit end year of the last century is
  // greater than any text of 2038, and the date stays where it is.
  bool text_stops_at_last(const MomentPlan& plan, Steps until_overflow) const {
    MomentFields next = fields_at(until_overflow - 1);
    next.day += static_cast<int>(plan.change);
    return layout_.plain_text(next) > field_text(plan.settings.end_text);
  }

  const std::int64_t first_;
  const MomentFields first_fields_;
  Steps last_step_ = endless;  // from here on the date stays
};

// Days without a calendar: every month has 31. The years go round from the end's to the start's,
// or, where the end's is not ahead, the start's comes back.
class UncheckedDateCourse : public MomentCourse {
 public:
  explicit UncheckedDateCourse(const MomentPlan& plan)
      : MomentCourse(plan), first_year_(plan.start.year) {
    const int years_ahead =
        plan.up ? plan.end.year - plan.start.year : plan.start.year - plan.end.year;
    size_ = (std::max(years_ahead, 0) + 1) * days_in_long_year;
    if (!plan.up) first_year_ -= std::max(years_ahead, 0);
    start_ = place_of(plan.start);
    // Past the round's last day comes its first, which lies beyond the start value.
    std::int64_t allowed = plan.up ? size_ - start_ : start_ + 1;
    if (years_ahead >= 0) {
      const std::int64_t end = place_of(plan.end);
      allowed = (plan.up ? end - start_ : start_ - end) + 1;
    }
    // Two-digit years that change their century on the way: no value lies between start and end.
    const bool is_torn = plan.up ? plan.end_key < plan.start_key : plan.end_key > plan.start_key;
    tell_circle(plan, size_, std::max<std::int64_t>(is_torn ? 1 : allowed, 1));
  }

  WheelRun run(Steps step) const override {
    return run_on(long_month_wheel(layout_.date_separator()), place_at(step) % days_in_long_year,
                  change_);
  }

  static bool has_places(const MomentFields& f) {
    return f.month >= 1 && f.month <= months_per_year && f.day >= 1 && f.day <= longest_month;
  }

 private:
  std::int64_t place_of(const MomentFields& f) const {
    return (f.year - first_year_) * days_in_long_year + (f.month - 1) * longest_month + f.day - 1;
  }

  std::int64_t place_at(Steps step) const {
    const auto size = static_cast<Steps>(size_);
    const std::int64_t place = (start_ + static_cast<std::int64_t>(step % size) * change_) % size_;
    return place < 0 ? place + size_ : place;
  }

  MomentFields fields_at(Steps step) const override {
    const std::int64_t place = place_at(step);
    const std::int64_t day = place % days_in_long_year;
    MomentFields fields;
    fields.year = first_year_ + static_cast<int>(place / days_in_long_year);
    fields.month = static_cast<int>(day / longest_month) + 1;
    fields.day = static_cast<int>(day % longest_month) + 1;
    return fields;
  }

  int first_year_;
  std::int64_t size_ = 0;
  std::int64_t start_ = 0;
};

// Seconds of a day, which wrap at midnight.
class TimeCourse : public MomentCourse {
 public:
  explicit TimeCourse(const MomentPlan& plan)
      : MomentCourse(plan), start_(second_of_day(plan.start)) {
    const std::int64_t end = second_of_day(plan.end);
    tell_circle(plan, seconds_per_day, (plan.up ? end - start_ : start_ - end) + 1);
  }

  WheelRun run(Steps step) const override {
    return run_on(clock_wheel(layout_.time_separator()), second_at(step) % seconds_per_hour,
                  change_);
  }

 private:
  std::int64_t second_at(Steps step) const {
    const auto steps = static_cast<std::int64_t>(step % static_cast<Steps>(seconds_per_day));
    const std::int64_t second = (start_ + steps * change_) % seconds_per_day;
    return second < 0 ? second + seconds_per_day : second;
  }

  MomentFields fields_at(Steps step) const override {
    MomentFields fields;
    set_time(second_at(step), fields);
    return fields;
  }

  const std::int64_t start_;
};

bool is_on_calendar(const MomentFields& fields) {
  MomentFields same = fields;
  return set_date(day_number(fields), same) && same.year == fields.year &&
         same.month == fields.month && same.day == fields.day;
}

// Seconds on the calendar. A start on a day that its month lacks is shown as it stands, and counted
// as a day of the next month.
class TimestampCourse : public MomentCourse {
 public:
  explicit TimestampCourse(const MomentPlan& plan)
      : MomentCourse(plan),
        first_fields_(plan.start),
        starts_on_calendar_(is_on_calendar(plan.start)),
        first_(second_number(plan.start)) {
    const std::int64_t end = end_second(plan);
    Steps values = texts_within(plan.up ? end - first_ : first_ - end, plan.step());
    if (!plan.up && !starts_on_calendar_) {
      // It may step down to a moment that still reads later.
      MomentFields next = plan.start;
      if (set_moment(first_ + plan.change, next) && layout_.order_key(next) > plan.start_key) {
        values = 1;
      }
    }
    const std::int64_t to_overflow =
        plan.up ? second_number(last_moment) - first_ : first_ - second_number(first_moment);
    tell_line(plan, values, texts_within(to_overflow, plan.step()));
  }

  WheelRun run(Steps step) const override {
    if (step == 0 && !starts_on_calendar_) return {};
    return run_on(clock_wheel(layout_.time_separator()), second_at(step) % seconds_per_hour,
                  change_);
  }

 private:
  // A day that its month lacks lies between the month and the next.
  static std::int64_t end_second(const MomentPlan& plan) {
    if (is_on_calendar(plan.end)) return second_number(plan.end);
    const MomentFields next_month = {plan.end.year, plan.end.month + 1, 1, 0, 0, 0};
    return second_number(next_month) - (plan.up ? 1 : 0);
  }

  std::int64_t second_at(Steps step) const {
    return first_ + static_cast<std::int64_t>(step) * change_;
  }

  MomentFields fields_at(Steps step) const override {
    MomentFields fields = first_fields_;
    if (step > 0) set_moment(second_at(step), fields);
    return fields;
  }

  const MomentFields first_fields_;
  const bool starts_on_calendar_;
  const std::int64_t first_;
};

}  // namespace

std::unique_ptr<const Course> make_moment_course(const ElementContext& context,
                                                 const FmtItemRec& settings) {
  MomentPlan plan = {settings, {settings.kind, settings.width, context.layout_kind}};
  const std::int64_t step = context.increment.low;
  plan.leads = context.leads(settings);
  plan.up = context.counts_up();
  plan.change = plan.up ? step : -step;
  plan.start = fields_of(settings.start);
  plan.end = fields_of(settings.end);
  plan.start_key = plan.layout.order_key(field_text(settings.start_text));
  plan.end_key = plan.layout.order_key(field_text(settings.end_text));
  if (step < 1 || step > largest_step || plan.start_key < 0 || plan.end_key < 0 ||
      plan.start_key != plan.layout.order_key(plan.start) ||
      plan.end_key != plan.layout.order_key(plan.end)) {
    return nullptr;
  }
  switch (settings.kind) {
    case format_kind::date:
      if (!is_on_calendar(plan.start) || !is_on_calendar(plan.end)) return nullptr;
      return std::make_unique<DateCourse>(plan);
    case format_kind::date_unchecked:
      if (!UncheckedDateCourse::has_places(plan.start) ||
          !UncheckedDateCourse::has_places(plan.end)) {
        return nullptr;
      }
      return std::make_unique<UncheckedDateCourse>(plan);
    case format_kind::time: {
      const std::int64_t start = second_of_day(plan.start);
      const std::int64_t end = second_of_day(plan.end);
      const bool is_in_order = plan.up ? start <= end : end <= start;
      if (plan.layout.compares_with_century() || !is_in_order || start >= seconds_per_day ||
          end >= seconds_per_day) {
        return nullptr;
      }
      return std::make_unique<TimeCourse>(plan);
    }
    default: {
      MomentFields second;
      const bool starts_inside = set_moment(second_number(plan.start), second);
      // Beyond the calendar's end the seconds count on where no end value stops them.
      const MomentFields beyond = {2038, 1, 19, 3, 14, 8};
      const bool text_stops = plan.layout.plain_text(beyond) > field_text(settings.end_text);
      if (!starts_inside || !text_stops) return nullptr;
      return std::make_unique<TimestampCourse>(plan);
    }
  }
}

}  // namespace korvex
