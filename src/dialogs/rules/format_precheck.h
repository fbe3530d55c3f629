#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "values/result.h"

namespace korvex {

// A format of this many bytes or more does not fit its field; callers refuse it before the check.
inline constexpr std::size_t format_size_limit = 256;

// How many parts a format has.
struct FormatParts {
  std::int32_t variable = 0;
  std::int32_t fixed = 0;
};

// A first look at a format as typed, whatever the item: its quotation marks, the number of its
// parts and the size of its first variable part. Answers the parts; -7, -11, -35, -52.
//
// Tells less than the parser of stored formats and judges some texts differently, so that a format
// which passes may still be refused when it is stored. It shares no code with it on purpose.
Result<FormatParts> precheck_format(std::string_view format);

}  // namespace korvex
