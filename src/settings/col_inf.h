#pragma once

#include <string>

#include "platform/runtime_class.h"
#include "values/records.h"

namespace korvex {

// One format element of an item's settings.
class ClFmtItemInf : public platform::Object {
 public:
  ClFmtItemInf() = default;
  explicit ClFmtItemInf(const FmtItemRec& element) : record(element) {}

  // The text that generation writes first: the literal of a fixed element, else the last `width`
  // characters of the start value text.
  std::string first_text() const;

  FmtItemRec record = {};
};

inline const platform::RuntimeClass<ClFmtItemInf> fmt_item_inf_class("ClFmtItemInf");

// One item's settings: its record and its format elements in sequence order, which it owns.
class ClFmtColInf : public platform::Object {
 public:
  ClFmtColInf() = default;
  explicit ClFmtColInf(const FmtColRec& settings) : record(settings) {}

  // Replaces all elements and keeps the count in the record.
  void set_elements(const std::vector<FmtItemRec>& replacements);

  // The same with the elements of another column, which is left without any. Never fails.
  void take_elements(ClFmtColInf& other);

  // Start and end value texts of the variable elements, joined by commas: one entry for each
  // directive of the format, so that the texts read back as they were entered.
  std::string joined_start_texts() const;
  std::string joined_end_texts() const;

  FmtColRec record = {};
  platform::ObjectList<ClFmtItemInf> elements;
};

inline const platform::RuntimeClass<ClFmtColInf> fmt_col_inf_class("ClFmtColInf");

}  // namespace korvex
