#include "format/largest_value.h"

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

bool takes_nines(std::int32_t code) { return code == 4 || (code >= 13 && code <= 27); }

}  // namespace

std::string largest_value_text(const ItemAttributes& item) {
  const std::int32_t code = item.attribute;
  const std::int64_t positions = std::int64_t{item.digits} - item.decimals;
  if (code < 1 || code > attribute::date) return {};
  if (code == attribute::date) return repeated("9", positions);
  if (is_national(code)) return repeated(full_width_capital_z, positions);
  if (!takes_nines(code)) return repeated("z", positions);

  std::string text = item.signed_flag != 0 ? "+" : "";
  text += repeated("9", positions);
  if (item.decimals > 0) text += "." + repeated("9", item.decimals);
  return text;
}

}  // namespace korvex
