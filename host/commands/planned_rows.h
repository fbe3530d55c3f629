#pragma once

#include "host/imports/table_planner.h"

namespace korvex::host {

// The records of a layout that is not written yet, made beside the files of the user.
TextRows make_planned_rows(const WantedRecords& wanted);

}  // namespace korvex::host
