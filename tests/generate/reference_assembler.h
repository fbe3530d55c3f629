#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "format/col_inf.h"
#include "format/records.h"

namespace korvex::test {

// A second implementation of record assembly to hold the fast one against: every rule as it is
// worded, one after the other, on copies of the records. Slow, and sharing nothing with what it
// checks but the records and the character ordinals.
struct ReferenceItem {
  struct Element {
    FmtItemRec settings;
    FmtValRec current;
    std::string text;  // what is written next; none for an element that is off
  };

  ReferenceItem(const ClFmtColInf& column, std::int32_t layout_kind, bool quotation);

  // Appends the field of the next record. 0, -7 or -40.
  std::int32_t append_field(std::string& line);

  FmtColRec settings;
  std::vector<Element> elements;
  std::int32_t layout_kind;
  bool quotation;
  bool date_overflow = false;
};

}  // namespace korvex::test
