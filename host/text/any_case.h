#pragma once

#include <strings.h>

#include <string_view>

namespace korvex::host {

inline bool is_same_in_any_case(std::string_view left, std::string_view right) {
  return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

}  // namespace korvex::host
