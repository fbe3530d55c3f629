#include "generate/date_generator.h"

#include <algorithm>
#include <cstdlib>

#include "format/record_text.h"
#include "generate/calendar.h"

namespace korvex {

namespace {

constexpr int longest_month = 31;
constexpr int months_in_year = 12;

}  // namespace

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
    move_place(static_cast<int>(taken * change_));
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
  return layout_.has_time() ? fields_.minute * static_cast<int>(seconds_per_minute) + fields_.second
                            : fields_.day;
}

// Within what a run turns, which carries no further.
void MomentGenerator::move_place(int distance) {
  const int moved = place() + distance;
  if (!layout_.has_time()) {
    fields_.day = moved;
    return;
  }
  fields_.minute = moved / static_cast<int>(seconds_per_minute);
  fields_.second = moved % static_cast<int>(seconds_per_minute);
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
  if (watches_others_ || (change_ > 0) != counts_up()) return;
  const RunLimits limits = run_limits();
  const int value = place();
  if (is_off() || key_ < 0 || change_ == 0 || value < limits.first || value > limits.last) return;
  const std::int64_t in_field =
      change_ > 0 ? (limits.last - value) / change_ : (limits.first - value) / change_;
  const std::int64_t to_end =
      is_lead_ ? range_.distance_to_end(key_, counts_up(), counts_down()) : MomentRange::no_end;
  begin_run(layout_.wheel(), value, change_, std::min(in_field, to_end / std::abs(change_)));
}

bool DateGenerator::change_fields() {
  const std::int64_t day = fields_.day + change();
  const bool at_last = counts_up() && fields_.year == 2038 && fields_.month == 1;
  const bool at_first = !counts_up() && fields_.year == 1970 && fields_.month == 1;
  if (at_first && day <= 0) return overflow();
  if (at_last && day > 19) return step_past_last(day);
  return set_date(day_number(fields_) + change(), fields_) || overflow();
}

MomentGenerator::RunLimits DateGenerator::run_limits() const {
  const bool inside_calendar = fields_.year >= 1970 && fields_.year < 2038 && fields_.month >= 1 &&
                               fields_.month <= months_in_year;
  return inside_calendar ? RunLimits{1, days_in_month(fields_.year, fields_.month)} : RunLimits{};
}

// Behind 2038-01-19 the calendar ends. A two-digit end year of the last century counts as text, so
// that no later day is behind it: the date then stays where it is.
bool DateGenerator::step_past_last(std::int64_t day) {
  MomentFields next = fields_;
  next.day = static_cast<int>(day);
  return !range_.text_is_behind_end(next) || overflow();
}

MomentGenerator::RunLimits UncheckedDateGenerator::run_limits() const { return {1, longest_month}; }

// A longer step runs away from the one month that is carried.
bool UncheckedDateGenerator::stays_in_places() const { return std::abs(change()) <= longest_month; }

bool UncheckedDateGenerator::change_fields() {
  // The step is a 16-bit number here.
  int day = fields_.day + static_cast<std::int16_t>(change());
  int month = fields_.month;
  int year = fields_.year;
  if (counts_up() && day > longest_month) {
    day -= longest_month;
    if (++month > months_in_year) {
      month = 1;
      if (++year > settings_.end.year) year = settings_.start.year;
    }
  } else if (!counts_up() && day < 1) {
    day += longest_month;
    if (--month < 1) {
      month = months_in_year;
      if (--year < settings_.end.year) year = settings_.start.year;
    }
  }
  fields_.day = static_cast<std::uint16_t>(day);
  fields_.month = static_cast<std::uint16_t>(month);
  fields_.year = static_cast<std::uint16_t>(year);
  return true;
}

}  // namespace korvex
