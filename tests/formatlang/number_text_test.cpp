#include "formatlang/number_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvex {
namespace {

TEST(NumberText, ReadsTheNumberInFrontOfAnythingElse) {
  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  const std::pair<const char*, std::int64_t> whole[] = {
      {"", 0},    {"x", 0},   {"3x5", 3}, {" 12", 12}, {"99999999999999999999", most},
      {"-4", -4}, {"+5", 5},  {"- 5", 0}, {"--1", 0},  {"00000000000000000000012", 12},
      {"1.9", 1}, {"0x5", 0},
  };
  for (const auto& [text, value] : whole) EXPECT_EQ(decimal_prefix(text), value) << text;

  const std::pair<const char*, double> fractions[] = {
      {"", 0},    {"0.5", 0.5}, {".5", 0.5}, {"1e1", 10}, {"-2", -2},
      {"0x9", 0}, {"inf", 0},   {"nan", 0},  {"9.0x", 9}, {"1,5", 1},
  };
  for (const auto& [text, value] : fractions) EXPECT_EQ(fraction_prefix(text), value) << text;
}

}  // namespace
}  // namespace korvex
