#pragma once

#include <array>
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

// Numbers of records in a row, found together once two records in a row were asked for.
class NumbersAhead {
 public:
  // `find` gives the numbers of the record and those after it, as many as it can, at least one.
  template <typename Find>
  std::uint64_t at(std::uint64_t record, Find find) {
    const std::uint64_t ahead = record - first_;
    if (ahead < known_) return numbers_[ahead];
    const bool is_next = ahead == known_ && known_ > 0;
    first_ = record;
    known_ = find(std::span(numbers_).first(is_next ? numbers_.size() : 1));
    return numbers_.front();
  }

 private:
  std::array<std::uint64_t, 16> numbers_ = {};
  std::uint64_t first_ = 0;  // record
  std::uint64_t known_ = 0;
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
    return indices_.at(record, [&](std::span<std::uint64_t> indices) {
      const std::uint64_t place = rounds_.place_of(record);
      const Permutation& order = orders_.of(rounds_.period(), {.round = rounds_.latest()});
      return order.at(place, indices);
    });
  }

 private:
  Orders orders_;
  Rounds rounds_;
  NumbersAhead indices_;
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

 private:
  // An item's index is the combination divided by those before it, modulo its period.
  struct Part {
    std::uint64_t divisor;
    std::uint64_t period;
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
