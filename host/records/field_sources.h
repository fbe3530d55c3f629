#pragma once

#include "host/records/field_plan.h"
#include "host/records/layout_family.h"
#include "run/run.h"

namespace korvex::host {

// Gives the items of the plan the sources that ask no other field: lists, sets, records of other
// layouts, and values of the engine that a way leads through. The run has the items that have
// settings; it must outlive the sources. What is wrong is reported to the plan.
void take_sources(FieldPlan& plan, const Run& run, LayoutFamily& family);

}  // namespace korvex::host
