#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "format/item_inf.h"
#include "format/records.h"
#include "generate/record_line.h"

namespace korvex {

// What all elements of one item share while a file is generated.
struct ItemContext {
  std::int32_t layout_kind = 0;
  std::int32_t lead_element = 0;
  std::int32_t item_digits = 0;
  std::int32_t item_decimals = 0;
  FmtValRec increment = {};
};

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
  // behind the one that raised it sees it too.
  bool date_overflow = false;
};

// Writes one format element record after record: each time the text made ready before, then it
// takes the next value and makes its text ready. Settings from outside may hold anything; whatever
// they hold, no generator reads or writes outside its buffers or runs forever.
//
// Keeps a reference to the element's settings, which must outlive it.
class ElementGenerator {
 public:
  ElementGenerator(const ItemContext& context, const ClFmtItemInf& element);
  virtual ~ElementGenerator() = default;
  ElementGenerator(const ElementGenerator&) = delete;
  ElementGenerator& operator=(const ElementGenerator&) = delete;

  // An element without a text writes nothing and takes no step.
  bool is_off() const { return length_ == 0; }
  void switch_off() { length_ = 0; }

  // Appends the text and steps. The line must have room for max_text_size bytes.
  virtual StepOutcome produce(RecordLine& line, ItemPass& pass) = 0;

  // Back to the start value and its text.
  virtual void restart() = 0;

  static constexpr std::size_t max_text_size = 2 * element_text_size;

 protected:
  bool counts_up() const { return increment_sign_ == sign_plus; }
  bool counts_down() const { return increment_sign_ == sign_minus; }
  void set_text(std::string_view text);

  const FmtItemRec& settings_;
  const std::int32_t increment_sign_;
  const bool is_lead_;

  // The text written next. Longer than any element's field, so that block copies stay inside.
  char text_[max_text_size] = {};
  std::size_t length_ = 0;
};

std::unique_ptr<ElementGenerator> make_element_generator(const ItemContext& context,
                                                         const ClFmtItemInf& element);

}  // namespace korvex
