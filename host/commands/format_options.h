#pragma once

#include <CLI/CLI.hpp>
#include <iosfwd>

#include "host/records/record_format.h"

namespace korvex::host {

// Adds the options that say how records are written.
void add_format(CLI::App& command, FormatChoices& format);

// Whether one of them was given.
bool has_format(const CLI::App& command);

// Whether the choices go together; says so otherwise.
bool is_possible(const FormatChoices& format, std::ostream& messages);

}  // namespace korvex::host
