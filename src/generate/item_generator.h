#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "format/col_inf.h"
#include "generate/element_generator.h"
#include "generate/enum_data_list.h"
#include "generate/line_block.h"

namespace korvex {

class ClRepeatData;

// Where an item's values come from and whether it repeats.
namespace assembly_mode {
inline constexpr std::int32_t plain = 0;
inline constexpr std::int32_t repeat_member = 1;
inline constexpr std::int32_t enumeration = 2;  // added to the mode once the values are loaded
inline constexpr std::int32_t enumeration_repeat_member = 3;
}  // namespace assembly_mode

// What a field needs to know of the run.
struct RunState {
  bool first_record = true;
  bool repeats_finished = false;
};

// Writes one item's field record after record: its elements or enumeration values, quotation marks
// and comma, and what happens when its values have passed their end.
//
// Keeps references to the item's settings, which must outlive it.
class ItemGenerator {
 public:
  ItemGenerator(const ClFmtColInf& column, std::int32_t layout_kind, bool quotation);

  // Appends the field. 0, or the code that fails the run.
  std::int32_t append(LineBlock& line, const RunState& run) {
    return mode_ == assembly_mode::plain ? append_plain(line) : append_other(line, run);
  }

  // Whether the field may ever stay the same but for turning characters over several records.
  bool may_be_steady() const { return mode_ == assembly_mode::plain && fields_ == 1; }

  // For how many records it does so from here on.
  std::int64_t steady_steps() const {
    std::int64_t steps = std::numeric_limits<std::int64_t>::max();
    for (const auto& element : elements_) {
      if (!element->is_off()) steps = std::min(steps, element->run_left());
    }
    return steps;
  }

  // Writes the field as it stands at `out`, where there must be room() bytes, without taking a
  // step. Hands over each turning element and the end of its text; answers the end of the field.
  template <typename Visit>
  char* write_pattern(char* out, Visit visit) const {
    if (quoted_) *out++ = quotation_mark;
    for (const auto& element : elements_) {
      if (element->is_off()) continue;
      out = element->write(out);
      if (element->wheel_step() != 0) visit(*element, out);
    }
    return close_field(out);
  }

  // The most bytes that the field's elements can give, and the overhang of writing them.
  std::size_t room() const { return room_; }

  // Takes `steps` steps that steady_steps() has promised.
  void skip(std::int64_t steps) {
    for (const auto& element : elements_) {
      if (!element->is_off()) element->skip(steps);
    }
  }

  // Tells the item that it stands in one more field of a record.
  void add_field() { ++fields_; }

  // Makes the item a member of the repeat table. `next` is the entry of the next inner level, null
  // for the innermost; both must outlive this object.
  void join_repeat(const ClRepeatData* next);

  // Gives the item its enumeration values and raises its mode.
  void set_enumeration(std::unique_ptr<ClEnumDataList> values);
  bool has_enumeration() const { return enumeration_ != nullptr; }

  // Each field with the item raises the mode once; raised twice it is none that takes values.
  void raise_mode() { mode_ += assembly_mode::enumeration; }

  // Whether the item's values have passed their end since this was last cleared (repeat members).
  bool wrapped() const { return wrapped_; }
  void clear_wrapped();

 private:
  static constexpr char quotation_mark = '"';

  std::int32_t append_plain(LineBlock& line);
  std::int32_t append_other(LineBlock& line, const RunState& run);
  std::int32_t append_repeated(LineBlock& line, const RunState& run);
  std::int32_t append_next_enumeration(LineBlock& line);
  std::int32_t append_repeated_enumeration(LineBlock& line, const RunState& run);
  void append_enumeration_value(LineBlock& line);
  [[gnu::always_inline]] inline std::int32_t walk_elements(char*& out, bool& ended);
  char* open_field(LineBlock& line) const;
  char* close_field(char* out) const {
    if (quoted_) *out++ = quotation_mark;
    *out++ = ',';
    return out;
  }
  void append_empty(LineBlock& line) const;
  void end_cycle();
  void restart_elements();
  bool outer_waits(const RunState& run) const;
  bool repeats_from_start() const;

  const FmtColRec& settings_;
  // An item without values is never quoted and has no elements to walk.
  const bool is_initial_value_;
  const bool quoted_;
  std::size_t room_ = 0;  // for the longest field that the elements can give
  std::vector<std::unique_ptr<ElementGenerator>> elements_;
  ItemPass pass_;
  std::int32_t fields_ = 0;
  std::int32_t mode_ = assembly_mode::plain;

  bool is_repeat_member_ = false;
  const ClRepeatData* next_entry_ = nullptr;
  bool wrapped_ = false;
  std::string saved_text_;

  std::unique_ptr<ClEnumDataList> enumeration_;
  std::int32_t enumeration_index_ = 0;
};

}  // namespace korvex
