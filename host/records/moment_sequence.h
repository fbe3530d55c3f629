#pragma once

#include <optional>

#include "host/records/element_sequence.h"

namespace korvex::host {

// The sequence of a date, time or timestamp element.
std::optional<ElementSequence> moment_sequence(const SequenceContext& context,
                                               const FmtItemRec& settings, bool is_lead);

}  // namespace korvex::host
