#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "values/attributes.h"
#include "values/records.h"
#include "values/result.h"

namespace korvex {

// The most letters that one directive goes through.
inline constexpr std::int32_t max_letters = 5;

// The elements that a format text stands for, with sequence numbers from 1, kinds, widths and texts
// but no values yet.
struct ParsedFormat {
  std::vector<FmtItemRec> elements;
  std::int32_t variable_count = 0;  // directives as written, before any splitting
  std::int32_t fixed_count = 0;
};

// What becomes of a full-width directive with a count.
enum class NationalCount {
  split,  // one element a character, as settings store it
  keep,   // one element for all, as the user entered its value
};

// Longest format, summed over its elements' sizes.
inline constexpr std::int64_t max_format_size = 128;

// Reads a format for an item of the given class; `item.digits` must be the effective digits. The
// code is that of the first rule that the text breaks.
Result<ParsedFormat> parse_format(const ItemAttributes& item, ValueClass item_class,
                                  std::string_view format, NationalCount national);

// Reads one directive ("5D", "4YMD", without "%") by the grammar of the item's class into
// `element`: kind, width, digits, decimals and, in a character item, the sign. `is_first` says
// whether the element opens the format. Answers the element's size, or the code of the first rule
// broken.
Result<std::int32_t> read_directive(const ItemAttributes& item, ValueClass item_class,
                                    std::string_view directive, bool is_first, FmtItemRec& element);

}  // namespace korvex
