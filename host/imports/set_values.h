#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// The values of a column of a built-in set, each once; none for a column that there is not.
std::vector<std::string> set_values(const std::string& name, std::string_view language);

// Whether some rows of a set have the same value, as many jobs are of one field: drawn row by row
// they come more than once.
bool set_repeats(const std::string& name, std::string_view language);

}  // namespace korvex::host
