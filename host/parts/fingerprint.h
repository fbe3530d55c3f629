#pragma once

#include <string>

#include "host/parts/output_form.h"
#include "host/records/prepared_layout.h"

namespace korvex::host {

// A digest of all that the bytes of the records depend on: what the layout says, apart from its
// comments and from where it has its files; the settings that its items have in the end; the values
// of its lists; the number of records; and the form. Parts with one fingerprint belong together.
std::string fingerprint(const PreparedLayout& prepared, const OutputForm& form);

}  // namespace korvex::host
