#include "formatlang/largest_value.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "formatlang/value_parser.h"

namespace korvex {

namespace {

constexpr std::string_view full_width_capital_z = "\x82\x79";

// One position more than any value may have: a longer text is refused just the same.
constexpr std::int64_t most_positions = max_value_length + 1;

std::string repeated(std::string_view text, std::int64_t count) {
  std::string out;
  for (std::int64_t i = 0; i < std::min(count, most_positions); ++i) out.append(text);
  return out;
}

}  // namespace

std::string largest_value_text(const ItemAttributes& item) {
  const std::int64_t positions = std::int64_t{item.digits} - item.decimals;
  switch (traits_of(item.attribute).largest) {
    case LargestValue::none:
      return {};
    case LargestValue::small_letters:
      return repeated("z", positions);
    case LargestValue::full_width_letters:
      return repeated(full_width_capital_z, positions);
    case LargestValue::digits:
      return repeated("9", positions);
    case LargestValue::number:
      break;
  }
  std::string text = item.signed_flag != 0 ? "+" : "";
  text += repeated("9", positions);
  if (item.decimals > 0) text += "." + repeated("9", item.decimals);
  return text;
}

}  // namespace korvex
