#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "courses/item_course.h"
#include "formatlang/default_settings.h"
#include "values/attributes.h"

namespace korvex::host {

// How an item that is yet to be drafted will go through its range: what the library says of the
// values, so that nobody here counts them again.
class RangeCourse {
 public:
  // Nothing for a range that the library refuses, as it does one of a single value.
  static std::optional<RangeCourse> of(const ItemAttributes& item, const RangeTexts& texts);

  // How many different values it has.
  std::uint64_t values() const { return values_; }

  // The value after so many steps.
  std::string text(std::uint64_t step) const;

 private:
  RangeCourse(ItemCourse course, std::uint64_t values)
      : course_(std::move(course)), values_(values) {}

  ItemCourse course_;
  std::uint64_t values_;
};

}  // namespace korvex::host
