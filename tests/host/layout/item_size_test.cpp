#include "host/layout/item_size.h"

#include <gtest/gtest.h>

namespace korvex::host {
namespace {

constexpr auto none = std::nullopt;

TEST(ItemSize, IsCompleted) {
  struct Case {
    std::int32_t attribute, signed_flag, decimals;
    GivenSize given;  // digits and length
    std::int32_t digits, length;
  };
  const Case cases[] = {
      {1, 1, 0, {5, none}, 5, 5},       {6, 0, 0, {none, 8}, 8, 8},
      {6, 0, 0, {0, 8}, 0, 8},          {11, 0, 0, {3, none}, 3, 6},
      {12, 0, 0, {none, 7}, 3, 7},      {4, 0, 0, {9, none}, 9, 9},
      {4, 1, 2, {9, none}, 9, 11},      {19, 1, 2, {none, 9}, 7, 9},
      {4, 1, 2, {5, 30}, 5, 30},        {4, 1, 2, {none, 3}, 1, 3},
      {23, 1, 0, {none, none}, 10, 11}, {24, 0, 0, {none, none}, 5, 5},
      {28, 1, 0, {none, none}, 8, 8},   {28, 0, 0, {6, none}, 6, 6},
      {31, 0, 0, {none, none}, 6, 6},   {32, 0, 0, {none, 19}, 15, 19},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.attribute << ": " << c.digits << " " << c.length);
    ItemAttributes item = {c.attribute, c.signed_flag, 0, 0, c.decimals};
    EXPECT_FALSE(complete_size(c.given, item));
    EXPECT_EQ(item.digits, c.digits);
    EXPECT_EQ(item.length, c.length);
  }
}

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
