#pragma once

#include <optional>

#include "host/records/element_sequence.h"

namespace korvex::host {

// The sequence of a number element.
std::optional<ElementSequence> number_sequence(const SequenceContext& context,
                                               const FmtItemRec& settings, bool is_lead);

}  // namespace korvex::host
