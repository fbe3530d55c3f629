#include "control/item_settings.h"

#include "control/reconcile.h"
#include "control/reconcile_setup.h"
#include "support/table.h"
#include "values/record_text.h"

namespace korvex::test {
namespace {

// Three numbers, the first of which is stored as a range from 1 to 9.
class ItemSettingsTest : public testing::Test {
 protected:
  ItemSettingsTest() {
    setup.write_settings({{{.length = 9, .digits = 5, .exceeded_action = 1}}});
    setup.load({{.item_number = 1, .null_allowed = 1},
                {.item_number = 2, .length = 10, .digits = 6},
                {.item_number = 3}});
    EXPECT_EQ(reconcile(*setup.main), 1);
  }

  // With the item at this place current.
  ClColMain& at(std::int32_t place) {
    setup.main->select_item(place);
    return *setup.main;
  }
  ClDGCol& item(std::size_t place) { return *setup.main->items[place]; }
  FmtColRec& record(std::int32_t number) {
    return setup.main->settings.find_column(ItemNumber{number})->record;
  }

  ReconcileSetup setup;
};

const RangeTexts two_digits = {"%2U", "07", "42", "3"};

TEST_F(ItemSettingsTest, ACopyShowsWhatItsSourceShows) {
  ASSERT_EQ(store_format(at(2), two_digits, true, true), 0);
  EXPECT_EQ(copy_settings(at(1), 2), 0) << "its first settings";
  EXPECT_FALSE(item(1).is_left_out);
  EXPECT_EQ(setup.shown(1), "2 %2U [07,42,3] 01 ref 0");
  const FmtColRec& own = record(2);  // its own attribute, so that it fits the next time
  EXPECT_EQ(as_numbers(own.attribute, own.length, own.digits, own.custom_format),
            as_numbers(4, 10, 6, 1));
  EXPECT_EQ(setup.main->settings.find_column(ItemNumber{2})->elements.size(), 1U);

  FmtColRec& first = record(1);
  first.generation_type = item(0).display().generation_type = generation_type::enumeration;
  first.repeat_flag = Flag::on;
  store_field(first.enumeration_path, "/lists/a.txt");
  item(0).display().enumeration_path = "/lists/a.txt";
  item(0).display().enumeration_name = "a.txt";
  EXPECT_EQ(copy_settings(at(2), 0), 0) << "had settings";
  const ItemDisplay& copied = item(2).display();
  EXPECT_EQ(copied.generation_type, 4);
  EXPECT_EQ(copied.enumeration_path + " " + copied.enumeration_name, "/lists/a.txt a.txt");
  EXPECT_EQ(field_text(record(3).enumeration_path), "/lists/a.txt");
  EXPECT_FALSE(is_on(record(3).repeat_flag)) << "the repeat is the item's own";

  ASSERT_EQ(set_initial_value(at(0)), 0);
  EXPECT_EQ(copy_settings(at(2), 0), -65) << "the initial value, which it may not have";
  item(2).null_allowed = Flag::on;
  item(2).attribute = attribute::date;
  EXPECT_EQ(copy_settings(at(2), 0), 0) << "of whatever attribute";
  EXPECT_EQ(copied.generation_type, 1);
}

TEST(CheckReference, RefusesWhatIsOfAnotherKindOrWider) {
  for (const auto& [source, target, code] : table<3>(R"(
      4 0 9 5 2 | 4 0 9 5 2  | 0
      4 0 9 5 2 | 4 0 10 6 3 | 0
      4 0 9 5 2 | 5 1 8 5 2  | -31
      4 0 9 5 2 | 4 1 8 5 2  | -32
      4 0 9 5 2 | 4 0 8 5 2  | -33
      4 0 9 5 2 | 4 0 9 4 2  | -33
      4 0 9 5 2 | 4 0 9 5 1  | -33
      4 0 9 5   | 4 0 9 5 2  | -69
      4 0 9 5   | 4 0 9 5    | 0
  )")) {
    EXPECT_EQ(check_reference(item_of(source), item_of(target)), std::stoi(code)) << target;
  }
}

TEST_F(ItemSettingsTest, DeletedSettingsAreGoneFromTheDisplayToo) {
  EXPECT_EQ(copy_settings(at(0), 0), -29);
  EXPECT_EQ(copy_settings(at(1), 2), -36);
  EXPECT_EQ(setup.main->settings.find_column(ItemNumber{2}), nullptr);
  ASSERT_EQ(store_format(at(0), two_digits, false, false), 0);
  EXPECT_EQ(delete_settings(at(0)), 0);
  EXPECT_TRUE(item(0).is_left_out);
  EXPECT_EQ(setup.shown(0), "0  [,,] 10 ref 0");
  EXPECT_EQ(record(1).generation_type, 0);
  EXPECT_EQ(record(1).element_count, 0);
  EXPECT_EQ(copy_settings(at(2), 0), -36) << "no source any more";
  EXPECT_EQ(delete_settings(at(0)), -36);
  EXPECT_EQ(delete_settings(at(1)), -36);
  EXPECT_FALSE(item(1).is_left_out);
}

}  // namespace
}  // namespace korvex::test
