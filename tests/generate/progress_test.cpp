#include "generate/progress.h"

#include <gtest/gtest.h>

#include "support/scripted_interface.h"

namespace korvex::test {
namespace {

TEST(ProgressTest, LeavesAMarginForRepeats) {
  const std::pair<std::int32_t, std::int64_t> cases[] = {
      {0, 3},   {5, 8},      {9, 12},      {10, 11},
      {20, 22}, {999, 1098}, {1000, 1100}, {2'147'483'647, 2'362'232'011},
  };
  for (const auto& [records, denominator] : cases) {
    EXPECT_EQ(percentage_denominator(records, true), denominator);
    EXPECT_EQ(percentage_denominator(records, false), records);
  }
}

std::vector<int> shown(std::int32_t records, std::int64_t denominator) {
  ScriptedInterface interface;
  const auto sink = interface.open_progress(nullptr, false);
  ProgressMeter meter(*sink, denominator);
  for (std::int32_t done = 1; done <= records; ++done) meter.update(done);
  meter.finish(records);
  return interface.percentages;
}

// Every record computed, without foresight.
std::vector<int> expected(std::int32_t records, std::int64_t denominator) {
  std::vector<int> percentages;
  int last = 0;
  int percent = 0;
  for (std::int32_t done = 1; done <= records; ++done) {
    percent =
        static_cast<int>(static_cast<double>(done) / static_cast<double>(denominator) * 100.0);
    if (percent > last) percentages.push_back(last = percent);
  }
  if (percent != 100) percentages.push_back(100);
  return percentages;
}

TEST(ProgressTest, ShowsEveryPercentOnce) {
  EXPECT_EQ(shown(4, 4), (std::vector<int>{25, 50, 75, 100}));
  EXPECT_EQ(shown(5, 8), (std::vector<int>{12, 25, 37, 50, 62, 100}));
  EXPECT_EQ(shown(0, 0), (std::vector<int>{100}));
  for (std::int32_t records = 1; records <= 1500; ++records) {
    for (const bool margin : {false, true}) {
      const std::int64_t denominator = percentage_denominator(records, margin);
      ASSERT_EQ(shown(records, denominator), expected(records, denominator)) << records;
    }
  }
}

}  // namespace
}  // namespace korvex::test
