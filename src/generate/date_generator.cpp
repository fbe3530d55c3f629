#include "generate/date_generator.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "format/record_text.h"
#include "generate/calendar.h"
#include "generate/moment_wheels.h"

namespace korvex {

MomentGenerator::MomentGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : ElementGenerator(context, element),
      fields_(fields_of(element.record.current)),
      layout_(element.record.kind, element.record.width, context.layout_kind),
      range_(layout_, element.record),
      change_(counts_up() ? std::int64_t{context.increment.low}
                          : -std::int64_t{context.increment.low}),
      heeds_overflow_(element.record.kind == format_kind::date ||
                      element.record.kind == format_kind::timestamp),
      watches_others_(heeds_overflow_ && is_lead_ && context.follows_calendar) {
  // Runs begin behind the first step, when the whole object is there to be asked.
  if (!is_off()) show();
}

StepOutcome MomentGenerator::step(ItemPass& pass) {
  if (const std::int64_t taken = end_run(); taken > 0)
    set_place(place() + static_cast<int>(taken * change_));
  if (change_fields()) {
    show();
  } else {
    pass.date_overflow = true;
  }
  if (is_lead_) {
    if (heeds_overflow_ && pass.date_overflow) return StepOutcome::cut;
    if (range_.passed(key_, fields_, counts_up(), counts_down())) return StepOutcome::ended;
  }
  plan_run();
  return StepOutcome::going;
}

void MomentGenerator::restart() {
  end_run();
  fields_ = fields_of(settings_.start);
  if (field_text(settings_.start_text).empty()) {
    switch_off();
    return;
  }
  show();
  plan_run();
}

bool MomentGenerator::overflow() {
  restart();
  return false;
}

void MomentGenerator::show() {
  length_ = layout_.write_display(fields_, text_);
  key_ = layout_.order_key(fields_);
}

int MomentGenerator::place() const {
  return layout_.has_time() ? place_of(fields_.minute, fields_.second)
                            : place_of(fields_.month, fields_.day);
}

bool MomentGenerator::keeps_size() const {
  const auto fits = [this](const FmtValRec& value) {
    return layout_.order_key(fields_of(value)) >= 0;
  };
  return key_ >= 0 && fits(settings_.start) && fits(settings_.end) &&
         !field_text(settings_.start_text).empty() && stays_in_places();
}

void MomentGenerator::plan_run() {
  // A step against the counting direction, as no checked settings have it, is left to the texts.
  if (watches_others_ || change_ == 0 || (change_ > 0) != counts_up() || key_ < 0 || is_off())
    return;
  const Wheel* const turned = wheel();
  const int from = turned != nullptr ? place() : -1;
  if (from < 0) return;
  const std::int64_t on_wheel = (change_ > 0 ? turned->count - 1 - from : from) / std::abs(change_);
  begin_run(*turned, from, change_, is_lead_ ? std::min(on_wheel, steps_to_end(from)) : on_wheel);
}

// As far as the wheel goes.
std::int64_t MomentGenerator::steps_to_end(int from) const {
  const std::int64_t digits = range_.stop_digits(key_, counts_up(), counts_down());
  if (digits == MomentRange::nowhere) return std::numeric_limits<std::int64_t>::max();
  if (digits == MomentRange::at_once) return 0;
  const int end = place_of(static_cast<int>(digits / 100), static_cast<int>(digits % 100));
  return end < 0 ? 0 : (end - from) / change_;
}

bool DateGenerator::change_fields() {
  const std::int64_t day = fields_.day + change();
  const bool at_last = counts_up() && fields_.year == 2038 && fields_.month == 1;
  const bool at_first = !counts_up() && fields_.year == 1970 && fields_.month == 1;
  if (at_first && day <= 0) return overflow();
  if (at_last && day > 19) return step_past_last(day);
  return set_date(day_number(fields_) + change(), fields_) || overflow();
}

const Wheel* DateGenerator::wheel() const {
  if (fields_.year < first_calendar_year || fields_.year >= last_calendar_year) return nullptr;
  return &calendar_wheel(is_leap_year(fields_.year), layout_.date_separator());
}

int DateGenerator::place_of(int month, int day) const {
  return is_day(fields_.year, month, day) ? day_of_year(fields_.year, month, day) : -1;
}

void DateGenerator::set_place(int place) { set_day_of_year(place, fields_); }

// Behind 2038-01-19 the calendar ends. A two-digit end year of the last century counts as text, so
// that no later day is behind it: the date then stays where it is.
bool DateGenerator::step_past_last(std::int64_t day) {
  MomentFields next = fields_;
  next.day = static_cast<int>(day);
  return !range_.text_is_behind_end(next) || overflow();
}

const Wheel* UncheckedDateGenerator::wheel() const {
  return stays_in_places() ? &long_month_wheel(layout_.date_separator()) : nullptr;
}

int UncheckedDateGenerator::place_of(int month, int day) const {
  const bool is_regular =
      month >= 1 && month <= months_per_year && day >= 1 && day <= longest_month;
  return is_regular ? (month - 1) * longest_month + day - 1 : -1;
}

void UncheckedDateGenerator::set_place(int place) {
  fields_.month = place / longest_month + 1;
  fields_.day = place % longest_month + 1;
}

// A longer step runs away from the one month that is carried.
bool UncheckedDateGenerator::stays_in_places() const { return std::abs(change()) <= longest_month; }

bool UncheckedDateGenerator::change_fields() {
  // The step is a 16-bit number here.
  int day = fields_.day + static_cast<std::int16_t>(change());
  int month = fields_.month;
  int year = fields_.year;
  if (counts_up() && day > longest_month) {
    day -= longest_month;
    if (++month > months_per_year) {
      month = 1;
      if (++year > settings_.end.year) year = settings_.start.year;
    }
  } else if (!counts_up() && day < 1) {
    day += longest_month;
    if (--month < 1) {
      month = months_per_year;
      if (--year < settings_.end.year) year = settings_.start.year;
    }
  }
  fields_.day = static_cast<std::uint16_t>(day);
  fields_.month = static_cast<std::uint16_t>(month);
  fields_.year = static_cast<std::uint16_t>(year);
  return true;
}

}  // namespace korvex
