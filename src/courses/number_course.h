#pragma once

#include <memory>

#include "courses/course.h"

namespace korvex {

// Numbers: one signed line, from the start value by the increment. Null as make_course() says.
std::unique_ptr<const Course> make_number_course(const ElementContext& context,
                                                 const FmtItemRec& settings);

}  // namespace korvex
