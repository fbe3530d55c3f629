#pragma once

#include <cstdint>
#include <string_view>

#include "values/attributes.h"
#include "values/records.h"
#include "values/result.h"

namespace korvex {

// Reads one directive ("5D", "4YMD", without "%") by the grammar of the item's class into
// `element`: kind, width, digits, decimals and, in a character item, the sign. `is_first` says
// whether the element opens the format. Answers the element's size, or the code of the first rule
// broken.
Result<std::int32_t> read_directive(const ItemAttributes& item, ValueClass item_class,
                                    std::string_view directive, bool is_first, FmtItemRec& element);

}  // namespace korvex
