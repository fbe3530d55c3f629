#include "host/item_size.h"

#include <gtest/gtest.h>

namespace korvex::host {
namespace {

using Size = std::optional<std::int32_t>;

struct Case {
  const char* name;
  std::int32_t attribute;
  std::int32_t signed_flag;
  std::int32_t decimals;
  Size given_digits;
  Size given_length;
  std::int32_t digits;
  std::int32_t length;
};

class ItemSizes : public testing::TestWithParam<Case> {};

TEST_P(ItemSizes, AreCompleted) {
  const Case& c = GetParam();
  ItemAttributes item = {c.attribute, c.signed_flag, 0, 0, c.decimals};
  EXPECT_FALSE(complete_size({c.given_digits, c.given_length}, item));
  EXPECT_EQ(item.digits, c.digits);
  EXPECT_EQ(item.length, c.length);
}

constexpr auto none = std::nullopt;

INSTANTIATE_TEST_SUITE_P(Items, ItemSizes,
                         testing::Values(Case{"Character", 1, 1, 0, 5, none, 5, 5},
                                         Case{"CharacterByLength", 6, 0, 0, none, 8, 8, 8},
                                         Case{"CharacterWithoutDigits", 6, 0, 0, 0, 8, 0, 8},
                                         Case{"National", 11, 0, 0, 3, none, 3, 6},
                                         Case{"NationalByLength", 12, 0, 0, none, 7, 3, 7},
                                         Case{"Number", 4, 0, 0, 9, none, 9, 9},
                                         Case{"SignedFraction", 4, 1, 2, 9, none, 9, 11},
                                         Case{"NumberByLength", 19, 1, 2, none, 9, 7, 9},
                                         Case{"BothGiven", 4, 1, 2, 5, 30, 5, 30},
                                         Case{"FewerDigitsThanDecimals", 4, 1, 2, none, 3, 1, 3},
                                         Case{"Integer", 23, 1, 0, none, none, 10, 11},
                                         Case{"SmallInteger", 24, 0, 0, none, none, 5, 5},
                                         Case{"Date", 28, 1, 0, none, none, 8, 8},
                                         Case{"ShortDate", 28, 0, 0, 6, none, 6, 6},
                                         Case{"Time", 31, 0, 0, none, none, 6, 6},
                                         Case{"Timestamp", 32, 0, 0, none, 19, 15, 19}),
                         [](const auto& test) { return test.param.name; });

TEST(ItemSize, RefusesWhatDoesNotFit) {
  const auto refused_key = [](ItemAttributes item, const GivenSize& given) {
    const auto error = complete_size(given, item);
    return error ? std::string(error->key) : "";
  };
  const ItemAttributes number = {4, 1, 0, 0, 2};
  EXPECT_EQ(refused_key(number, {none, none}), "digits");
  EXPECT_EQ(refused_key(number, {none, 1}), "length");  // no room for sign and point
  EXPECT_EQ(refused_key(number, {none, 4}), "");
  EXPECT_EQ(refused_key({11, 0, 0, 0, 0}, {2'000'000'000, none}), "digits");
}

}  // namespace
}  // namespace korvex::host
