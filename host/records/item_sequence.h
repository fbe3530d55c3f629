#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "courses/enum_data_list.h"
#include "host/records/element_sequence.h"

namespace korvex::host {

// So many texts of one size.
struct TextRun {
  std::uint64_t count = 0;
  std::uint64_t bytes = 0;
};

// An element that goes on behind its end value because another one is the item's lead.
struct PassedEnd {
  std::string format;  // the directive, in code page 932
  std::uint64_t after = 0;
};

// How one item goes through its values from the first record on, told from its settings alone.
struct ItemSequence {
  // After so many values the item notices its end: it starts again, or runs empty.
  std::uint64_t end = endless;
  bool runs_empty = false;

  // The texts up to the end, without quotation marks; one endless run without an end.
  std::vector<TextRun> texts;

  // The values come back after so many; nothing where that can't be told.
  std::optional<std::uint64_t> period;
  // How many different ones there are until then; nothing where that can't be told.
  std::optional<std::uint64_t> distinct;
  // At least so many values from the first on are all different; exactly so many where `distinct`
  // is known.
  std::uint64_t different = 1;

  std::vector<PassedEnd> passed_ends;

  bool has_end() const { return end != endless; }
  // Whether all values of a period, or up to the end, are different.
  bool is_injective() const { return distinct && period && *distinct == *period; }
};

// The sequence of an item that is made of format elements, or has no values. Nothing when the
// settings are none that the module's own checks would have made.
std::optional<ItemSequence> item_sequence(const ClFmtColInf& column, std::int32_t layout_kind);

// The sequence of an item that takes its values from a list.
ItemSequence list_sequence(const ClEnumDataList& values, bool runs_empty);

}  // namespace korvex::host
