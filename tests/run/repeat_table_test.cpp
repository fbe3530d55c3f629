#include "run/repeat_table.h"

#include "control/user_limits.h"
#include "support/control_bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::test {
namespace {

// Items in their order: a number, a name and a level, 0 for none.
struct NamedItem {
  std::int32_t number, level;
  const char* name = "";
};

class RepeatTableTest : public testing::Test {
 protected:
  ErrorCode build(const std::vector<NamedItem>& items) {
    write_file(folder.file("run.ctl"), control_bytes({}, {}));
    main = std::make_unique<ClColMain>();
    main->control_path = folder.file("run.ctl");
    main->set_run_mode(run_mode::settings_only);
    EXPECT_EQ(main->load(), 0);
    main->settings.set_run_mode(run_mode::settings_only);
    EXPECT_TRUE(main->settings.load(SettingsLevel{1}, StoredRecords{}, layout_kind::record_file));
    for (const NamedItem& item : items) {
      auto named = std::make_unique<ClDGCol>();
      named->item_number = ItemNumber{item.number};
      named->name = item.name;
      main->items.push_back(std::move(named));
      if (main->settings.find_column(ItemNumber{item.number}) != nullptr) continue;
      auto column = std::make_unique<ClFmtColInf>();
      column->record.item_number = ItemNumber{item.number};
      column->record.repeat_flag = flag_of(item.level != 0);
      column->record.repeat_level = RepeatLevel{item.level};
      main->settings.current_level()->append(std::move(column));
    }
    RepeatTable table;
    return table.build(*main);
  }

  TempFolder folder;
  ScopedVariable configuration{"XDG_CONFIG_HOME", folder.path()};
  std::unique_ptr<ClColMain> main;
};

// A level taken twice comes before a missing first level, and both before the limit. An item that
// occurs twice is no other item, but it counts twice against the limit.
TEST_F(RepeatTableTest, RefusesLevels) {
  const std::tuple<const char*, std::vector<NamedItem>, std::int32_t, std::uint64_t> cases[] = {
      {"1", {{4, 2}, {3, 2}}, -104, 0},         {"1", {{1, 2}, {2, 3}}, -108, 0},
      {"2", {{1, 2}, {2, 3}, {3, 1}}, -109, 2}, {"3", {{1, 2}, {2, 3}, {3, 1}}, 0, 0},
      {"0", {{1, 2}, {2, 3}, {3, 1}}, 0, 0},    {"3", {{5, 1}, {6, 2}, {5, 1}}, 0, 0},
      {"2", {{5, 1}, {6, 2}, {5, 1}}, -109, 2}, {"18446744073709551615", {{3, 1}}, 0, 0},
  };
  for (const auto& [limit, items, result, shown] : cases) {
    const platform::SettingsStore store(platform::host_key());
    ASSERT_EQ(write_store_value(store, "RepeatLevelNumMax", limit), 0);
    EXPECT_EQ(build(items), result) << limit;
    EXPECT_EQ(main->largest_repeat_count, shown);
  }
  // The first of the two in item order is named.
  EXPECT_EQ(build({{1, 1, "A"}, {2, 3, "B"}, {3, 2, "C"}, {4, 2, "D"}}), -104);
  EXPECT_EQ(main->message_context.utf8(), "\nC : ");
}

TEST_F(RepeatTableTest, ChecksALevelAgainstOtherItems) {
  ASSERT_EQ(build({{1, 1}, {2, 2}, {3, 0}}), 0);
  EXPECT_EQ(check_repeat_level(*main, RepeatLevel{1}, ItemNumber{2}), -104);
  EXPECT_EQ(check_repeat_level(*main, RepeatLevel{1}, ItemNumber{1}), 0) << "its own";
  EXPECT_EQ(check_repeat_level(*main, RepeatLevel{3}, ItemNumber{2}), 0);
  EXPECT_EQ(check_repeat_level(*main, RepeatLevel{0}, ItemNumber{1}), 0)
      << "without its flag a level is none";
}

}  // namespace
}  // namespace korvex::test
