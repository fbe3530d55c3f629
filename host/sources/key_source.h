#pragma once

#include <cstdint>
#include <memory>

#include "host/sources/field.h"

namespace korvex::sources {

// The values of a field in the records of another table, or in those of its own: computed again,
// not looked up. The field must outlive the source, and may be none that others ask for the records
// of their own: it keeps the one that was asked for last.
std::unique_ptr<Source> make_key_source(Field& field, std::uint64_t records);

}  // namespace korvex::sources
