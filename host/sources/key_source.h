#pragma once

#include <cstdint>
#include <memory>

#include "host/sources/field.h"

namespace korvex::sources {

// The values of a field in the records of another table, or in those of its own: computed again,
// not looked up. The field is best one of its own: it keeps the record that was asked for last.
std::unique_ptr<Source> make_key_source(std::shared_ptr<Field> field, std::uint64_t records);

}  // namespace korvex::sources
