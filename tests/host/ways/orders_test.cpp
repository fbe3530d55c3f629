#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <span>
#include <vector>

#include "host/ways/mixing.h"
#include "host/ways/numbers.h"
#include "host/ways/pairs.h"
#include "host/ways/permutation.h"
#include "host/ways/shares.h"
#include "host/ways/shuffle.h"
#include "host/ways/statistics.h"

namespace korvex::ways {
namespace {

constexpr Key order_key{0x0123456789ABCDEF};

TEST(Permutations, TakeEveryPlaceOnceAndKnowTheWayBack) {
  for (std::uint64_t n = 1; n <= 3000; ++n) {
    const Permutation order(order_key, n, {.round = n / 7, .parent = n % 7});
    std::vector<bool> taken(n);
    for (std::uint64_t place = 0; place < n; ++place) {
      const std::uint64_t number = order.at(place);
      ASSERT_LT(number, n);
      ASSERT_FALSE(taken[number]) << n;
      taken[number] = true;
      ASSERT_EQ(order.place_of(number), place) << n;
    }
  }
}

TEST(Permutations, ComeBackFromAnywhereInLargeOnes) {
  std::vector<std::uint64_t> sizes = {most_indices, most_indices - 1};
  for (std::uint64_t bits = 12; bits < 63; ++bits) {
    const std::uint64_t power = std::uint64_t{1} << bits;
    sizes.insert(sizes.end(), {power - 1, power, power + 1, power + absorb(bits, 0) % power});
  }
  for (const std::uint64_t n : sizes) {
    const Permutation order(order_key, n);
    std::set<std::uint64_t> numbers;
    for (std::uint64_t i = 0; i < 400; ++i) {
      const std::uint64_t place = i < 100 ? i : i < 200 ? n - i + 99 : absorb(n, i) % n;
      const std::uint64_t number = order.at(place);
      ASSERT_LT(number, n);
      ASSERT_EQ(order.place_of(number), place) << n;
    }
  }
}

// The two sources of different orders, which must be as good as one another.
Permutation drawn(std::uint64_t i, std::uint64_t n, bool by_key) {
  return by_key ? Permutation(Key{scatter(i)}, n) : Permutation(order_key, n, {.round = i});
}

TEST(Permutations, GiveEveryOrderOfSixNumbersAlike) {
  for (const bool by_key : {false, true}) {
    std::map<std::vector<std::uint64_t>, std::uint64_t> counts;
    for (std::uint64_t i = 0; i < 72'000; ++i) {
      const Permutation order = drawn(i, 6, by_key);
      std::vector<std::uint64_t> numbers;
      for (std::uint64_t place = 0; place < 6; ++place) numbers.push_back(order.at(place));
      ++counts[numbers];
    }
    ASSERT_EQ(counts.size(), 720);
    std::vector<std::uint64_t> frequencies;
    for (const auto& [order, count] : counts) frequencies.push_back(count);
    EXPECT_LT(unevenness(frequencies), surely_uneven);
  }
}

// Neighbours, the two ends, and two places that share their remainder, where few steps would show.
TEST(Permutations, GiveEveryPairOfNumbersAlikeWhereverTheyStand) {
  for (const std::uint64_t n : {16U, 66U, 100U}) {
    for (const std::uint64_t second : {std::uint64_t{1}, n / 2, n - 1}) {
      for (const bool by_key : {false, true}) {
        std::vector<std::uint64_t> counts(n * n);
        for (std::uint64_t i = 0; i < 40 * n * n; ++i) {
          const Permutation order = drawn(i, n, by_key);
          ++counts[order.at(0) * n + order.at(second)];
        }
        for (std::uint64_t i = n; i > 0; --i) {
          ASSERT_EQ(counts[(i - 1) * (n + 1)], 0);
          counts.erase(counts.begin() + static_cast<std::ptrdiff_t>((i - 1) * (n + 1)));
        }
        EXPECT_LT(unevenness(counts), surely_uneven) << n << ", " << second;
      }
    }
  }
}

TEST(Permutations, ScatterNeighboursOverAllNumbers) {
  constexpr std::uint64_t cells = 32;
  for (const std::uint64_t n : {std::uint64_t{1'000'003}, std::uint64_t{1} << 20, most_indices}) {
    const Permutation order(order_key, n);
    std::vector<std::uint64_t> counts(cells * cells);
    for (std::uint64_t place = 0; place < 200'000; ++place) {
      const auto cell = [&](std::uint64_t number) {
        return static_cast<std::uint64_t>(Wide{number} * cells / n);
      };
      ++counts[cell(order.at(place)) * cells + cell(order.at(place + 1))];
    }
    EXPECT_LT(unevenness(counts), surely_uneven) << n;
  }
}

TEST(Shuffles, TakeEveryIndexOnceInEachRoundOfAnotherOrder) {
  for (const std::uint64_t period : {1U, 2U, 300U, 5000U}) {
    Shuffle shuffle(order_key, period);
    std::set<std::vector<std::uint64_t>> orders;
    for (std::uint64_t round = 0; round < 4; ++round) {
      std::vector<std::uint64_t> order;
      for (std::uint64_t i = 0; i < period; ++i) order.push_back(shuffle.at(round * period + i));
      orders.insert(order);
      std::sort(order.begin(), order.end());
      for (std::uint64_t i = 0; i < period; ++i) ASSERT_EQ(order[i], i);
    }
    EXPECT_EQ(orders.size(), std::min<std::uint64_t>(period, 4));
  }
}

// With one order in every round, two lists would give no more pairs than their rounds have records.
TEST(Shuffles, OfTwoListsOfOneSizeDoNotMarchTogether) {
  Shuffle first(Key{1}, 300);
  Shuffle second(Key{2}, 300);
  std::set<std::pair<std::uint64_t, std::uint64_t>> pairs;
  for (std::uint64_t record = 0; record < 100'000; ++record) {
    pairs.emplace(first.at(record), second.at(record));
  }
  EXPECT_NEAR(static_cast<double>(pairs.size()), 60'370, 500);  // 90,000 * (1 - exp(-10 / 9))
}

// What takes many records at once, in rows of several lengths, beside what takes one at a time.
template <typename Together, typename OneByOne>
void expect_same(Together together, OneByOne one_by_one, std::uint64_t end) {
  std::uint64_t record = 0;
  for (std::size_t row = 1; record < end; row = row % 61 + 3) {
    std::vector<std::uint64_t> taken(row);
    std::iota(taken.begin(), taken.end(), record);
    // Not all in a row: the last one comes from elsewhere.
    taken.back() = (record * 7 + 5) % end;
    std::vector<std::uint64_t> expected;
    for (const std::uint64_t each : taken) expected.push_back(one_by_one(each));
    together(std::span(taken));
    ASSERT_EQ(taken, expected) << record;
    record += row;
  }
}

TEST(Orders, TakeManyAtOnceAsOneByOne) {
  for (const std::uint64_t n : {1U, 5U, 64U, 65U, 256U, 300U, 4096U, 5000U}) {
    SCOPED_TRACE(n);
    Shuffle together(order_key, n);
    Shuffle one(order_key, n);
    expect_same([&](auto records) { together.take(records); },
                [&](std::uint64_t record) { return one.at(record); }, 9000);
    const std::vector<std::uint64_t> periods = {3, n};
    JointShuffle joint = *JointShuffle::make({{n}}, periods);
    JointShuffle other = joint;
    expect_same([&](auto records) { joint.take(records, 1); },
                [&](std::uint64_t record) { return other.at(record, 1); }, 9000);
    const Proportions shares = Proportions::of_share({1, n});
    ExactShares dealt(order_key, shares, 9000);
    ExactShares again(order_key, shares, 9000);
    expect_same([&](auto records) { dealt.take(records); },
                [&](std::uint64_t record) { return again.category_of(record); }, 8900);
  }
}

TEST(JointShuffles, TakeEveryCombinationOnce) {
  const std::vector<std::uint64_t> periods = {7, 1, 30, 11};
  Result<JointShuffle> joint = JointShuffle::make({{5}}, periods);
  ASSERT_TRUE(joint);
  ASSERT_EQ(joint->combinations(), 2310);
  for (std::uint64_t round = 0; round < 2; ++round) {
    std::set<std::vector<std::uint64_t>> combinations;
    for (std::uint64_t i = 0; i < joint->combinations(); ++i) {
      std::vector<std::uint64_t> combination;
      for (std::size_t item = 0; item < periods.size(); ++item) {
        combination.push_back(joint->at(round * joint->combinations() + i, item));
        ASSERT_LT(combination.back(), periods[item]);
      }
      combinations.insert(combination);
    }
    EXPECT_EQ(combinations.size(), joint->combinations());
  }
}

TEST(JointShuffles, AreRefusedOnlyAboveTheMostIndices) {
  const std::vector<std::uint64_t> most = {std::uint64_t{1} << 32, 1, std::uint64_t{1} << 31};
  ASSERT_TRUE(JointShuffle::make({}, most));
  EXPECT_EQ(JointShuffle::make({}, most)->combinations(), most_indices);
  EXPECT_FALSE(JointShuffle::make({}, std::vector<std::uint64_t>{most_indices - 1, 2}));
  EXPECT_FALSE(JointShuffle::make({}, std::vector<std::uint64_t>{most_indices, most_indices, 3}));
}

TEST(ShufflesWithin, DifferWithinAGroupAndBetweenGroups) {
  ShuffleWithin within(order_key, 50);
  std::set<std::vector<std::uint64_t>> orders;
  for (std::uint64_t parent = 0; parent < 20; ++parent) {
    std::vector<std::uint64_t> order;
    for (std::uint64_t member = 0; member < 50; ++member)
      order.push_back(within.at(parent, member));
    EXPECT_EQ(std::set(order.begin(), order.end()).size(), 50);
    EXPECT_LT(within.at(parent, 50), 50);  // goes round again
    orders.insert(order);
  }
  EXPECT_EQ(orders.size(), 20);
}

TEST(Pairs, AreAllThereOnceAndExactAtTheEnd) {
  std::uint64_t place = 0;
  for (std::uint64_t upper = 1; upper < 300; ++upper) {
    for (std::uint64_t lower = 0; lower < upper; ++lower) {
      ASSERT_EQ(pair_at(place++), (IndexPair{lower, upper}));
    }
  }
  for (const std::uint64_t n : {most_in_pairs, most_in_pairs - 1, std::uint64_t{3'037'000'500}}) {
    EXPECT_EQ(pair_at(pair_count(n) - 1), (IndexPair{n - 2, n - 1}));
    EXPECT_EQ(pair_at(pair_count(n - 1)), (IndexPair{0, n - 1}));
  }
  PairShuffle pairs(order_key, 20);
  std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
  for (std::uint64_t record = 0; record < 190; ++record) {
    const IndexPair pair = pairs.at(record);
    seen.emplace(pair.lower, pair.upper);
    ASSERT_LT(pair.lower, pair.upper);
  }
  EXPECT_EQ(seen.size(), 190);
}

}  // namespace
}  // namespace korvex::ways
