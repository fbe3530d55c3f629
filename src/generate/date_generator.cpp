#include "generate/date_generator.h"

#include "format/record_text.h"
#include "generate/calendar.h"

namespace korvex {

MomentGenerator::MomentGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : ElementGenerator(context, element),
      fields_(fields_of(element.record.current)),
      layout_(element.record.kind, element.record.width, context.layout_kind),
      range_(layout_, element.record),
      step_size_(context.increment.low) {}

StepOutcome MomentGenerator::produce(RecordLine& line, ItemPass& pass) {
  length_ = layout_.write_display(fields_, text_);
  line.append_block(text_, length_);
  if (!step()) pass.date_overflow = true;
  if (!is_lead_) return StepOutcome::going;
  if (heeds_overflow() && pass.date_overflow) return StepOutcome::cut;
  const bool passed =
      restarted_ ? range_.passed(field_text(settings_.start_text), counts_up(), counts_down())
                 : range_.passed(fields_, counts_up(), counts_down());
  restarted_ = false;
  return passed ? StepOutcome::ended : StepOutcome::going;
}

void MomentGenerator::restart() {
  set_text(field_text(settings_.start_text));
  fields_ = fields_of(settings_.start);
  restarted_ = false;
}

bool MomentGenerator::overflow() {
  restart();
  restarted_ = true;
  return false;
}

bool DateGenerator::step() {
  const std::int64_t days = step_size();
  if (counts_up()) {
    if (fields_.year == 2038 && fields_.month == 1 && fields_.day + days > 19) {
      return step_past_boundary(fields_.day + days);
    }
  } else if (fields_.year == 1970 && fields_.month == 1 && fields_.day - days <= 0) {
    return step_past_boundary(fields_.day - days);
  }
  const std::int64_t change = counts_up() ? days : -days;
  const std::int64_t day = fields_.day + change;
  // Within a month nothing but the day moves.
  if (day >= 1 && day <= 28 && fields_.month >= 1 && fields_.month <= 12 && fields_.year >= 1970 &&
      fields_.year < 2038) {
    fields_.day = static_cast<int>(day);
    return true;
  }
  return set_date(day_number(fields_) + change, fields_) || overflow();
}

// The calendar's ends: 2038-01-19 and 1970-01-01. A next day beyond them restarts the element,
// except for an end value that no check lets pass.
bool DateGenerator::step_past_boundary(std::int64_t day) {
  MomentFields next = fields_;
  next.day = static_cast<int>(day);
  if (range_.beyond_end(next, counts_up())) return overflow();
  fields_ = next;
  return true;
}

bool UncheckedDateGenerator::step() {
  const int days = static_cast<std::int16_t>(step_size());
  int day = fields_.day;
  int month = fields_.month;
  int year = fields_.year;
  if (counts_up()) {
    day += days;
    if (day > 31) {
      day -= 31;
      if (++month > 12) {
        month = 1;
        if (++year > settings_.end.year) year = settings_.start.year;
      }
    }
  } else {
    day -= days;
    if (day < 1) {
      day += 31;
      if (--month < 1) {
        month = 12;
        if (--year < settings_.end.year) year = settings_.start.year;
      }
    }
  }
  fields_.day = static_cast<std::uint16_t>(day);
  fields_.month = static_cast<std::uint16_t>(month);
  fields_.year = static_cast<std::uint16_t>(year);
  return true;
}

}  // namespace korvex
