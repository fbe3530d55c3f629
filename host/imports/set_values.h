#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// The values of a column of a built-in set, each once; none for a column that there is not.
std::vector<std::string> set_values(const std::string& name, std::string_view language);

}  // namespace korvex::host
