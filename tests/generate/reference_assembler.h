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
class ReferenceItem {
 public:
  ReferenceItem(const ClFmtColInf& column, std::int32_t layout_kind, bool quotation);

  // Appends the field of the next record. 0, -7 or -40.
  std::int32_t append_field(std::string& line);

 private:
  struct Element {
    FmtItemRec settings;
    FmtValRec current;
    std::string current_text;
  };

  bool is_quoted() const;
  bool forwards() const { return settings_.increment.sign == 1; }
  bool backwards() const { return settings_.increment.sign == 2; }
  bool is_lead(const Element& element) const;
  std::int32_t generate(Element& element, std::string& line);
  bool end_passed(const Element& element) const;
  void close_field(std::string& line) const;
  void start_again(Element& element);
  void reset_or_empty();

  std::int32_t number(Element& element, std::string& line, bool sign_written);
  std::string shown_number(const Element& element) const;
  void characters(Element& element, std::string& line);

  std::string display_text(const Element& element) const;
  void moment(Element& element, std::string& line);
  void step_date(Element& element);
  void step_unchecked_date(Element& element);
  void step_time(Element& element) const;
  void step_timestamp(Element& element);
  void overflow(Element& element);

  FmtColRec settings_;
  std::vector<Element> elements_;
  std::int32_t layout_kind_;
  bool quotation_;
  bool end_exceeded_ = false;
  bool date_overflow_ = false;
};

}  // namespace korvex::test
