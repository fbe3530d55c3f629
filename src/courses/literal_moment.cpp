#include <string>

#include "courses/calendar.h"
#include "courses/literal_element.h"
#include "courses/moment_text.h"
#include "courses/wheel.h"
#include "values/number_text.h"
#include "values/record_text.h"

namespace korvex {

namespace {

class LiteralMoment : public LiteralElement {
 public:
  LiteralMoment(const ElementContext& context, const ClFmtItemInf& element)
      : LiteralElement(context, element),
        fields_(fields_of(element.record.current)),
        change_(counts_up() ? std::int64_t{context.increment.low}
                            : -std::int64_t{context.increment.low}),
        layout_(element.record.kind, element.record.width, context.layout_kind),
        start_(comparable(field_text(settings_.start_text))),
        end_(comparable(field_text(settings_.end_text))) {
    if (!is_off()) show();
  }

  void restart() override {
    fields_ = fields_of(settings_.start);
    if (field_text(settings_.start_text).empty()) {
      switch_off();
    } else {
      show();
    }
  }

  StepOutcome advance(ItemPass& pass) override {
    if (change_fields()) {
      show();
    } else {
      restart();
      pass.date_overflow = true;
    }
    if (!is_lead_) return StepOutcome::going;
    const bool minds_overflow =
        settings_.kind == format_kind::date || settings_.kind == format_kind::timestamp;
    if (minds_overflow && pass.date_overflow) return StepOutcome::cut;
    return passed_end() ? StepOutcome::ended : StepOutcome::going;
  }

 protected:
  // Takes the next value into fields_. False when the calendar ends: the element then starts
  // again.
  virtual bool change_fields() = 0;

  // Whether the plain text of the fields is greater than the end value's, as both stand: a short
  // year gets no century here.
  bool text_is_beyond_end() const {
    return layout_.plain_text(fields_) > field_text(settings_.end_text);
  }

  MomentFields fields_;
  const std::int64_t change_;  // in days or seconds

 private:
  void show() { length_ = layout_.write_display(fields_, text_); }

  std::string comparable(std::string_view plain) const {
    if (!layout_.compares_with_century()) return std::string(plain);
    const std::int64_t year = decimal_prefix(plain.substr(0, 2));
    const char* century = "";
    if (year >= 70 && year <= 99) century = "19";
    if (year >= 0 && year <= 38) century = "20";
    return century + std::string(plain);
  }

  bool passed_end() const {
    const std::string text = comparable(layout_.plain_text(fields_));
    if (counts_up()) return text > end_ || text < start_;
    return counts_down() && (text < end_ || text > start_);
  }

  const MomentLayout layout_;
  const std::string start_;
  const std::string end_;
};

bool is_month(const MomentFields& f, const MomentFields& other) {
  return f.year == other.year && f.month == other.month;
}

bool is_minute(const MomentFields& f, const MomentFields& other) {
  return is_month(f, other) && f.day == other.day && f.hour == other.hour &&
         f.minute == other.minute;
}

// Days on the calendar.
class LiteralDate : public CopiedElement<LiteralDate, LiteralMoment> {
 public:
  using CopiedElement::CopiedElement;

 private:
  bool change_fields() override {
    const std::int64_t day = fields_.day + change_;
    if (!counts_up() && is_month(fields_, first_moment) && day <= 0) return false;
    if (counts_up() && is_month(fields_, last_moment) && day > last_moment.day) {
      // The calendar ends, unless the end value's text says otherwise: then the date stays.
      const MomentFields shown = fields_;
      fields_.day = static_cast<int>(day);
      const bool is_beyond = text_is_beyond_end();
      fields_ = shown;
      return !is_beyond;
    }
    return set_date(day_number(fields_) + change_, fields_);
  }
};

// Days without a calendar: every month has 31, and only one month is carried a step.
class LiteralUncheckedDate : public CopiedElement<LiteralUncheckedDate, LiteralMoment> {
 public:
  using CopiedElement::CopiedElement;

 private:
  bool change_fields() override {
    // The step is a 16-bit number here.
    int day = fields_.day + static_cast<std::int16_t>(change_);
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
};

// Seconds of a day, which wrap at midnight.
class LiteralTime : public CopiedElement<LiteralTime, LiteralMoment> {
 public:
  using CopiedElement::CopiedElement;

 private:
  bool change_fields() override {
    const std::int64_t second = (second_of_day(fields_) + change_) % seconds_per_day;
    set_time(second < 0 ? second + seconds_per_day : second, fields_);
    return true;
  }
};

// Seconds on the calendar.
class LiteralTimestamp : public CopiedElement<LiteralTimestamp, LiteralMoment> {
 public:
  using CopiedElement::CopiedElement;

 private:
  bool change_fields() override {
    const std::int64_t second = fields_.second + change_;
    if (!counts_up() && is_minute(fields_, first_moment) && second < 0) return false;
    if (counts_up() && is_minute(fields_, last_moment) && second > last_moment.second) {
      // The calendar ends, unless the end value's text says otherwise: then the seconds count on.
      fields_.second = static_cast<int>(second);
      return !text_is_beyond_end();
    }
    return set_moment(second_number(fields_) + change_, fields_);
  }
};

}  // namespace

std::unique_ptr<LiteralElement> make_literal_moment(const ElementContext& context,
                                                    const ClFmtItemInf& element) {
  switch (element.record.kind) {
    case format_kind::date:
      return std::make_unique<LiteralDate>(context, element);
    case format_kind::date_unchecked:
      return std::make_unique<LiteralUncheckedDate>(context, element);
    case format_kind::time:
      return std::make_unique<LiteralTime>(context, element);
    default:
      return std::make_unique<LiteralTimestamp>(context, element);
  }
}

}  // namespace korvex
