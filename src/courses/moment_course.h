#pragma once

#include <memory>

#include "courses/course.h"

namespace korvex {

// Dates, times and timestamps: days or seconds on a line between the calendar's two ends, or on a
// circle. Null as make_course() says.
std::unique_ptr<const Course> make_moment_course(const ElementContext& context,
                                                 const FmtItemRec& settings);

}  // namespace korvex
