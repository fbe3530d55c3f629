#pragma once

#include <cstdint>
#include <span>

#include "host/sources/field.h"

namespace korvex::sources {

// There are no more different combinations of the fields' values; having none counts as one.
std::uint64_t most_combinations(std::span<const Field* const> fields);

// Of so many records, if not more, all differ in the fields, leaving aside those that have no value
// in one of them.
std::uint64_t different_values(std::span<const Field* const> fields);

// For how long records differ in a set of fields, of so many records in all. Without making one.
// Never too optimistic: where it is unknown, the two numbers differ.
Uniqueness uniqueness_of(std::span<const Field* const> fields, std::uint64_t records);

}  // namespace korvex::sources
