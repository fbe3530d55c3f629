#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "format/col_inf.h"

namespace korvex::host {

// A count of records that no run reaches.
inline constexpr std::uint64_t endless = ~std::uint64_t{0};

// Least common multiple and product, endless where they pass 64 bits.
std::uint64_t common_multiple(std::uint64_t left, std::uint64_t right);
std::uint64_t product(std::uint64_t left, std::uint64_t right);

// How one format element goes through its texts from its start value on, as long as its item does
// not start it again. Told from the settings alone.
struct ElementSequence {
  // After so many texts it ends its item's cycle: the lead at its end value, any number where it
  // leaves its 18 digits.
  std::uint64_t end = endless;
  // The elements behind it are missing in the last record of such a cycle.
  bool cuts = false;
  // After so many texts a date or timestamp leaves the calendar and starts again.
  std::uint64_t overflow = endless;
  // The texts come back after so many, over and over.
  std::uint64_t period = endless;
  // So many texts from the first on are all different.
  std::uint64_t different = endless;
  // How many different texts there are before the end, or in a period.
  std::uint64_t distinct = endless;
  // An element that is not the lead goes on behind its end value after so many texts.
  std::uint64_t past_end = endless;
  std::size_t size = 0;  // bytes of each text
};

// What the elements of an item share.
struct SequenceContext {
  std::int32_t layout_kind = 0;
  std::int32_t lead_element = 0;
  std::int32_t item_digits = 0;
  std::int32_t item_decimals = 0;
  FmtValRec increment = {};
};

// Nothing for settings that the module's own checks would not have made: what a crafted file makes
// of them can only be seen by generating.
std::optional<ElementSequence> element_sequence(const SequenceContext& context,
                                                const ClFmtItemInf& element);

}  // namespace korvex::host
