#pragma once

#include <memory>
#include <string_view>

#include "courses/course.h"

namespace korvex {

// Letters and full-width characters: the whole text is a number whose digits are characters. One
// that does not lead starts again by itself when it passes its own end. Null as make_course() says.
std::unique_ptr<const Course> make_character_course(const ElementContext& context,
                                                    const FmtItemRec& settings,
                                                    std::string_view first_text);

}  // namespace korvex
