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
  std::int32_t lead_element = 0;
  std::int32_t item_digits = 0;
  std::int32_t item_decimals = 0;
  FmtValRec increment = {};

  bool counts_up() const { return increment.sign == sign_plus; }
  bool counts_down() const { return increment.sign == sign_minus; }

  // The lead decides when the item's cycle is over. Fixed text never leads.
  bool leads(const FmtItemRec& element) const {
    return element.kind != format_kind::fixed && element.sequence == lead_element;
  }
};

// What is known of a course without walking it. All counts begin at the start value.
struct CourseFacts {
  // After so many texts it ends its item's cycle: the lead at its end value, any number where it
  // leaves its 18 digits.
  Steps end = endless;
  // The elements after it are missing in the last record of such a cycle.
  bool cuts = false;
  // After so many texts it starts again by itself, while its item goes on.
  Steps restart = endless;
  // It does so because the calendar ended, which also ends the cycle of a date or timestamp that
  // comes later in the item and leads it.
  bool overflows = false;
  // The texts come back after so many, over and over.
  Steps period = endless;
  // So many texts from the first on are all different.
  Steps different = endless;
  // How many different texts there are before the end, or in a period.
  Steps distinct = endless;
  // An element that does not lead goes on beyond its end value after so many texts.
  Steps past_end = endless;
  // Bytes of each text.
  std::size_t size = 0;
};

// Steps that change nothing but the end of the text, which a wheel turns; nothing at all without a
// wheel.
struct WheelRun {
  Wheel wheel;
  std::int64_t place = 0;   // on the wheel, of the text that the run begins with
  std::int64_t change = 0;  // places a step
  Steps steps = 0;
};

// How one format element goes from its start value on, in closed form: every question is answered
// from the number of steps alone, so that any text can be had without those before it. Immutable;
// one course may be asked by several threads.
//
// Steps that are asked for lie before `end` and, for a course that starts again by itself, before
// `restart`; the others are the item's business.
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
