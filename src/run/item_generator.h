#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "courses/course_cursor.h"
#include "courses/enum_data_list.h"
#include "courses/item_course.h"
#include "courses/item_facts.h"
#include "courses/line_block.h"
#include "courses/literal_cycle.h"
#include "courses/literal_item.h"
#include "run/field_writer.h"
#include "settings/col_inf.h"

namespace korvex {

class ClRepeatData;

// Where an item's values come from and whether it repeats.
enum class AssemblyMode : std::uint8_t {
  plain,
  repeat_member,
  enumeration,
  enumeration_repeat_member,
};

// What a field needs to know of the run.
struct RunState {
  bool first_record = true;
  bool repeats_finished = false;
};

// What becomes of an item's field over several records, as far as that can be predicted.
enum class FieldForm : std::uint8_t {
  constant,  // it stays as it is
  counting,  // its elements count, and it keeps its size
  listed,    // values of a list, of any size
};

// The form, and for how many records it holds: none where only the next record can tell.
struct FieldOutlook {
  FieldForm form = FieldForm::constant;
  std::int64_t records = 0;

  static constexpr std::int64_t no_end = std::numeric_limits<std::int64_t>::max();
};

// The first cycle of an item is unlike all others where its settings begin elsewhere than at the
// start value.
enum class CycleKind : std::uint8_t { first, later };

// How many records with values of their own the first cycle of an item takes, and each later one.
struct CycleLengths {
  Steps first = endless;
  Steps later = endless;
};

// The cycles of an item without a course.
struct LiteralCycles {
  LiteralCycle first;
  LiteralCycle later;

  LiteralCycle& of(CycleKind kind) { return kind == CycleKind::first ? first : later; }
};

// Where a member of repeats that have not finished is in one of its cycles.
struct MemberPlace {
  CycleKind cycle = CycleKind::first;
  Steps records = 0;     // with values of their own, since the cycle began
  bool wrapped = false;  // the cycle has ended, and no counter has taken notice of it yet
};

// Writes one item's field record after record: its elements or enumeration values, quotation marks
// and comma, and what happens when its values have passed their end.
//
// Keeps references to the item's settings, which must outlive it.
class ItemGenerator {
 public:
  ItemGenerator(const ClFmtColInf& column, LayoutKind layout_kind, bool quotation);

  // Appends the field, or answers the code that fails the run.
  ErrorCode append(LineBlock& line, const RunState& run) {
    return mode_ == AssemblyMode::plain ? append_plain(line) : append_other(line, run);
  }

  // Whether records may ever be predicted. An item that is in several fields takes a step in
  // each of them.
  bool is_predictable() const { return fields_ == 1; }

  FieldOutlook outlook(const RunState& run) const;

  // The fields of the records predicted, by their form. All are written without quotation marks and
  // comma, except the constant one, which append_constant() appends as a whole.
  void append_constant(std::string& line, const RunState& run) const;

  bool is_quoted() const { return quoted_; }
  std::string_view opening() const { return quoted_ ? "\"" : ""; }
  std::string_view closing() const { return quoted_ ? "\"," : ","; }

  // Whether the field keeps its size over the records predicted, and that size.
  bool has_one_size(FieldForm form) const {
    return form != FieldForm::listed || enumeration_->has_one_size();
  }
  std::size_t size(FieldForm form) const;

  // Writes the next `count` fields of one size, each with `closing` after it, and takes as many
  // steps.
  void write_counting(FieldPlaces places, std::int64_t count, std::string_view closing);
  void write_values(FieldPlaces places, std::int64_t count, std::string_view closing);

  // Where the next value of the list is.
  EnumCursor& list_cursor() { return *list_cursor_; }
  std::size_t largest_value() const { return enumeration_->largest(); }

  // Tells the item that it stands in one more field of a record.
  void add_field() { ++fields_; }

  // Makes the item a member of the repeat table. `next` is the entry of the next inner level, null
  // for the innermost; both must outlive this object.
  void join_repeat(const ClRepeatData* next);

  // Gives the item its enumeration values, for its first field. Items of other runs may have the
  // same.
  void set_enumeration(std::shared_ptr<const ClEnumDataList> values);
  bool has_enumeration() const { return enumeration_ != nullptr; }
  // Null without.
  const std::shared_ptr<const ClEnumDataList>& enumeration() const { return enumeration_; }

  // Tells of each further field with the item: in several it takes no values from its list.
  void add_list_field();

  // Whether the values go in closed form, or are in a list: each of them can be had at once.
  bool seeks_directly() const { return course_.has_value() || takes_values_from_list(); }

  bool is_repeat_member() const { return is_repeat_member_; }

  // Whether the repeats decide when the item takes a value. Not that of an item without values, nor
  // of a list in several fields: such a member goes on in every record, and never ends a cycle.
  bool turns_with_repeats() const {
    return mode_ == AssemblyMode::repeat_member || mode_ == AssemblyMode::enumeration_repeat_member;
  }

  // Whether the item's values have passed their end since this was last cleared (repeat members).
  bool wrapped() const { return wrapped_; }
  void clear_wrapped();

  const ClFmtColInf& column() const { return column_; }
  const FmtColRec& settings() const { return settings_; }

  // How many values a cycle has; nothing where there is no formula, because the item is computed
  // step by step or is in several fields.
  std::optional<Steps> cycle() const;

  // What is known of the values of an item that has a cycle.
  ItemFacts facts() const;

  // Back to where the item is before the first record.
  void rewind();

  // Moves an item without a repeat to its state after so many records.
  void seek_plain(Steps records);

  // Moves an item of the repeats to its state so many records after they have finished.
  void seek_finished(Steps records);

  // The cycles of a member of the repeats. An item without a course is asked for no more than
  // `most` records, and what has no end by then counts as endless.
  CycleLengths cycle_lengths(Steps most);

  // Moves an item of the repeats to its state while they have not finished.
  void seek_member(const MemberPlace& wanted);

  // Whether the item starts again after its end, and is not empty from there on.
  bool repeats_from_start() const { return settings_.exceeded_action == exceeded_action::repeat; }

 private:
  static constexpr char quotation_mark = '"';

  ErrorCode append_plain(LineBlock& line);
  ErrorCode append_other(LineBlock& line, const RunState& run);
  ErrorCode append_repeated(LineBlock& line, const RunState& run);
  ErrorCode append_next_enumeration(LineBlock& line);
  ErrorCode append_repeated_enumeration(LineBlock& line, const RunState& run);
  void append_enumeration_value(LineBlock& line);
  ErrorCode write_text(char*& out, bool& ended);
  char* open_field(LineBlock& line) const;
  char* close_field(char* out) const {
    if (quoted_) *out++ = quotation_mark;
    *out++ = ',';
    return out;
  }
  void choose_mode();
  void append_empty(LineBlock& line) const;
  void end_cycle();
  void restart();
  void place(Steps step);
  bool outer_waits(const RunState& run) const;
  bool takes_values_from_list() const {
    return mode_ == AssemblyMode::enumeration || mode_ == AssemblyMode::enumeration_repeat_member;
  }
  void skip(Steps records, CycleKind begun);
  void skip_literal(Steps values, CycleKind begun);
  void seek_member_list(const MemberPlace& wanted);
  void seek_member_literal(const MemberPlace& wanted);
  LiteralCycles& literal_cycles();

  FieldOutlook counting_outlook() const;
  FieldOutlook repeated_outlook(const RunState& run) const;
  Steps records_of_full_size() const;
  std::int64_t run_left() const;

  // Whether the step ends the cycle: the item then stays there until restart() or the end.
  bool take_step() {
    if (++step_ == course_->end()) return true;
    for (CourseCursor& cursor : cursors_) cursor.advance(step_);
    return false;
  }

  const ClFmtColInf& column_;
  const FmtColRec& settings_;
  const LayoutKind layout_kind_;
  // An item without values is never quoted and has no elements to walk.
  const bool is_initial_value_;
  const bool quoted_;
  std::size_t room_ = 0;  // for the longest field that the elements can give

  // The elements: by formulas, at one step, or one step after the other.
  std::optional<ItemCourse> course_;
  std::vector<CourseCursor> cursors_;
  Steps step_ = 0;
  bool is_empty_ = false;  // the values have passed their end, and nothing follows
  std::unique_ptr<LiteralItem> literal_;
  std::unique_ptr<LiteralCycles> literal_cycles_;  // once a seek has asked for them

  std::size_t fields_ = 0;
  AssemblyMode mode_ = AssemblyMode::plain;
  std::size_t list_fields_ = 0;

  bool is_repeat_member_ = false;
  const ClRepeatData* next_entry_ = nullptr;
  bool wrapped_ = false;
  std::string saved_text_;

  std::shared_ptr<const ClEnumDataList> enumeration_;
  std::optional<EnumCursor> list_cursor_;

  std::string field_;  // the counting field that is written next
  std::vector<TurningTail> more_tails_;
};

}  // namespace korvex
