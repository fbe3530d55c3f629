#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "host/sources/dependencies.h"
#include "host/sources/groups.h"
#include "host/ways/key.h"
#include "host/ways/shares.h"
#include "host/ways/shuffle.h"
#include "host/ways/zipf.h"

namespace korvex::sources {

// No period reaches it.
constexpr std::uint64_t no_index = std::numeric_limits<std::uint64_t>::max();

// Which of a source's values a record takes. Of one thread.
class Way {
 public:
  virtual ~Way() = default;

  // The index, below the period that the way was made for; `no_index` where all values are used up.
  // An optional number, which compilers put together in memory, took three times as long.
  virtual std::uint64_t index(std::uint64_t record) = 0;

  // Makes each of some records its index: the same as one by one, in less time, above all for those
  // in a row.
  virtual void take(std::span<std::uint64_t> records) = 0;

  // So many of the first records have no index, and none from the end on; all others have one.
  virtual std::uint64_t gaps() const { return 0; }
  virtual std::uint64_t end() const { return endless; }
  bool gives_all() const { return gaps() == 0 && end() == endless; }

  // How many different indices are taken, as soon as there are `all_after()` records; the upper
  // bound holds for any number.
  virtual Count indices() const = 0;
  virtual std::uint64_t all_after() const { return endless; }

  // Whether the indices are taken one after the other.
  virtual bool is_in_order() const { return false; }

  // Of the indices; nothing where none is known.
  virtual std::optional<Cycle> cycle() const { return std::nullopt; }

  // Whether two of all records have the same index for certain, though there may be fewer records
  // than indices.
  virtual bool comes_twice() const { return false; }

  // What follows from the index (or from there being none), and what it follows from.
  virtual void tell(Dependencies&) const {}

  // How the indices follow each other, in words: "starts again after 3 records".
  virtual std::string course() const = 0;

  // Why the record does not follow from the index: "is ...". Asked only where it does not.
  virtual std::string doubt() const { return "is drawn"; }

  Thing thing() const { return {this}; }
};

// What follows when all of a source's values were taken.
enum class End {
  repeat,  // they are repeated
  stop,    // no more values
};

// Periods of all ways are from 1 to 2^63.

// In the source's own order. Without a period the index is the record's number.
std::unique_ptr<Way> forward();
std::unique_ptr<Way> forward(std::uint64_t period, End end);

// All before one is repeated, in another order each time. Fields with one key take one order.
std::unique_ptr<Way> shuffled(ways::Key key, std::uint64_t period, End end);

// One of several fields that together take all combinations before one is repeated; `item` is its
// place among their periods. Fields share the shuffle, so that a record's is computed once.
std::unique_ptr<Way> joint(std::shared_ptr<ways::JointShuffle> shuffle, std::size_t item, End end);

// Different ones within each group, as long as no group has more members than the period.
std::unique_ptr<Way> shuffled_within(ways::Key key, std::uint64_t period,
                                     std::shared_ptr<Groups> groups);

// With replacement: all alike, or the first more often than the others.
std::unique_ptr<Way> random(ways::Key key, std::uint64_t period);
std::unique_ptr<Way> zipf(ways::Key key, std::uint64_t period, ways::Skew skew);

// In exact shares of all records.
std::unique_ptr<Way> weighted(ways::KeyFor<ways::Use::weights> key,
                              const ways::Proportions& proportions, std::uint64_t records);

// The parent of each record, in another table or in its own.
std::unique_ptr<Way> parent_of(std::shared_ptr<Groups> groups);

// For records that refer to their own table: any record before, drawn evenly; none for the first.
std::unique_ptr<Way> any_before(ways::Key key);

}  // namespace korvex::sources
