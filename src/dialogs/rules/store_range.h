#pragma once

#include <cstdint>
#include <string_view>

#include "control/col_main.h"
#include "formatlang/default_settings.h"

namespace korvex {

// A range as a dialog's controls have it.
struct RangeEntry {
  RangeTexts texts;
  bool initializes = false;  // otherwise the values repeat from the start
  bool is_custom = false;
};

// Where the dialogs that store ranges differ.
struct RangeRules {
  // A decimal number (attribute 4) without digits may have as many parts as a text.
  bool decimal_without_digits_is_text;
  // Start and end of an integer must fit 32 bits, those of a small integer 16.
  bool checks_integer_range;
};

inline constexpr RangeRules setup_format_rules = {.decimal_without_digits_is_text = true,
                                                  .checks_integer_range = true};
inline constexpr RangeRules value_update_rules = {.decimal_without_digits_is_text = false,
                                                  .checks_integer_range = false};

enum class RangePart { none, format, start, end, increment };

struct RangeStored {
  ErrorCode code = error::none;       // what was refused
  RangePart wrong = RangePart::none;  // the text to be typed again
  std::string_view hint;              // belongs after the message of `code`
  bool clears_values = false;         // the stored format takes no start, end and increment
};

// Checks an entry and stores it as the settings of the current item, of which there must be one.
// A refused entry leaves the settings as they were, with one exception: -49 and -50 for an integer
// beyond its range come when the new settings are stored already.
RangeStored store_range(ClColMain& main, const RangeEntry& entry, const RangeRules& rules);

// What the user should look at again, to be shown after the message of a code from precheck_format
// or store_range; empty for most codes.
std::string_view range_hint(ErrorCode code);

}  // namespace korvex
