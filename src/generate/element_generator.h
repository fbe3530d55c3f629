#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "format/item_inf.h"
#include "format/records.h"
#include "generate/line_block.h"
#include "generate/wheel.h"

namespace korvex {

// What all elements of one item share while a file is generated.
struct ItemContext {
  std::int32_t layout_kind = 0;
  std::int32_t lead_element = 0;
  std::int32_t item_digits = 0;
  std::int32_t item_decimals = 0;
  FmtValRec increment = {};
  // An element before this one may raise the item's overflow flag.
  bool follows_calendar = false;
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
// Most steps change nothing but the last few characters: digits of a number, the last letters, the
// day of a month. Such steps come in runs. A generator announces a run, the wheel that the
// characters are taken from, and how many steps it lasts; these steps need no call. Whatever else
// can happen at a step (a carry, the end value, a restart) ends the run before it.
//
// Keeps a reference to the element's settings, which must outlive it.
class ElementGenerator {
 public:
  ElementGenerator(const ItemContext& context, const ClFmtItemInf& element);
  virtual ~ElementGenerator() = default;
  ElementGenerator(const ElementGenerator&) = delete;
  ElementGenerator& operator=(const ElementGenerator&) = delete;

  static constexpr std::size_t max_text_size = 2 * element_text_size;

  // An element without a text writes nothing and takes no step.
  bool is_off() const { return length_ == 0; }
  void switch_off() { length_ = 0; }

  // Writes the text at `out`, where there must be room for max_text_size bytes; answers its end.
  char* write(char* out) const {
    if (length_ <= LineBlock::chunk_size) {
      std::memcpy(out, text_, LineBlock::chunk_size);
    } else {
      std::memcpy(out, text_, length_);
    }
    return out + length_;
  }

  // Takes the next value and makes its text ready.
  StepOutcome advance(ItemPass& pass) {
    if (run_left_ == 0) return step(pass);
    skip(1);
    return StepOutcome::going;
  }

  // Back to the start value and its text.
  virtual void restart() = 0;

  // Whether every text from here on, also behind a restart, has the size of the present one.
  virtual bool keeps_size() const { return false; }

  // Whether no step ends the field in its middle.
  virtual bool never_cuts() const { return false; }

  // The text that is written next.
  std::string_view text() const { return {text_, length_}; }

  // What is left of the announced run: how many steps, where the wheel stands, how far it turns
  // each time and how many characters it turns; none for a text that stays as it is.
  std::int64_t run_left() const { return run_left_; }
  const char* wheel_place() const { return wheel_place_; }
  std::ptrdiff_t wheel_step() const { return wheel_step_; }
  std::size_t tail_size() const { return tail_size_; }

  // Takes `steps` steps of the run at once.
  void skip(std::int64_t steps) {
    run_left_ -= steps;
    wheel_place_ += steps * wheel_step_;
    char* const tail = text_ + length_ - tail_size_;
    if (tail_size_ == 2) {  // as most are
      std::memcpy(tail, wheel_place_, 2);
    } else {
      std::memcpy(tail, wheel_place_, tail_size_);
    }
  }

 protected:
  // The step that no run covers.
  virtual StepOutcome step(ItemPass& pass) = 0;

  // Announces that the next `steps` steps take the end of the text from the wheel, from the entry
  // at `index` on, `change` entries further each time.
  void begin_run(const Wheel& wheel, std::int64_t index, std::int64_t change, std::int64_t steps);

  // Announces that the text stays as it is.
  void begin_idle_run();

  // How many steps of the run have been taken; the run is over then.
  std::int64_t end_run();

  bool counts_up() const { return increment_sign_ == sign_plus; }
  bool counts_down() const { return increment_sign_ == sign_minus; }
  void set_text(std::string_view text);

  const FmtItemRec& settings_;
  const std::int32_t increment_sign_;
  const bool is_lead_;

 private:
  std::int64_t run_left_ = 0;
  const char* wheel_place_ = "";
  std::ptrdiff_t wheel_step_ = 0;
  std::size_t tail_size_ = 0;
  std::int64_t run_size_ = 0;

 protected:
  // The text written next. Longer than any element's field, so that chunk copies stay inside.
  std::size_t length_ = 0;
  char text_[max_text_size] = {};
};

std::unique_ptr<ElementGenerator> make_element_generator(const ItemContext& context,
                                                         const ClFmtItemInf& element);

}  // namespace korvex
