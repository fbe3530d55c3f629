#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/attributes.h"

namespace korvex::host {

// What a layout says about an item's size.
struct GivenSize {
  std::optional<std::int32_t> digits;
  std::optional<std::int32_t> length;
};

// What does not fit: the key that says it, and the message.
struct SizeError {
  std::string_view key;
  std::string text;
};

// Sets the item's digits and length: as given, else what the attribute fixes, else one from the
// other. The item's attribute, sign and decimals must be set. Answers nothing when all fits. An
// item with more decimals than digits is left with none, as the module does when it reads one.
std::optional<SizeError> complete_size(const GivenSize& given, ItemAttributes& item);

}  // namespace korvex::host
