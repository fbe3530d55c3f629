#include "control/reconcile.h"

#include "control/reconcile_setup.h"
#include "platform/file.h"
#include "support/table.h"

namespace korvex::test {
namespace {

using platform::MessageKind;

class ReconcileTest : public testing::Test {
 protected:
  std::string shown(std::size_t place) const { return setup.shown(place); }

  std::string message() const {
    return setup.interface.messages.size() == 1 ? setup.interface.messages[0].text : "";
  }

  ReconcileSetup setup;
};

// Attribute, length and digits of one item, as the control file has them and as they were stored.
TEST(SettingsFit, ByAttributeAndDigits) {
  const std::tuple<bool, std::int32_t, const char*, const char*> cases[] = {
      {true, 1, "4 9 5", "4 12 5"},       {false, 1, "4 9 5", "5 9 5"},
      {false, 1, "4 9 5", "4 9 6"},       {false, 1, "19 9 0", "19 9 9"},
      {false, 3, "28 8 8", "31 8 8"},     {true, 1, "1 8 0", "1 8 8"},
      {true, 1, "7 8 8", "7 8 0"},        {false, 1, "6 8 0", "6 9 0"},
      {false, 1, "3 8 0", "3 8 7"},       {false, 1, "11 8 0", "11 8 8"},
      {true, 2, "32 15 15", "28 8 8"},    {true, 2, "28 8 8", "32 15 15"},
      {true, 2, "28 8 8", "28 6 6"},      {true, 2, "32 15 15", "32 19 19"},
      {false, 2, "31 6 6", "31 8 8"},     {false, 2, "32 15 15", "31 15 15"},
      {false, 1, "32 15 15", "28 15 15"}, {false, 1, "28 8 8", "28 6 6"},
      {false, 3, "32 15 15", "28 15 15"}, {false, 3, "28 8 8", "28 6 6"},
  };
  for (const auto& [fits, kind, item, stored] : cases) {
    const auto now = numbers(item);
    const auto before = numbers(stored);
    FmtColRec record = {};
    record.attribute = Attribute{before[0]};
    record.length = before[1];
    record.digits = before[2];
    EXPECT_EQ(
        settings_fit({Attribute{now[0]}, Flag::off, now[1], now[2], 0}, record, LayoutKind{kind}),
        fits)
        << kind << ": " << item << " and " << stored;
  }
}

TEST_F(ReconcileTest, ShowsTheSettingsOfEachType) {
  for (const std::int32_t kind : {1, 2}) {
    const ColumnFields range = {
        .item_number = 1, .increment_text = "-2", .exceeded_action = 1, .custom_format = 1};
    const ColumnFields list = {.item_number = 3,
                               .exceeded_action = 1,
                               .generation_type = 4,
                               .repeat_flag = 1,
                               .repeat_level = 4,
                               .repeat_count = 6,
                               .enumeration_path = "/lists/my.towns.txt"};
    setup.write_settings({{range, {.text = "U", .start_text = "3", .end_text = "7"}},
                          {{.item_number = 2, .generation_type = 1}},
                          {list},
                          {{.item_number = 4, .generation_type = 3, .referenced_item = 1}}},
                         kind);
    std::vector<ControlItemFields> items;
    for (std::int32_t i = 1; i <= 5; ++i) {
      items.push_back({.item_number = i, .name = "NAME" + std::to_string(i), .digits = 1});
    }
    setup.load(items, kind);
    EXPECT_EQ(reconcile(*setup.main), 4);
    EXPECT_EQ(shown(0), "2 %U [3,7,-2] 11 ref 0");
    EXPECT_EQ(shown(1), std::string("1 Init ") + (kind == 1 ? "Value" : "Null") + " [,,] 00 ref 0");
    EXPECT_EQ(shown(2), "4 Enumeration type [,,] 10 ref 0");
    EXPECT_EQ(shown(3), "3 NAME1 [,,] 00 ref 1");
    EXPECT_EQ(shown(4), "0  [,,] 00 ref 0");
    const ItemDisplay& listed = setup.main->items[2]->display();
    EXPECT_EQ(listed.enumeration_name, "my.towns.txt");
    EXPECT_EQ(listed.enumeration_path, "/lists/my.towns.txt");
    EXPECT_EQ(as_numbers(listed.is_repeated, listed.repeat_level, listed.repeat_count),
              as_numbers(1, 4, 6));
    EXPECT_FALSE(setup.main->mismatch);
    EXPECT_TRUE(setup.interface.messages.empty());
  }
}

TEST_F(ReconcileTest, AReferenceToAVanishedItemBecomesTheInitialValue) {
  for (const std::int32_t kind : {1, 3}) {
    setup.write_settings({{{.item_number = 1,
                            .generation_type = 3,
                            .referenced_item = 9,
                            .repeat_flag = 1,
                            .repeat_level = 2}},
                          {{.item_number = 9}}},
                         kind);
    setup.load({{.item_number = 1, .digits = 1}, {.item_number = 2, .digits = 1}}, kind);
    EXPECT_EQ(reconcile(*setup.main), 1);
    EXPECT_EQ(shown(0), std::string("1 Init ") + (kind == 1 ? "Value" : "Null") + " [,,] 00 ref 0");
    const FmtColRec& record = setup.main->settings.find_column(ItemNumber{1})->record;
    EXPECT_EQ(record.generation_type, 1);
    EXPECT_EQ(record.referenced_item, 0);
    EXPECT_EQ(record.repeat_level, 2) << "the repeat is no part of the values";
    EXPECT_EQ(setup.main->settings.find_column(ItemNumber{1})->elements[0]->record.kind, 0);
  }
}

// The first item that does not fit ends it; the user is told once, and nothing of the settings is
// left, also of the items that fitted.
TEST_F(ReconcileTest, AMismatchLeavesNoSettingsBehind) {
  for (const std::int32_t kind : {1, 2}) {
    setup.interface.messages.clear();
    write_file(setup.folder.file("out.csv"), "data");
    setup.write_settings({{{.item_number = 1}}, {{.item_number = 2}}, {{.item_number = 3}}}, kind);
    setup.load({{.item_number = 1, .digits = 1},
                {.item_number = 2, .digits = 2},
                {.item_number = 3, .digits = 3}},
               kind);
    EXPECT_EQ(reconcile(*setup.main), 1);
    EXPECT_TRUE(setup.main->mismatch);
    EXPECT_EQ(message(), std::string("99070:There is a difference between ") +
                             (kind == 1 ? "Item" : "Table") +
                             " information and the format information.");
    EXPECT_EQ(setup.interface.messages.at(0).kind, MessageKind::plain);
    EXPECT_FALSE(platform::exists(setup.settings()));
    EXPECT_FALSE(setup.main->settings.is_held());
    EXPECT_EQ(setup.main->settings.read_item(ItemNumber{1}).code(), -68);
    EXPECT_EQ(read_file(setup.folder.file("out.csv")), "data");
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(shown(i), "0  [,,] 00 ref 0") << i;
  }
}

}  // namespace
}  // namespace korvex::test
