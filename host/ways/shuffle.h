#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/ways/permutation.h"
#include "host/ways/refusal.h"

// Indices without replacement. All follow from the key and the record alone; what these objects
// keep is the order that was asked for last, which records in a row share. So one object is of one
// thread.
namespace korvex::ways {

// The orders of one key, with the one that was asked for last kept.
class Orders {
 public:
  explicit Orders(Key key) : key_(key) {}

  const Permutation& of(std::uint64_t n, Tweak tweak) {
    if (!latest_ || tweak != tweak_ || latest_->size() != n) {
      latest_.emplace(key_, n, tweak);
      tweak_ = tweak;
    }
    return *latest_;
  }

 private:
  Key key_;
  Tweak tweak_;
  std::optional<Permutation> latest_;
};

// In which round of a period records are, and at which place of it. Divides only where another
// round begins than that of the record before.
class Rounds {
 public:
  // For periods from 1 on.
  explicit Rounds(std::uint64_t period) : period_(period) {}

  std::uint64_t place_of(std::uint64_t record) {
    if (record - begin_ >= period_) {
      latest_ = record / period_;
      begin_ = latest_ * period_;
    }
    return record - begin_;
  }

  // That of the record whose place was asked for last.
  std::uint64_t latest() const { return latest_; }

  // Makes the first of some records its place in its round, and so those after it that are in the
  // same one: answers how many. For one record at least.
  std::size_t take_places(std::span<std::uint64_t> records) {
    records.front() = place_of(records.front());
    std::size_t count = 1;
    while (count < records.size() && records[count] - begin_ < period_) records[count++] -= begin_;
    return count;
  }

  std::uint64_t period() const { return period_; }

 private:
  std::uint64_t period_;
  std::uint64_t latest_ = 0;
  std::uint64_t begin_ = 0;  // of the latest round
};

// Every index below the period once in each round, every round in an order of its own.
class Shuffle {
 public:
  // For periods from 1 to 2^63.
  Shuffle(Key key, std::uint64_t period) : orders_(key), rounds_(period) {}

  std::uint64_t at(std::uint64_t record) {
    const std::uint64_t place = rounds_.place_of(record);
    return order().at(place);
  }

  // Makes each of some records its index, those in a row in the least time.
  void take(std::span<std::uint64_t> records) {
    while (!records.empty()) {
      const std::size_t count = rounds_.take_places(records);
      order().take(records.first(count));
      records = records.subspan(count);
    }
  }

 private:
  // Of the latest round.
  const Permutation& order() { return orders_.of(rounds_.period(), {.round = rounds_.latest()}); }

  Orders orders_;
  Rounds rounds_;
};

// Every combination of the indices of several items once before any comes again: one shuffle over
// the product of their periods.
class JointShuffle {
 public:
  // Refused when there are more than 2^63 combinations. Needs a period, each of at least 1.
  static Result<JointShuffle> make(KeyFor<Use::joint> key, std::span<const std::uint64_t> periods);

  std::uint64_t combinations() const { return combinations_; }
  std::size_t items() const { return parts_.size(); }
  std::uint64_t period(std::size_t item) const { return parts_[item].period; }

  // The index of one of the items, by its place among the periods.
  std::uint64_t at(std::uint64_t record, std::size_t item);

  // Makes each of some records the index of one of the items.
  void take(std::span<std::uint64_t> records, std::size_t item);

 private:
  // An item's index is the combination divided by those before it, modulo its period.
  struct Part {
    std::uint64_t divisor;
    std::uint64_t period;

    std::uint64_t of(std::uint64_t combination) const { return combination / divisor % period; }
  };

  JointShuffle(KeyFor<Use::joint> key, std::vector<Part> parts, std::uint64_t combinations)
      : shuffle_(key, combinations), parts_(std::move(parts)), combinations_(combinations) {}

  Shuffle shuffle_;
  std::vector<Part> parts_;
  std::uint64_t combinations_;
  // All items ask for the same record.
  std::optional<std::uint64_t> latest_record_;
  std::uint64_t latest_combination_ = 0;
};

// Indices that differ within a group: the members of a parent take the period in an order that is
// the parent's own. A group of more members than the period goes round again, in another order.
class ShuffleWithin {
 public:
  // For periods from 1 to 2^63.
  ShuffleWithin(Key key, std::uint64_t period) : orders_(key), rounds_(period) {}

  // `member`: its place within the group, from 0.
  std::uint64_t at(std::uint64_t parent, std::uint64_t member) {
    const std::uint64_t place = rounds_.place_of(member);
    return orders_.of(rounds_.period(), {.round = rounds_.latest(), .parent = parent}).at(place);
  }

 private:
  Orders orders_;
  Rounds rounds_;
};

}  // namespace korvex::ways
