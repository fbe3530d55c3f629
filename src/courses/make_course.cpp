#include "courses/make_course.h"

#include "values/record_text.h"

namespace korvex {

namespace {

// Fixed text of a format.
class FixedCourse : public Course {
 public:
  explicit FixedCourse(std::string_view text) : text_(text) {
    facts_.period = facts_.different = facts_.distinct = 1;
    facts_.size = text.size();
  }

  void write(Steps, char* out) const override { text_.copy(out, text_.size()); }
  WheelRun run(Steps) const override { return {{}, 0, 0, endless}; }

 private:
  const std::string text_;
};

bool same_value(const FmtValRec& left, const FmtValRec& right) {
  return left.sign == right.sign && left.position == right.position && left.low == right.low &&
         left.high == right.high && field_text(left.low_text) == field_text(right.low_text) &&
         left.year == right.year && left.month == right.month && left.day == right.day &&
         left.hour == right.hour && left.minute == right.minute && left.second == right.second;
}

}  // namespace

std::unique_ptr<const Course> make_course(const ElementContext& context,
                                          const ClFmtItemInf& element) {
  const FmtItemRec& settings = element.record;
  const std::string first_text = element.first_text();
  if (first_text.empty()) return nullptr;
  if (settings.kind == format_kind::fixed) return std::make_unique<FixedCourse>(first_text);
  // The first cycle must be like all others.
  if (!(context.counts_up() || context.counts_down()) ||
      !same_value(settings.current, settings.start) ||
      field_text(settings.start_text) != first_text) {
    return nullptr;
  }
  switch (settings.kind) {
    case format_kind::signed_number:
    case format_kind::signed_number_simple:
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return make_number_course(context, settings);
    case format_kind::upper_letters:
    case format_kind::lower_letters:
    case format_kind::national_character:
      return make_character_course(context, settings, first_text);
    case format_kind::date:
    case format_kind::date_unchecked:
    case format_kind::time:
    case format_kind::timestamp:
      return make_moment_course(context, settings);
    default:
      return nullptr;
  }
}

}  // namespace korvex
