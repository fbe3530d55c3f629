#pragma once

#include <cstdint>
#include <span>

#include "host/sources/field.h"

namespace korvex::sources {

// For how long records differ in a set of fields.
struct Uniqueness {
  // So many records from the first on are all different, for certain. At least 1.
  std::uint64_t different = 1;
  // No more records than these are all different, for certain; endless where nothing is known.
  std::uint64_t repeated = endless;
};

// Without making a record. Never too optimistic: where it can't be told, the two numbers differ.
Uniqueness uniqueness_of(std::span<const Field* const> fields);

}  // namespace korvex::sources
