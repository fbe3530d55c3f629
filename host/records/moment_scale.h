#pragma once

#include <memory>

#include "host/records/moment_form.h"
#include "host/sources/scale.h"

namespace korvex::host {

// Dates as days, times and timestamps as seconds. Reads what the engine writes, and writes
// "2024-02-29", "23:59:59" and "2024-02-29 23:59:59", for years of four digits.
std::unique_ptr<sources::Scale> moment_scale(MomentForm form);

}  // namespace korvex::host
