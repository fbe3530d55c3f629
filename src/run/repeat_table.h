#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "control/col_main.h"
#include "courses/steps.h"
#include "platform/runtime_class.h"

namespace korvex {

class ItemGenerator;

// One repeated item in the table of nested counters.
class ClRepeatData : public platform::Object {
 public:
  bool finished = false;  // completed its repetitions in the current cycle of the enclosing level
  std::int32_t level_order = 0;  // 1 for the lowest level, which need not be 1
  RepeatLevel repeat_level{};
  std::int32_t repeat_count = 0;
  std::int32_t repetitions_done = 0;
  bool innermost = false;
  ItemGenerator* item = nullptr;  // whose values the entry counts; owned by the run
  Steps hold = 1;  // records that each value of the item stands for, where that is known

  bool is_outermost() const { return level_order == 1; }

  // How often the item goes through its values; settings from outside may say anything.
  Steps rounds() const { return static_cast<Steps>(std::max(repeat_count, 1)); }
};

inline const platform::RuntimeClass<ClRepeatData> repeat_data_class("ClRepeatData");

using ClRepeatDataList = platform::ObjectList<ClRepeatData>;

// Whether no other item (of another number) of the control file repeats at the level: -104.
ErrorCode check_repeat_level(const ClColMain& main, RepeatLevel level, ItemNumber item_number);

// The repeat table of a run: nested counters over the repeated items, which turn like an odometer
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

  // Tells how the repeats go in closed form, once all entries have their items. False where they
  // turn in a way that can only be seen by turning them: a member without a cycle of its own, or
  // several levels around an innermost item of a single value, which no longer wait for it once it
  // has finished.
  bool nest();

  // After so many records all repeats are over; known once nest() has answered true.
  Steps end() const { return end_; }

  // Puts counters and items where they stand before a record. Needs nest(). Whether the repeats
  // have finished by then.
  bool seek(Steps record);

  // Puts all counters where they stand before the first record.
  void rewind();

  // The items that the entries count.
  std::vector<ItemGenerator*> items() const;

 private:
  ClRepeatDataList entries_;  // in ascending level order
  std::unordered_map<RepeatLevel, ClRepeatData*> by_level_;
  Steps end_ = endless;
};

}  // namespace korvex
