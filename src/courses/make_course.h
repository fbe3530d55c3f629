#pragma once

#include <memory>

#include "courses/course.h"
#include "settings/col_inf.h"

namespace korvex {

// The course of a format element. Null for settings that the checks of this module would not have
// made, and whose texts only a LiteralElement can tell, step by step.
std::unique_ptr<const Course> make_course(const ElementContext& context,
                                          const ClFmtItemInf& element);

}  // namespace korvex
