#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "control/col_main.h"
#include "courses/steps.h"
#include "platform/runtime_class.h"
#include "run/item_generator.h"

namespace korvex {

// When an entry's item takes its values, in records from the first one on.
struct RepeatTurns {
  Steps first_hold = 1;       // for so many the first value stays
  Steps hold = 1;             // and each later one for so many
  CycleLengths cycle;         // of the item
  Steps first_end = endless;  // the counter takes notice of the first cycle's end after so many
  Steps length = endless;     // and of every later one after so many more
};

// One repeated item in the table of nested counters.
class ClRepeatData : public platform::Object {
 public:
  bool finished = false;  // completed its repetitions in the current cycle of the enclosing level
  std::size_t level_order = 0;  // 1 for the lowest level, which need not be 1
  RepeatLevel repeat_level{};
  std::int32_t repeat_count = 0;
  Steps repetitions_done = 0;
  bool innermost = false;
  ItemGenerator* item = nullptr;  // whose values the entry counts; owned by the run
  RepeatTurns turns;

  bool is_outermost() const { return level_order == 1; }

  // How often the item goes through its values; settings from outside may say anything.
  Steps rounds() const { return static_cast<Steps>(std::max(repeat_count, 1)); }
};

inline const platform::RuntimeClass<ClRepeatData> repeat_data_class("ClRepeatData");

using ClRepeatDataList = platform::ObjectList<ClRepeatData>;

// Whether no other item (of another number) of the control file repeats at the level: -104.
ErrorCode check_repeat_level(const ClColMain& main, RepeatLevel level, ItemNumber item_number);

// The repeat table of a run: nested counters over the repeated items, like the digits of a number
// whose lowest digit is the highest level. Owns its entries.
class RepeatTable {
 public:
  // Collects the repeated items of the control file. 0, -104 with the item in the message context,
  // -108 no item has level 1, -109 more items than the limit, which `main` then holds.
  ErrorCode build(ClColMain& main);

  bool is_empty() const { return entries_.empty(); }

  // Null when there is none. Entries keep their addresses.
  ClRepeatData* find_level(RepeatLevel repeat_level) const;
  ClRepeatData* next_inner(const ClRepeatData& entry) const;

  // Turns the counters after a record. True once the outermost level has completed all of its
  // repetitions; it must not be called again then.
  bool advance();

  // Tells how the repeats turn, once all entries have their items. Whether every value of an item
  // stands for equally many records, as `hold` has it, and all cycles of an item are alike. They
  // are not for a member without a cycle of its own, nor for several levels around an innermost
  // item of a single value, which no longer wait for it once it has finished.
  bool turn_evenly();

  // After so many records all repeats are over; known once turn_evenly() has answered true.
  Steps end() const { return end_; }

  // Puts counters and items where they stand before a record. Whether the repeats have finished by
  // then. Takes the same time for every record, but for items without a course.
  bool seek(Steps record);

 private:
  void tell_turns(Steps most);
  void seek_entry(ClRepeatData& entry, Steps record);

  ClRepeatDataList entries_;  // in ascending level order
  std::unordered_map<RepeatLevel, ClRepeatData*> by_level_;
  bool inner_stays_finished_ = false;  // from its first repetitions on: no record clears its flag
  Steps end_ = endless;
};

}  // namespace korvex
