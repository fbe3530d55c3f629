#pragma once

#include <memory>

#include "courses/literal_element.h"

namespace korvex {

// Dates, times and timestamps in their fields, which settings from outside may fill with anything;
// the end test compares plain texts.
std::unique_ptr<LiteralElement> make_literal_moment(const ElementContext& context,
                                                    const ClFmtItemInf& element);

}  // namespace korvex
