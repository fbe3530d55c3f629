#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "generate/item_settings.h"

namespace korvex::test {

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

 private:
  // One directive with the texts of its start and end values.
  struct Directive {
    std::string text;
    std::string start;
    std::string end;
    std::int32_t size = 0;
  };
  struct Pair {
    std::int64_t start = 0;
    std::int64_t end = 0;
  };

  ItemSettings propose();
  ItemSettings propose_numeric();
  ItemSettings propose_character();
  ItemSettings propose_national();
  ItemSettings propose_moment();

  Pair pair(std::int64_t low, std::int64_t high);
  Directive signed_number(int digits);
  Directive unsigned_number(int digits);
  Directive letters();
  Directive full_width(int most);
  Directive date();
  Directive unchecked_date();
  Directive time();
  Directive timestamp();
  Directive any_for_character(bool first);
  std::string fixed_text(int most);
  std::string odd_fields(ClFmtColInf& column);

  std::mt19937 random_;
  int most_steps_;
  // Of the item being drawn.
  bool down_ = false;
  std::int64_t increment_ = 1;  // in units of the last digit
  int decimals_ = 0;
  bool signed_ = false;
};

}  // namespace korvex::test
