#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "courses/enum_data_list.h"
#include "courses/item_course.h"
#include "courses/steps.h"
#include "settings/col_inf.h"

namespace korvex {

// A number of texts of one size.
struct TextRun {
  Steps count = 0;
  std::uint64_t bytes = 0;
};

// An element that continues after its end value because another one is the item's lead.
struct PassedEnd {
  std::string format;  // the directive, in code page 932
  Steps after = 0;
};

// What is known of an item's values without generating one.
struct ItemFacts {
  // The number of values after which the item is at its end: it starts again, or becomes empty.
  Steps end = endless;
  bool runs_empty = false;

  // The texts up to the end, without quotation marks; one endless run without an end.
  std::vector<TextRun> texts;

  // The number of values after which they are repeated; nothing where that is unknown.
  std::optional<Steps> period;
  // How many different ones there are until then; nothing where that is unknown.
  std::optional<Steps> distinct;
  // How many values from the first on are all different: at least this number, and exactly this
  // number if `distinct` is known.
  Steps different = 1;

  std::vector<PassedEnd> passed_ends;

  bool has_end() const { return end != endless; }
  // Whether all values of a period, or up to the end, are different.
  bool is_injective() const { return distinct && period && *distinct == *period; }

  // The bytes of the first `values` texts of a run: the cycle is repeated, or is followed by empty
  // texts.
  ByteCount bytes(Steps values) const;

  // The same where the cycle always starts again.
  ByteCount bytes_of_cycles(Steps values) const;
};

// Of an item that is made of format elements, or has no values.
ItemFacts item_facts(const ClFmtColInf& column, const ItemCourse& course);

// Of an item that takes its values from a list.
ItemFacts list_facts(const ClEnumDataList& values, bool runs_empty);

}  // namespace korvex
