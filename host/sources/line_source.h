#pragma once

#include <memory>

#include "host/sources/groups.h"
#include "host/sources/source.h"

namespace korvex::sources {

// The place of a record within its group: 1, 2, 3.
std::unique_ptr<Source> make_line_source(std::shared_ptr<Groups> groups);

}  // namespace korvex::sources
