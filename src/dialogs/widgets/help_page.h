#pragma once

#include <QString>

namespace korvex {

// The user's page about the windows, which is installed with the documents. Empty where it is not,
// as when a host brings nothing but the library.
QString help_page();

// Opens it in the desktop's program for such files; tells the user when that cannot be started.
void open_help_page();

}  // namespace korvex
