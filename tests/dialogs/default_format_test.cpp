#include "dialogs/default_format.h"

#include <gtest/gtest.h>

#include <climits>

namespace korvex {
namespace {

TEST(DefaultFormat, FollowsTheAttribute) {
  struct Row {
    ItemAttributes item;
    const char* format;
  };
  const Row rows[] = {
      {{1, 1, 9, 4, 0}, "%4S"},
      {{2, 1, 9, 6, 0}, "%5S"},
      {{7, 0, 3, 0, 0}, "%3S"},
      {{4, 0, 9, 9, 0}, "%9U"},
      {{5, 1, 9, 9, 2}, "%7.2D"},
      {{18, 1, 9, 19, 0}, "%18D"},
      {{14, 0, 9, 40, 10}, "%8.10U"},
      {{14, 0, 9, 40, 20}, "%0.18U"},
      {{11, 0, 20, 10, 0}, "%10N"},
      {{12, 0, 65, 0, 0}, "%64N"},
      {{19, 0, 200, 0, 0}, "%200S"},
      {{24, 0, 2, 5, 0}, "%5U"},
      {{30, 1, 9, 7, 2}, "%5.2D"},
      {{28, 0, 10, 8, 0}, "%4YMD"},
      {{31, 0, 8, 6, 0}, "%T"},
      {{32, 0, 19, 15, 0}, "%TS"},
      {{8, 0, 9, 9, 0}, ""},
      {{33, 0, 9, 9, 0}, ""},
      // No format says these.
      {{1, 1, 9, -1, 0}, ""},
      {{19, 0, INT_MIN, 0, 0}, ""},
      {{4, 0, 9, INT_MIN, 0}, ""},
      {{4, 0, 9, 5, -1}, ""},
      {{4, 0, 9, 5, 6}, ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(default_format(row.item), row.format)
        << "attribute " << row.item.attribute << ", digits " << row.item.digits;
  }
}

}  // namespace
}  // namespace korvex
