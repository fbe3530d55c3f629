#include "run/repeat_table.h"

#include <algorithm>
#include <unordered_map>

#include "values/error_codes.h"

namespace korvex {

namespace {

const FmtColRec* repeat_settings(const ClColMain& main, const ClDGCol& item) {
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  return column != nullptr && is_on(column->record.repeat_flag) ? &column->record : nullptr;
}

// Levels taken by items of more than one number.
class LevelUse {
 public:
  explicit LevelUse(const ClColMain& main) {
    for (const auto& item : main.items) {
      const FmtColRec* settings = repeat_settings(main, *item);
      if (settings == nullptr) continue;
      const auto [place, is_new] =
          takers_.try_emplace(settings->repeat_level, Taker{item->item_number, false});
      if (!is_new && place->second.item_number != item->item_number) place->second.shared = true;
    }
  }

  bool is_shared(RepeatLevel level) const {
    const auto place = takers_.find(level);
    return place != takers_.end() && place->second.shared;
  }

 private:
  struct Taker {
    ItemNumber item_number;
    bool shared;
  };
  std::unordered_map<RepeatLevel, Taker> takers_;
};

// How many values are in the first `records`, at least partly.
Steps values_until(Steps records, Steps first_hold, Steps hold) {
  if (records <= first_hold) return records > 0 ? 1 : 0;
  const Steps later = records - first_hold;
  return 1 + later / hold + (later % hold != 0 ? 1 : 0);
}

// So many records, up to the end of a turn.
Steps whole(Steps records, Steps turn) {
  return product(records / turn + (records % turn != 0 ? 1 : 0), turn);
}

}  // namespace

ErrorCode check_repeat_level(const ClColMain& main, RepeatLevel level, ItemNumber item_number) {
  const bool taken = std::any_of(main.items.begin(), main.items.end(), [&](const auto& item) {
    const FmtColRec* settings = repeat_settings(main, *item);
    return settings != nullptr && item->item_number != item_number &&
           settings->repeat_level == level;
  });
  return taken ? error::repeat_level_taken : error::none;
}

ErrorCode RepeatTable::build(ClColMain& main) {
  entries_.clear();
  by_level_.clear();
  const LevelUse levels(main);
  bool has_outermost = false;
  std::uint64_t repeated_items = 0;
  for (const auto& item : main.items) {
    const FmtColRec* settings = repeat_settings(main, *item);
    if (settings == nullptr) continue;
    if (levels.is_shared(settings->repeat_level)) {
      using platform::MessageText;
      main.message_context = "\n" + MessageText::code_page(item->name) + " : " +
                             MessageText::code_page(item->description);
      return error::repeat_level_taken;
    }
    ++repeated_items;
    has_outermost |= settings->repeat_level == RepeatLevel::outermost;
    if (find_level(settings->repeat_level) != nullptr) continue;
    auto entry = std::make_unique<ClRepeatData>();
    entry->repeat_level = settings->repeat_level;
    entry->repeat_count = settings->repeat_count;
    by_level_.emplace(entry->repeat_level, entry.get());
    entries_.push_back(std::move(entry));
  }
  if (repeated_items == 0) return error::none;
  if (!has_outermost) return error::first_repeat_level_missing;
  const std::uint64_t limit = main.limits().repeat_max;
  if (limit != 0 && repeated_items > limit) {
    main.largest_repeat_count = limit;
    return error::too_many_repeats;
  }

  std::sort(entries_.begin(), entries_.end(), [](const auto& left, const auto& right) {
    return left->repeat_level < right->repeat_level;
  });
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    entries_[i]->level_order = i + 1;
  }
  entries_.back()->innermost = true;
  return error::none;
}

ClRepeatData* RepeatTable::find_level(RepeatLevel repeat_level) const {
  const auto place = by_level_.find(repeat_level);
  return place == by_level_.end() ? nullptr : place->second;
}

ClRepeatData* RepeatTable::next_inner(const ClRepeatData& entry) const {
  const std::size_t next = entry.level_order;
  return next < entries_.size() ? entries_[next].get() : nullptr;
}

bool RepeatTable::advance() {
  for (auto place = entries_.rbegin(); place != entries_.rend(); ++place) {
    ClRepeatData& entry = **place;
    if (entry.innermost) {
      if (!entry.item->wrapped()) {
        for (const auto& each : entries_) each->finished = false;
        return false;
      }
    } else if (!entry.item->wrapped() || !next_inner(entry)->finished) {
      return false;
    }
    entry.item->clear_wrapped();
    if (++entry.repetitions_done >= entry.rounds()) {
      entry.finished = true;
      entry.repetitions_done = 0;
    }
    if (entry.is_outermost() && entry.finished) return true;
  }
  return false;
}

bool RepeatTable::turn_evenly() {
  for (const auto& entry : entries_) {
    if (!entry->item->cycle()) return false;
  }
  tell_turns(endless);
  return !inner_stays_finished_ || entries_.size() == 1;
}

// From the innermost entry outwards; items without a course are followed for `most` records.
//
// An outer item takes a value when the next inner level has finished its repetitions. That lasts
// until a record in which the innermost item does not end its cycle. One of a single value ends it
// in every record: once a level has finished, the next outer one then takes a value in each record,
// but its counter still turns only together with the inner one.
void RepeatTable::tell_turns(Steps most) {
  Steps first_hold = 1;
  Steps hold = 1;
  Steps turn = 1;  // of the next inner counter
  for (auto place = entries_.rbegin(); place != entries_.rend(); ++place) {
    ClRepeatData& entry = **place;
    const CycleLengths cycle = entry.item->cycle_lengths(values_until(most, first_hold, hold));
    if (entry.innermost) inner_stays_finished_ = cycle.later == 1;
    RepeatTurns& turns = entry.turns;
    turns = {first_hold, hold, cycle, endless, endless};
    turns.first_end = sum(first_hold, whole(product(cycle.first - 1, hold), turn));
    turns.length = whole(product(cycle.later, hold), turn);
    const Steps rounds = entry.rounds();
    first_hold = sum(turns.first_end, product(rounds - 1, turns.length));
    turn = inner_stays_finished_ ? turns.length : product(rounds, turns.length);
    hold = inner_stays_finished_ ? 1 : turn;
  }
  end_ = first_hold;
}

bool RepeatTable::seek(Steps record) {
  tell_turns(record);
  const bool is_over = record >= end_;
  for (const auto& entry : entries_) {
    if (is_over) {
      entry->item->seek_finished(record - end_);
    } else {
      seek_entry(*entry, record);
    }
  }
  return is_over;
}

void RepeatTable::seek_entry(ClRepeatData& entry, Steps record) {
  const RepeatTurns& turns = entry.turns;
  MemberPlace place;
  Steps cycles = 0;
  bool ends_here = false;
  if (record < turns.first_end) {
    place.records = values_until(record, turns.first_hold, turns.hold);
  } else {
    const Steps later = record - turns.first_end;
    cycles = 1 + later / turns.length;
    ends_here = later % turns.length == 0;
    place.cycle = CycleKind::later;
    place.records = values_until(later % turns.length, turns.hold, turns.hold);
  }
  place.wrapped = place.records >= (cycles == 0 ? turns.cycle.first : turns.cycle.later);
  entry.repetitions_done = cycles % entry.rounds();
  entry.finished =
      inner_stays_finished_ ? cycles >= entry.rounds() : ends_here && entry.repetitions_done == 0;
  if (entry.item->turns_with_repeats()) entry.item->seek_member(place);
}

}  // namespace korvex
