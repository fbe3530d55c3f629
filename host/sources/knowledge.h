#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace korvex::sources {

constexpr std::uint64_t endless = std::numeric_limits<std::uint64_t>::max();

// Something that each record has one of: the text of a field, an index, a parent, its own number.
// It is known by an object of the plan, and by a number where that object stands for several.
struct Thing {
  const void* owner = nullptr;
  std::size_t part = 0;

  bool operator==(const Thing&) const = default;
};

// The record's own number: who knows it knows the record.
inline constexpr Thing the_record;

// What follows from what: records with the same of some things have the same of another. Uniqueness
// is nothing else than that the record itself follows.
class Knowledge {
 public:
  // `to` follows from all of `from` together, among the first `records` records.
  void add(std::vector<Thing> from, Thing to, std::uint64_t records = endless);

  // Among how many first records `wanted` follows from what is known, as far as the rules tell; 0
  // when it does not follow.
  std::uint64_t records_where(const std::vector<Thing>& known, Thing wanted) const;

 private:
  struct Rule {
    std::vector<Thing> from;
    Thing to;
    std::uint64_t records;
  };

  std::vector<Rule> rules_;
};

}  // namespace korvex::sources
