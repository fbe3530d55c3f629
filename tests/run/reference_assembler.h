#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "settings/col_inf.h"
#include "values/records.h"

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

  ReferenceItem(const ClFmtColInf& column, LayoutKind layout_kind, bool quotation);

  std::int32_t append_elements(std::string& line, bool& is_over);
  std::int32_t append_plain(std::string& line);
  std::int32_t append_repeated(std::string& line, bool waits);
  void append_listed(std::string& line);
  void append_repeated_list(std::string& line, bool waits);
  void start_elements();

  FmtColRec settings;
  std::vector<Element> elements;
  LayoutKind layout_kind;
  std::string mark;  // around each value
  bool date_overflow = false;

  std::vector<std::string> list;  // values in place of elements
  std::size_t index = 0;
  std::string saved;  // shown again while an inner repeat goes on
  bool wrapped = false;
};

// The records of a few items, some of which may repeat.
struct ReferenceRun {
  struct Entry {
    ReferenceItem* item = nullptr;
    std::int32_t count = 1;
    std::int32_t done = 0;
    bool finished = false;
  };

  // Appends the next line. 0, -7 or -40.
  std::int32_t append_record(std::string& text);

  std::vector<ReferenceItem*> fields;
  std::vector<Entry> entries;  // the outermost first

 private:
  std::int32_t append_field(ReferenceItem& item, std::string& line);
  Entry* entry_of(const ReferenceItem& item);
  void advance();

  bool is_first = true;
  bool is_finished = false;
};

}  // namespace korvex::test
