#pragma once

#include <string>

#include "host/layout/layout.h"

namespace korvex::host {

// Makes a folder, and those that it is in, where they are missing. One that cannot be made shows
// when a file is to be written there.
void make_folder(const std::string& folder);

// Makes the work folder and the folders of the data and settings files where they are missing. One
// that cannot be made shows in the code of the operation that needs it.
void make_output_folders(const Layout& layout);

}  // namespace korvex::host
