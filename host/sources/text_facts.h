#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "host/sources/saturating.h"
#include "host/sources/text_shape.h"
#include "host/ways/numbers.h"

// What can be known of texts before any of them is made.
namespace korvex::sources {

class Way;

using ways::Count;

// "1 record", "12 records".
inline std::string counted_records(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " record" : " records");
}

// From `start` on, the same comes again after every `period`.
struct Cycle {
  std::uint64_t start = 0;
  std::uint64_t period = 1;

  // So many are there in all.
  std::uint64_t length() const { return sum(start, period); }
};

// Of two that go side by side.
inline Cycle common_cycle(const Cycle& a, const Cycle& b) {
  return {std::max(a.start, b.start), common_multiple(a.period, b.period)};
}

// For how long things in a row differ.
struct Uniqueness {
  // So many from the first on are all different, for certain. At least 1.
  std::uint64_t different = 1;
  // Among so many and one more two are the same, for certain; endless where nothing is known. Equal
  // to the other where the answer is exact.
  std::uint64_t repeated = endless;

  bool is_exact() const { return different == repeated; }
};

// What is known of the texts of a field.
struct TextFacts {
  // How many different texts there are, as soon as there are `all_after` records; the upper bound
  // holds for any number.
  Count values;
  std::uint64_t all_after = endless;
  // From this record on none has a text; of those before it at most `gaps` have none.
  std::uint64_t end = endless;
  std::uint64_t gaps = endless;
  // So many of all records have no text, if not more.
  std::uint64_t least_empty = 0;
  // Of the texts, empty or not; nothing where none is known.
  std::optional<Cycle> cycle;
  // The way whose index alone decides the text; null where there is more to it.
  const Way* follows = nullptr;

  // How many of so many records, all that there are, have no text.
  Count empty(std::uint64_t records) const {
    const std::uint64_t after = records - std::min(end, records);
    return {std::min(std::max(least_empty, after), records), std::min(sum(gaps, after), records)};
  }
};

}  // namespace korvex::sources
