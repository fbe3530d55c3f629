#pragma once

#include <cstdint>
#include <memory>

#include "host/records/moment_form.h"
#include "host/sources/scale.h"
#include "values/records.h"

namespace korvex::host {

// Dates as days, times and timestamps as seconds. Reads and writes as the engine does in a kind of
// layout, years with four digits.
std::unique_ptr<sources::Scale> moment_scale(MomentForm form, LayoutKind layout_kind);

}  // namespace korvex::host
