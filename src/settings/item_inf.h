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

}  // namespace korvex
