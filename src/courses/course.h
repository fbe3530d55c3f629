#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "courses/steps.h"
#include "courses/wheel.h"
#include "values/records.h"

namespace korvex {

// What the elements of one item share.
struct ElementContext {
  LayoutKind layout_kind{};
  ElementNumber lead_element = ElementNumber::none;
  std::int32_t item_digits = 0;
  std::int32_t item_decimals = 0;
  FmtValRec increment = {};

  bool counts_up() const { return increment.sign == Sign::plus; }
  bool counts_down() const { return increment.sign == Sign::minus; }

  // The lead decides when the item's cycle is over. Fixed text never leads.
  bool leads(const FmtItemRec& element) const {
    return element.kind != format_kind::fixed && element.sequence == lead_element;
  }
};

// What is known of a course without making its texts. All counts begin at the start value.
struct CourseFacts {
  // The number of texts after which it ends its item's cycle: the lead at its end value, any number
  // where it leaves its 18 digits.
  Steps end = endless;
  // The elements after it are missing in the last record of such a cycle.
  bool cuts = false;
  // The number of texts after which it starts again, while its item continues.
  Steps restart = endless;
  // It does so because the calendar ended, which also ends the cycle of a date or timestamp that
  // comes later in the item and leads it.
  bool overflows = false;
  // The number of texts after which they are repeated.
  Steps period = endless;
  // How many texts from the first on are all different.
  Steps different = endless;
  // How many different texts there are before the end, or in a period.
  Steps distinct = endless;
  // The number of texts after which an element that does not lead passes its end value.
  Steps past_end = endless;
  // Bytes of each text.
  std::size_t size = 0;
};

// Steps that change only the end of the text, by a wheel; without a wheel they change nothing.
struct WheelRun {
  Wheel wheel;
  std::int64_t place = 0;   // on the wheel, of the text that the run begins with
  std::int64_t change = 0;  // places a step
  Steps steps = 0;
};

// The texts of one format element from its start value on, by formulas: every result depends on the
// number of steps alone, so no text needs those before it. Immutable; several threads may use one
// course.
//
// Only steps before `end` and before `restart` are asked for; the item handles the others.
class Course {
 public:
  virtual ~Course() = default;

  const CourseFacts& facts() const { return facts_; }

  // Writes the text of a step, facts().size bytes, where there is room for max_text_size: what
  // is after the text may be written over.
  virtual void write(Steps step, char* out) const = 0;

  // The run that begins at a step, as far as the wheel goes. It may reach beyond `end` and
  // `restart`.
  virtual WheelRun run(Steps step) const = 0;

  static constexpr std::size_t max_text_size = 2 * element_text_size;

 protected:
  CourseFacts facts_;
};

// How often a course can step on a line before it has gone further than `distance`, its first text
// included: at least once.
inline Steps texts_within(std::int64_t distance, std::int64_t step) {
  return distance < 0 ? 1 : static_cast<Steps>(distance / step) + 1;
}

// A run on a wheel, as far as it goes from its place.
inline WheelRun run_on(const Wheel& wheel, std::int64_t place, std::int64_t change) {
  const std::int64_t places = change > 0 ? wheel.count - 1 - place : place;
  return {wheel, place, change, static_cast<Steps>(places / (change > 0 ? change : -change))};
}

}  // namespace korvex
