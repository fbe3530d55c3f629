#include "generate/repeat_table.h"

#include "generate/repeat_setup.h"

namespace korvex::test {
namespace {

const RangeTexts one_to_three = {"%1U", "1", "3", "1"};

RunItem repeated(std::int32_t number, std::int32_t level, std::int32_t count = 1) {
  return {.number = number,
          .texts = one_to_three,
          .level = level,
          .count = count,
          .name = "NAME" + std::to_string(number),
          .description = "words " + std::to_string(number)};
}

class RepeatTableTest : public testing::Test {
 protected:
  // Builds the table from the long control file, which knows the items' names, or the short one.
  std::int32_t build(const std::vector<RunItem>& items, bool with_names = true) {
    setup.write(items);
    return build_again(with_names);
  }
  std::int32_t build_again(bool with_names = true) {
    main = std::make_unique<ClColMain>();
    main->control_path = with_names ? setup.long_control() : setup.control();
    main->set_run_mode(with_names ? run_mode::settings_only : run_mode::generator);
    EXPECT_EQ(main->load(), 0);
    main->settings.set_paths(setup.settings(), setup.folder.path());
    EXPECT_TRUE(main->settings.load(1, 3, 1));
    return table.build(*main);
  }

  RepeatSetup setup;
  std::unique_ptr<ClColMain> main;
  RepeatTable table;
};

// A level taken twice comes before a missing first level, and both before the limit.
TEST_F(RepeatTableTest, RefusesLevels) {
  EXPECT_EQ(build({repeated(1, 1), repeated(2, 3), repeated(3, 2), repeated(4, 2)}), -104);
  EXPECT_EQ(main->message_context.utf8(), "\nNAME3 : words 3")
      << "the first of the two in item order";
  EXPECT_EQ(build({repeated(4, 1), repeated(3, 1)}, false), -104);
  EXPECT_EQ(main->message_context.utf8(), "\n : ") << "the short control file has no names";
  const std::vector<RunItem> three = {repeated(1, 2), repeated(2, 3), repeated(3, 1)};
  const std::tuple<const char*, std::vector<RunItem>, std::int32_t, std::int32_t> cases[] = {
      {"1", {repeated(4, 2), repeated(3, 2)}, -104, 0},
      {"1", {repeated(1, 2), repeated(2, 3)}, -108, 0},
      {"2", three, -109, 2},
      {"3", three, 0, 0},
      {"0", three, 0, 0},
      {"18446744073709551615", three, 0, 0},
  };
  for (const auto& [limit, items, result, shown] : cases) {
    setup.limit("RepeatLevelNumMax", limit);
    EXPECT_EQ(build(items), result) << limit;
    EXPECT_EQ(main->largest_repeat_count, shown);
  }
}

// An item that stands twice is no other item, but it counts twice against the limit.
TEST_F(RepeatTableTest, AnItemMayStandTwice) {
  EXPECT_EQ(build({repeated(5, 1, 2), repeated(6, 2)}), 0);
  setup.write_control({.items = {5, 6, 5}});
  EXPECT_EQ(build_again(false), 0);
  setup.limit("RepeatLevelNumMax", "2");
  EXPECT_EQ(build_again(false), -109);
}

TEST_F(RepeatTableTest, ChecksALevelAgainstOtherItems) {
  ASSERT_EQ(build({repeated(1, 1), repeated(2, 2), repeated(3, 0)}), 0);
  EXPECT_EQ(check_repeat_level(*main, 1, 2), -104);
  EXPECT_EQ(check_repeat_level(*main, 1, 1), 0) << "its own";
  EXPECT_EQ(check_repeat_level(*main, 3, 2), 0);
  EXPECT_EQ(check_repeat_level(*main, 0, 1), 0) << "without its flag a level is none";
}

}  // namespace
}  // namespace korvex::test
