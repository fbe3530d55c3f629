#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "courses/course.h"
#include "settings/col_inf.h"
#include "values/records.h"

namespace korvex {

// What became of an element after it wrote its text and took its step.
enum class StepOutcome : std::uint8_t {
  going,         // the field goes on
  ended,         // the lead element passed its end; the field goes on
  cut,           // the field ends here, and with it the item's cycle
  bad_kind,      // no such format kind: the run fails
  bad_sub_kind,  // no such way of counting: the run fails
};

// State of one pass over an item's elements.
struct ItemPass {
  // A date or timestamp restarted because the calendar ended. One flag for the item: an element
  // after the one that raised it sees it too.
  bool date_overflow = false;
};

// Computes the texts of one format element step by step. Settings from outside may have any values,
// for which there is no formula. With any settings, no element reads or writes outside its buffers
// or runs forever.
//
// Keeps a reference to the element's settings, which must outlive it.
class LiteralElement {
 public:
  LiteralElement(const ElementContext& context, const ClFmtItemInf& element);
  virtual ~LiteralElement() = default;
  LiteralElement& operator=(const LiteralElement&) = delete;

  // An independent one in the same state.
  virtual std::unique_ptr<LiteralElement> copy() const = 0;

  // An element without a text writes nothing and takes no step.
  bool is_off() const { return length_ == 0; }
  void switch_off() { length_ = 0; }

  // Writes the text at `out`, at most Course::max_text_size bytes; answers its end.
  char* write(char* out) const {
    std::memcpy(out, text_, length_);
    return out + length_;
  }

  // Takes the next value and makes its text ready.
  virtual StepOutcome advance(ItemPass& pass) = 0;

  // Back to the start value and its text.
  virtual void restart() = 0;

 protected:
  LiteralElement(const LiteralElement&) = default;

  bool counts_up() const { return increment_sign_ == Sign::plus; }
  bool counts_down() const { return increment_sign_ == Sign::minus; }
  void set_text(std::string_view text);

  const FmtItemRec& settings_;
  const Sign increment_sign_;
  const bool is_lead_;

  // The text written next.
  std::size_t length_ = 0;
  char text_[Course::max_text_size] = {};
};

// What each kind of element stands on, so that it can be copied.
template <typename Kind, typename Base = LiteralElement>
class CopiedElement : public Base {
 public:
  using Base::Base;

  std::unique_ptr<LiteralElement> copy() const override {
    return std::make_unique<Kind>(static_cast<const Kind&>(*this));
  }
};

std::unique_ptr<LiteralElement> make_literal_element(const ElementContext& context,
                                                     const ClFmtItemInf& element);

// Numbers as a sign and a magnitude of two nine-digit halves, stepped by the increment's halves,
// which settings from outside may fill with anything.
std::unique_ptr<LiteralElement> make_literal_number(const ElementContext& context,
                                                    const ClFmtItemInf& element);

// Dates, times and timestamps in their fields, which settings from outside may fill with anything;
// the end test compares plain texts.
std::unique_ptr<LiteralElement> make_literal_moment(const ElementContext& context,
                                                    const ClFmtItemInf& element);

}  // namespace korvex
