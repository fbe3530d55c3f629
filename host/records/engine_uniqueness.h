#pragma once

#include <vector>

#include "host/sources/text_facts.h"
#include "run/field_facts.h"

namespace korvex::host {

using sources::Uniqueness;

// The repeated fields of a run in ascending level order.
std::vector<const FieldFacts*> repeated_fields(const std::vector<FieldFacts>& all);

// `all`: every field of the run, in the set or not.
Uniqueness uniqueness_of(const std::vector<const FieldFacts*>& set,
                         const std::vector<FieldFacts>& all);

}  // namespace korvex::host
