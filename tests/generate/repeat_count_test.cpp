#include "generate/repeat_count.h"

#include "format/reconcile.h"
#include "generate/repeat_setup.h"

namespace korvex::test {
namespace {

// What the stories cannot see, as the program asks only where there is something to count.
TEST(RepeatCountTest, WhatIsNotThereCannotBeCounted) {
  const RunItem item = {.item = {4, 0, 3, 3, 0}, .texts = {"%3U", "1", "3", "1"}};
  for (const bool has_settings : {true, false}) {
    const RepeatSetup setup;
    setup.write({item});
    if (!has_settings) {
      setup.change_settings({}, [](ClFmtFile& file) {
        ASSERT_EQ(file.set_initial_value(99, {4, 0, 5, 5, 0}), 0);
        ASSERT_EQ(file.delete_settings(1), 0);
      });
    }
    ClColMain main;
    main.control_path = setup.long_control();
    main.set_run_mode(run_mode::settings_only);
    ASSERT_EQ(main.load(), 0);
    ASSERT_TRUE(reconcile(main));
    RepeatCount counted = {77, 77};
    EXPECT_EQ(count_data_items(main, true, counted), -6) << "nothing repeats";
    EXPECT_EQ(counted.data_items, 0U);
    EXPECT_EQ(count_data_items(main, false, counted), has_settings ? 0 : -6);
    EXPECT_EQ(counted.data_items, has_settings ? 3U : 0U);
  }
}

}  // namespace
}  // namespace korvex::test
