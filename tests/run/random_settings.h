#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "run/run.h"
#include "settings/lvl_inf.h"

namespace korvex::test {

// What a person enters for one item.
struct ItemSettings {
  ItemAttributes item;
  RangeTexts texts;
  ExceededAction action = exceeded_action::repeat;
};

// The checked settings; null when a check refuses them.
std::unique_ptr<ClFmtColInf> checked_column(const ItemSettings& settings);

// One item as drawn, and what was done to its checked settings afterwards.
struct RandomItem {
  ItemSettings settings;
  std::string oddity;  // empty for settings as the checks left them
  std::unique_ptr<ClFmtColInf> column;

  // What a person needs to see the same item again.
  std::string description() const;
};

// Draws items of every attribute, kind and direction, whose values pass their ends, and the
// calendar's and the numbers' ends, within a few hundred records.
class RandomSettings {
 public:
  // `most_steps` is about how many records it takes to an item's end.
  explicit RandomSettings(std::uint32_t seed, int most_steps = 120)
      : random_(seed), most_steps_(most_steps) {}

  // Settings that a person could store.
  RandomItem draw();

  // Also fields that only a file from elsewhere can hold.
  RandomItem draw_odd();

  std::int64_t between(std::int64_t low, std::int64_t high);
  bool one_in(int count) { return between(1, count) == 1; }
  template <typename Choices>
  auto pick(const Choices& choices) {
    return choices[static_cast<std::size_t>(between(0, std::ssize(choices) - 1))];
  }

 private:
  std::mt19937 random_;
  int most_steps_;
};

// A run whose records have one item, with a copy of its settings.
class ItemRun : public Run {
 public:
  ItemRun(const ClFmtColInf& column, LayoutKind layout_kind, bool quotation = false);

 private:
  ClColMain main_;
};

}  // namespace korvex::test
