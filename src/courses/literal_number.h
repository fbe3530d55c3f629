#pragma once

#include <memory>

#include "courses/literal_element.h"

namespace korvex {

// Numbers as a sign and a magnitude of two nine-digit halves, stepped by the increment's halves,
// which settings from outside may fill with anything.
std::unique_ptr<LiteralElement> make_literal_number(const ElementContext& context,
                                                    const ClFmtItemInf& element);

}  // namespace korvex
