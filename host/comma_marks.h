#pragma once

#include <string_view>

#include "host/layout.h"

namespace korvex::host {

// The module writes a comma inside a value as it is, where it looks like the end of a field. A
// command that cuts records into fields works on a copy of the settings, in which this character
// stands for such a comma.
inline constexpr char comma_mark = '\x1F';

// Puts marks in place of the commas of fixed texts and value lists. `layout` names the copy of the
// settings file, which is changed, and a work folder, which gets copies of lists. False, and
// nothing changed, when a text has the mark's character already. What cannot be read stays as it
// is: the run reports it.
bool mark_commas(const Layout& layout);

}  // namespace korvex::host
