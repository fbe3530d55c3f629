#include "formatlang/attributes.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

TEST(Attributes, EachCodeHasItsClassAndQuotation) {
  struct Row {
    std::int32_t first, last, value_class;
    bool quoted;
  };
  const Row rows[] = {
      {-1, 0, 0, false},   {1, 3, 904, true},    {4, 5, 900, false},   {6, 7, 904, false},
      {8, 10, 900, false}, {11, 12, 905, true},  {13, 27, 900, false}, {28, 28, 906, true},
      {29, 30, 0, false},  {31, 31, 1002, true}, {32, 32, 1003, true}, {33, 40, 0, false},
  };
  for (const Row& row : rows) {
    for (std::int32_t code = row.first; code <= row.last; ++code) {
      EXPECT_EQ(static_cast<std::int32_t>(value_class_of(code)), row.value_class) << code;
      EXPECT_EQ(is_quoted(code), row.quoted) << code;
    }
  }
}

}  // namespace
}  // namespace korvex
