#pragma once

#include "dialogs/rules/store_range.h"
#include "dialogs/widgets/form_dialog.h"

namespace korvex {

// The controls for a range, which several dialogs have under the same numbers.

RangeEntry read_range(const FormDialog& dialog);

// The control of that part; where it cannot be used, the one that makes it usable. 0 for none.
int control_of(const FormDialog& dialog, RangePart part);

// Empties start, end and increment.
void clear_values(const FormDialog& dialog);

}  // namespace korvex
