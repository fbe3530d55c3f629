#include "run/progress.h"

#include <gtest/gtest.h>

#include "support/scripted_interface.h"

namespace korvex::test {
namespace {

TEST(ProgressTest, ShowsEveryPercentOnce) {
  for (std::int32_t records = 0; records <= 1500; ++records) {
    for (const bool margin : {false, true}) {
      const std::int64_t denominator = percentage_denominator(records, margin);
      ScriptedInterface interface;
      const auto sink = interface.open_progress(nullptr, false);
      ProgressMeter meter(*sink, denominator);
      // Every record computed, without foresight.
      std::vector<int> expected;
      int last = 0;
      for (std::int32_t done = 1; done <= records; ++done) {
        meter.update(done);
        const double share = static_cast<double>(done) / static_cast<double>(denominator);
        const int percent = static_cast<int>(share * 100.0);
        if (percent > last) expected.push_back(last = percent);
      }
      meter.finish(records);
      if (last != 100) expected.push_back(100);
      ASSERT_EQ(interface.percentages, expected) << records;
    }
  }
}

}  // namespace
}  // namespace korvex::test
