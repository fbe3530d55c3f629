#include "host/sources/way.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "host/ways/draw.h"

namespace korvex::sources {
namespace {

// A way that takes records one by one, without a virtual call for each.
template <class Own, class Base = Way>
class OneByOne : public Base {
 public:
  using Base::Base;

  void take(std::span<std::uint64_t> records) override {
    for (std::uint64_t& record : records) record = static_cast<Own*>(this)->Own::index(record);
  }
};

class Counting : public OneByOne<Counting> {
 public:
  std::uint64_t index(std::uint64_t record) override { return record; }
  Count indices() const override { return Count::of(endless); }
  bool is_in_order() const override { return true; }
  void tell(Dependencies& dependencies) const override { dependencies.add({thing()}, the_record); }
  std::string course() const override { return "follows the record"; }
};

// Goes through all indices of a period, round after round.
class InRounds : public Way {
 public:
  InRounds(std::uint64_t period, End end) : period_(period), end_(end) { assert(period >= 1); }

  std::uint64_t end() const override { return stops() ? period_ : endless; }
  Count indices() const override { return Count::of(period_); }
  std::uint64_t all_after() const override { return period_; }

  // Once they are over, records are alike.
  std::optional<Cycle> cycle() const override {
    if (stops()) return Cycle{period_, 1};
    return {};
  }

  void tell(Dependencies& dependencies) const override {
    if (const auto known = cycle()) {
      dependencies.add_cycle(thing(), *known);
    } else {
      dependencies.add({thing()}, the_record, period_);
    }
  }

  std::string doubt() const override { return after_a_round("is repeated"); }

 protected:
  std::uint64_t period() const { return period_; }

  // What comes when all have come, unless they stop.
  std::string after_a_round(const char* what) const {
    return (stops() ? "is empty" : what) + (" after " + counted_records(period_));
  }
  bool stops() const { return end_ == End::stop; }
  bool is_over(std::uint64_t record) const { return record >= period_ && stops(); }

 private:
  std::uint64_t period_;
  End end_;
};

class InOrder : public OneByOne<InOrder, InRounds> {
 public:
  InOrder(std::uint64_t period, End end) : OneByOne(period, end), rounds_(period) {}

  std::uint64_t index(std::uint64_t record) override {
    return is_over(record) ? no_index : rounds_.place_of(record);
  }
  bool is_in_order() const override { return true; }
  std::optional<Cycle> cycle() const override {
    if (stops()) return InRounds::cycle();
    return Cycle{0, period()};
  }
  std::string course() const override { return after_a_round("starts again"); }

 private:
  ways::Rounds rounds_;
};

class Shuffled : public OneByOne<Shuffled, InRounds> {
 public:
  Shuffled(ways::Key key, std::uint64_t period, End end)
      : OneByOne(period, end), shuffle_(key, period) {}

  std::uint64_t index(std::uint64_t record) override {
    return is_over(record) ? no_index : shuffle_.at(record);
  }
  void take(std::span<std::uint64_t> records) override {
    if (stops()) {
      OneByOne::take(records);
    } else {
      shuffle_.take(records);
    }
  }

  std::string course() const override {
    return "shuffled, " + after_a_round("starts again in another order");
  }

 private:
  ways::Shuffle shuffle_;
};

class Joint : public OneByOne<Joint, InRounds> {
 public:
  Joint(std::shared_ptr<ways::JointShuffle> shuffle, std::size_t item, End end)
      : OneByOne(shuffle->combinations(), end), shuffle_(std::move(shuffle)), item_(item) {}

  std::uint64_t index(std::uint64_t record) override {
    return is_over(record) ? no_index : shuffle_->at(record, item_);
  }
  void take(std::span<std::uint64_t> records) override {
    if (stops()) {
      OneByOne::take(records);
    } else {
      shuffle_->take(records, item_);
    }
  }
  Count indices() const override { return Count::of(shuffle_->period(item_)); }

  // Only all items together are the record. One that ends knows whether the end has come.
  void tell(Dependencies& dependencies) const override {
    const Thing combination = {shuffle_.get(), shuffle_->items()};
    dependencies.add({thing()}, {shuffle_.get(), item_});
    if (stops()) {
      const Thing combination_or_none = {this, 1};
      dependencies.add({combination, thing()}, combination_or_none);
      dependencies.add_cycle(combination_or_none, *cycle());
    }
    if (!dependencies.is_new(combination)) return;
    std::vector<Thing> items;
    for (std::size_t i = 0; i < shuffle_->items(); ++i) items.push_back({shuffle_.get(), i});
    dependencies.add(std::move(items), combination);
    dependencies.add({combination}, the_record, shuffle_->combinations());
  }

  std::string course() const override {
    return "shuffled, every combination once, " + after_a_round("starts again");
  }

  std::string doubt() const override {
    return "differs only together with all items of its joint order";
  }

 private:
  std::shared_ptr<ways::JointShuffle> shuffle_;
  std::size_t item_;
};

class Within : public OneByOne<Within> {
  static constexpr std::uint64_t nobody = endless;

 public:
  Within(ways::Key key, std::uint64_t period, std::shared_ptr<Groups> groups)
      : shuffle_(key, period), period_(period), groups_(std::move(groups)) {}

  Count indices() const override { return {1, period_}; }

  void tell(Dependencies& dependencies) const override {
    groups_->tell(dependencies);
    if (groups_->largest().most > period_) return;
    dependencies.add({thing(), groups_->parent_thing()}, groups_->line_thing());
  }

  std::string course() const override {
    const std::uint64_t largest = groups_->largest().most;
    return "shuffled within each group" +
           (largest > period_ ? ", starts again in groups of more than " + counted_records(period_)
                              : "");
  }

  std::string doubt() const override { return "differs only within its group"; }

  std::uint64_t index(std::uint64_t record) override {
    // The first record of a tree is alone in a group of no parent.
    const ways::Member alone = {.parent = nobody};
    const ways::Member member = groups_->member(record).value_or(alone);
    return shuffle_.at(member.parent, member.place);
  }

 private:
  ways::ShuffleWithin shuffle_;
  std::uint64_t period_;
  std::shared_ptr<Groups> groups_;
};

class Random : public OneByOne<Random> {
 public:
  Random(ways::Key key, std::uint64_t period) : key_(key), period_(period) {}

  std::uint64_t index(std::uint64_t record) override {
    return ways::draw_below(key_, record, period_);
  }

  Count indices() const override { return {1, period_}; }
  std::string course() const override { return "drawn"; }

 private:
  ways::Key key_;
  std::uint64_t period_;
};

class ByZipf : public OneByOne<ByZipf> {
 public:
  ByZipf(ways::Key key, std::uint64_t period, ways::Skew skew)
      : zipf_(key, period, skew), period_(period) {}

  std::uint64_t index(std::uint64_t record) override { return zipf_.at(record); }
  Count indices() const override { return {1, period_}; }
  std::string course() const override { return "drawn, the first values most often"; }

 private:
  ways::Zipf zipf_;
  std::uint64_t period_;
};

class Weighted : public Way {
 public:
  Weighted(ways::Key key, const ways::Proportions& proportions, std::uint64_t records)
      : shares_(key, proportions, records), records_(records) {
    for (std::size_t i = 0; i < proportions.categories(); ++i) {
      const std::uint64_t count = shares_.count(i);
      taken_ += count > 0;
      largest_ = std::max(largest_, count);
    }
  }

  std::uint64_t index(std::uint64_t record) override { return shares_.category_of(record); }
  void take(std::span<std::uint64_t> records) override { shares_.take(records); }

  Count indices() const override { return Count::of(taken_); }
  std::string course() const override { return "drawn in exact shares"; }
  std::uint64_t all_after() const override { return records_; }
  bool comes_twice() const override { return largest_ > 1; }
  void tell(Dependencies& dependencies) const override {
    if (largest_ <= 1) dependencies.add({thing()}, the_record);
  }

 private:
  ways::ExactShares shares_;
  std::uint64_t records_;
  std::uint64_t taken_ = 0;
  std::uint64_t largest_ = 0;
};

class ParentOf : public OneByOne<ParentOf> {
 public:
  explicit ParentOf(std::shared_ptr<Groups> groups) : groups_(std::move(groups)) {}

  std::uint64_t index(std::uint64_t record) override {
    const std::optional<ways::Member> member = groups_->member(record);
    if (!member) return no_index;
    return member->parent;
  }

  // The first record of a tree has none.
  std::uint64_t gaps() const override { return groups_->have_all() ? 0 : 1; }
  Count indices() const override { return groups_->parents_with_records(); }
  std::string course() const override {
    return "in groups of up to " + counted_records(groups_->largest().most);
  }
  std::uint64_t all_after() const override { return groups_->records(); }
  bool comes_twice() const override { return groups_->largest().least > 1; }

  void tell(Dependencies& dependencies) const override {
    groups_->tell(dependencies);
    dependencies.add({thing()}, groups_->parent_thing());
  }

  std::string doubt() const override { return "has several records for a value"; }

 private:
  std::shared_ptr<Groups> groups_;
};

class AnyBefore : public OneByOne<AnyBefore> {
 public:
  explicit AnyBefore(ways::Key key) : key_(key) {}

  std::uint64_t index(std::uint64_t record) override {
    if (record == 0) return no_index;
    return ways::draw_below(key_, record, record);
  }

  std::uint64_t gaps() const override { return 1; }
  Count indices() const override { return {}; }
  std::string course() const override { return "an earlier record, drawn"; }

 private:
  ways::Key key_;
};

}  // namespace

std::unique_ptr<Way> forward() { return std::make_unique<Counting>(); }

std::unique_ptr<Way> forward(std::uint64_t period, End end) {
  return std::make_unique<InOrder>(period, end);
}

std::unique_ptr<Way> shuffled(ways::Key key, std::uint64_t period, End end) {
  return std::make_unique<Shuffled>(key, period, end);
}

std::unique_ptr<Way> joint(std::shared_ptr<ways::JointShuffle> shuffle, std::size_t item, End end) {
  return std::make_unique<Joint>(std::move(shuffle), item, end);
}

std::unique_ptr<Way> shuffled_within(ways::Key key, std::uint64_t period,
                                     std::shared_ptr<Groups> groups) {
  return std::make_unique<Within>(key, period, std::move(groups));
}

std::unique_ptr<Way> random(ways::Key key, std::uint64_t period) {
  return std::make_unique<Random>(key, period);
}

std::unique_ptr<Way> zipf(ways::Key key, std::uint64_t period, ways::Skew skew) {
  return std::make_unique<ByZipf>(key, period, skew);
}

std::unique_ptr<Way> weighted(ways::KeyFor<ways::Use::weights> key,
                              const ways::Proportions& proportions, std::uint64_t records) {
  return std::make_unique<Weighted>(key, proportions, records);
}

std::unique_ptr<Way> parent_of(std::shared_ptr<Groups> groups) {
  return std::make_unique<ParentOf>(std::move(groups));
}

std::unique_ptr<Way> any_before(ways::Key key) { return std::make_unique<AnyBefore>(key); }

}  // namespace korvex::sources
