#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "host/ways/draw.h"
#include "host/ways/fraction.h"
#include "host/ways/key.h"
#include "host/ways/numbers.h"
#include "host/ways/shares.h"
#include "host/ways/statistics.h"
#include "host/ways/zipf.h"

namespace korvex::ways {
namespace {

constexpr Key draw_key{0x0123456789ABCDEF};

TEST(Keys, DifferInEveryPartOfTheirOrigin) {
  const KeyOrigin origins[] = {
      {0, "shop", "CITY"},
      {1, "shop", "CITY"},
      {0, "shop", "CITy"},
      {0, "shopC", "ITY"},
      {0, "", "shopCITY"},
      {0, "shopCITY", ""},
      {0, "CITY", "shop"},
      {0, "shop", "CITY "},
      {0, "shop", "\u00FC"},
      {0, "shop", "u\u0308"},
      {0, "", ""},
      {0, "", {"\0", 1}},
      {0, "12345678", "1234567"},
      {0, "1234567", "81234567"},
  };
  std::map<std::uint64_t, int> seen;
  for (const KeyOrigin& origin : origins) {
    for (const Use use :
         {Use::order, Use::empty, Use::weights, Use::group, Use::each, Use::joint}) {
      EXPECT_EQ(++seen[key_bits(origin, use)], 1) << origin.layout_salt << "/" << origin.item_salt;
    }
  }
}

// Neighbouring seeds, names and uses are the likeliest to be related.
TEST(Keys, GiveDrawsThatAreNotCorrelated) {
  const Key keys[] = {
      make_key<Use::order>({0, "t", "A1"}),   make_key<Use::empty>({0, "t", "A1"}),
      make_key<Use::weights>({0, "t", "A1"}), make_key<Use::order>({0, "t", "A2"}),
      make_key<Use::order>({1, "t", "A1"}),   make_key<Use::order>({0, "u", "A1"}),
  };
  constexpr std::uint64_t cells = 10;
  for (const Key& first : keys) {
    for (const Key& second : keys) {
      for (const std::uint64_t lag : {0U, 1U, 2U}) {
        if (&first == &second && lag == 0) continue;
        std::vector<std::uint64_t> counts(cells * cells);
        for (std::uint64_t record = 0; record < 20'000; ++record) {
          ++counts[draw_below(first, record, cells) * cells +
                   draw_below(second, record + lag, cells)];
        }
        EXPECT_LT(unevenness(counts), surely_uneven);
      }
    }
  }
}

TEST(Draws, AreEvenUpToTheLastOfTheirBounds) {
  // Of three parts of 2^64, two are numbers: a draw that is not repeated would favour the first.
  constexpr std::uint64_t bound = std::numeric_limits<std::uint64_t>::max() / 3 * 2;
  std::vector<std::uint64_t> thirds(3);
  std::vector<std::uint64_t> small(7);
  std::vector<std::uint64_t> quarters(4);
  constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  for (std::uint64_t record = 0; record < 60'000; ++record) {
    ++thirds[draw_below(draw_key, record, bound) / (bound / 3 + 1)];
    ++small[static_cast<std::size_t>(draw_between(draw_key, record, -3, 3) + 3)];
    ++quarters[static_cast<std::size_t>((draw_between(draw_key, record, least, most) >> 62) + 2)];
    ASSERT_EQ(draw_between(draw_key, record, most, most), most);
  }
  EXPECT_LT(unevenness(thirds), surely_uneven);
  EXPECT_LT(unevenness(small), surely_uneven);
  EXPECT_LT(unevenness(quarters), surely_uneven);
}

struct FractionCase {
  const char* text;
  std::uint64_t numerator;
  std::uint64_t denominator;  // 0 when it is refused
};

TEST(Fractions, AreReadExactlyOrRefused) {
  const FractionCase cases[] = {
      {"3", 3, 1},
      {"+0.10", 1, 10},
      {"1_000.50", 2001, 2},
      {"12.5e-2", 1, 8},
      {"1.1E1", 11, 1},
      {"00/7", 0, 1},
      {"4/6", 2, 3},
      {"0e999999999999999999999", 0, 1},
      {"0.000000000000000000000000000000000000000000", 0, 1},
      {"0.000000000000000001", 1, Fraction::most},
      {"1000000000000000000", Fraction::most, 1},
      {"100000000000000000000e-2", Fraction::most, 1},
      {"0.0000000000000000001", 0, 0},
      {"1000000000000000001", 0, 0},
      {"1e19", 0, 0},
      {"1e-99999999999999999999999999999999999999999", 0, 0},
      {"99999999999999999999999999999999999999999/3", 0, 0},
      {"", 0, 0},
      {"-0.1", 0, 0},
      {".5", 0, 0},
      {"5.", 0, 0},
      {"1e", 0, 0},
      {"1/0", 0, 0},
      {"1/2/3", 0, 0},
      {"_1", 0, 0},
      {"1_", 0, 0},
      {"1__0", 0, 0},
      {"0.5 ", 0, 0},
      {"nan", 0, 0},
      {"0x1", 0, 0},
  };
  for (const FractionCase& test : cases) {
    const Result<Fraction> read = parse_fraction(test.text);
    ASSERT_EQ(static_cast<bool>(read), test.denominator != 0) << test.text;
    if (!read) continue;
    EXPECT_EQ(*read, (Fraction{test.numerator, test.denominator})) << test.text;
  }
  EXPECT_TRUE(parse_share("1.0"));
  EXPECT_FALSE(parse_share("1.000000000000000001"));
}

Proportions proportions(std::initializer_list<const char*> weights) {
  std::vector<Fraction> fractions;
  for (const char* weight : weights) fractions.push_back(*parse_fraction(weight));
  return *Proportions::of_weights(fractions);
}

std::vector<std::uint64_t> counted(ExactShares& shares, std::size_t categories, std::uint64_t first,
                                   std::uint64_t end) {
  std::vector<std::uint64_t> counts(categories);
  for (std::uint64_t record = first; record < end; ++record) ++counts[shares.category_of(record)];
  return counts;
}

TEST(ExactShares, HoldInEveryWholeBlockAndToTheNearestRecordInTheLast) {
  const Proportions weights = proportions({"1/3", "0", "0.5", "1/6"});
  ASSERT_EQ(weights.parts(), 6);
  constexpr std::uint64_t block = 1026;
  for (const std::uint64_t rest : {0U, 1U, 2U, 3U, 500U, 1025U}) {
    const std::uint64_t records = 3 * block + rest;
    ExactShares shares(draw_key, weights, records);
    for (std::uint64_t begin = 0; begin < 3 * block; begin += block) {
      EXPECT_EQ(counted(shares, 4, begin, begin + block),
                (std::vector<std::uint64_t>{342, 0, 513, 171}));
    }
    const std::vector<std::uint64_t> all = counted(shares, 4, 0, records);
    for (std::size_t i = 0; i < all.size(); ++i) {
      EXPECT_EQ(shares.count(i), all[i]) << records;
      const double exact = static_cast<double>(records) *
                           (i == 0   ? 2
                            : i == 1 ? 0
                            : i == 2 ? 3
                                     : 1) /
                           6;
      EXPECT_LE(std::abs(static_cast<double>(all[i]) - exact), 1) << records;
    }
  }
}

TEST(ExactShares, ChangeOnlyTheLastBlockWhenRecordsGrow) {
  const Proportions share = Proportions::of_share({1, 20});
  constexpr std::uint64_t block = 1040;
  ExactShares fewer(draw_key, share, 2 * block + 100);
  ExactShares more(draw_key, share, 5 * block);
  std::uint64_t differences = 0;
  for (std::uint64_t record = 0; record < 2 * block + 100; ++record) {
    const bool is_same = fewer.category_of(record) == more.category_of(record);
    ASSERT_TRUE(is_same || record >= 2 * block) << record;
    differences += !is_same;
  }
  EXPECT_GT(differences, 0);
}

TEST(ExactShares, GoToTheirLimits) {
  const std::uint64_t most = Fraction::most;
  ExactShares rare(draw_key, Proportions::of_share({1, most}), most_records);
  EXPECT_EQ(rare.count(0), 1);
  EXPECT_EQ(rare.category_of(most_records - 1), 1);
  ExactShares all(draw_key, Proportions::of_share({1, 1}), most_records);
  EXPECT_EQ(all.count(0), most_records);
  EXPECT_EQ(all.category_of(0), 0);

  const auto refused = [](std::vector<Fraction> weights) {
    return !Proportions::of_weights(weights);
  };
  EXPECT_TRUE(refused({{0, 1}, {0, 5}}));
  EXPECT_TRUE(refused({{1, most}, {1, most - 1}}));
  EXPECT_TRUE(refused({{most, 1}, {1, 1}}));
  EXPECT_FALSE(refused({{most - 1, 1}, {1, 1}}));
}

// Over fixed ranges of ranks, up to those that are drawn cell by cell.
TEST(ZipfDraws, FollowTheLaw) {
  constexpr std::uint64_t records = 200'000;
  constexpr std::uint64_t n = 200'000;
  for (const double skew : {0.5, 1.1, 2.0}) {
    const Fraction exponent{static_cast<std::uint64_t>(std::lround(skew * 10)), 10};
    const Zipf zipf(draw_key, n, *Skew::make(exponent));
    std::map<int, double> expected;
    std::map<int, double> counts;
    double sum = 0;
    const auto range = [](std::uint64_t index) {
      return static_cast<int>(3 * std::log2(static_cast<double>(index + 1)));
    };
    for (std::uint64_t index = 0; index < n; ++index) {
      const double weight = std::pow(static_cast<double>(index + 1), -skew);
      expected[range(index)] += weight;
      sum += weight;
    }
    for (std::uint64_t record = 0; record < records; ++record) {
      const std::uint64_t index = zipf.at(record);
      ASSERT_LT(index, n);
      ++counts[range(index)];
    }
    for (const auto& [part, weight] : expected) {
      const double count = records * weight / sum;
      EXPECT_NEAR(counts[part], count, 4.5 * std::sqrt(count) + 1) << skew << ", " << part;
    }
  }
}

TEST(ZipfDraws, GoToTheirLimits) {
  EXPECT_FALSE(Skew::make({0, 1}));
  EXPECT_FALSE(Skew::make({Fraction::most, 99'999'999'999'999'999}));
  EXPECT_EQ(Zipf(draw_key, 1, Skew()).at(7), 0);
  for (const Fraction exponent : {Fraction{1, 100}, Fraction{10, 1}, Fraction{1, Fraction::most}}) {
    const Zipf widest(draw_key, most_indices, *Skew::make(exponent));
    const Zipf narrow(draw_key, 5000, *Skew::make(exponent));
    std::uint64_t largest = 0;
    for (std::uint64_t record = 0; record < 2000; ++record) {
      ASSERT_LT(widest.at(record), most_indices);
      ASSERT_LT(narrow.at(record), 5000);
      largest = std::max(largest, widest.at(record));
    }
    EXPECT_EQ(largest > most_indices / 2, exponent.denominator > 1);
  }
}

}  // namespace
}  // namespace korvex::ways
