#pragma once

#include <memory>
#include <string_view>

#include "courses/course.h"
#include "settings/col_inf.h"

namespace korvex {

// The course of a format element. Null for settings that the checks of this module would not have
// made, and whose texts only a LiteralElement can tell, step by step.
std::unique_ptr<const Course> make_course(const ElementContext& context,
                                          const ClFmtItemInf& element);

// Numbers: one signed line, from the start value by the increment. Null as make_course() says.
std::unique_ptr<const Course> make_number_course(const ElementContext& context,
                                                 const FmtItemRec& settings);

// Dates, times and timestamps: days or seconds on a line between the calendar's two ends, or on a
// circle. Null as make_course() says.
std::unique_ptr<const Course> make_moment_course(const ElementContext& context,
                                                 const FmtItemRec& settings);

// Letters and full-width characters: the whole text is a number whose digits are characters. One
// that does not lead starts again by itself when it passes its own end. Null as make_course() says.
std::unique_ptr<const Course> make_character_course(const ElementContext& context,
                                                    const FmtItemRec& settings,
                                                    std::string_view first_text);

}  // namespace korvex
