#include "run/repeat_table.h"

#include <algorithm>
#include <unordered_map>

#include "run/item_generator.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

const FmtColRec* repeat_settings(const ClColMain& main, const ClDGCol& item) {
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  return column != nullptr && column->record.repeat_flag != 0 ? &column->record : nullptr;
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
    has_outermost |= settings->repeat_level == outermost_level;
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
    main.largest_repeat_count = static_cast<std::int32_t>(limit);
    return error::too_many_repeats;
  }

  std::sort(entries_.begin(), entries_.end(), [](const auto& left, const auto& right) {
    return left->repeat_level < right->repeat_level;
  });
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    entries_[i]->level_order = static_cast<std::int32_t>(i) + 1;
  }
  entries_.back()->innermost = true;
  return error::none;
}

ClRepeatData* RepeatTable::find_level(RepeatLevel repeat_level) const {
  const auto place = by_level_.find(repeat_level);
  return place == by_level_.end() ? nullptr : place->second;
}

ClRepeatData* RepeatTable::next_inner(const ClRepeatData& entry) const {
  const auto next = static_cast<std::size_t>(entry.level_order);
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
    if (++entry.repetitions_done >= entry.repeat_count) {
      entry.finished = true;
      entry.repetitions_done = 0;
    }
    if (entry.is_outermost() && entry.finished) return true;
  }
  return false;
}

bool RepeatTable::nest() {
  Steps records = 1;
  for (auto place = entries_.rbegin(); place != entries_.rend(); ++place) {
    ClRepeatData& entry = **place;
    const std::optional<Steps> cycle = entry.item->cycle();
    if (!cycle || (entry.innermost && entries_.size() > 1 && *cycle == 1)) return false;
    entry.hold = records;
    records = product(records, product(entry.rounds(), *cycle));
  }
  end_ = records;
  return true;
}

bool RepeatTable::seek(Steps record) {
  const bool is_over = record >= end_;
  for (const auto& entry : entries_) {
    if (is_over) {
      entry->item->rewind();
      entry->item->skip(record - end_);
      continue;
    }
    const Steps turn = product(entry->hold, *entry->item->cycle());
    const Steps values = record / entry->hold + (record % entry->hold != 0 ? 1 : 0);
    entry->repetitions_done = static_cast<std::int32_t>(record / turn % entry->rounds());
    entry->finished = record > 0 && record % product(turn, entry->rounds()) == 0;
    // The last value of a cycle waits for the inner levels before its end counts.
    const bool is_wrapped = values > 0 && values % *entry->item->cycle() == 0 && record % turn != 0;
    entry->item->seek_member(values, is_wrapped);
  }
  return is_over;
}

void RepeatTable::rewind() {
  for (const auto& entry : entries_) {
    entry->repetitions_done = 0;
    entry->finished = false;
  }
}

std::vector<ItemGenerator*> RepeatTable::items() const {
  std::vector<ItemGenerator*> items;
  for (const auto& entry : entries_) items.push_back(entry->item);
  return items;
}

}  // namespace korvex
