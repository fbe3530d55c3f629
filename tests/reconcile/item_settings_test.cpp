#include "format/item_settings.h"

#include "format/reconcile.h"
#include "format/record_text.h"
#include "reconcile/reconcile_setup.h"
#include "support/table.h"

namespace korvex::test {
namespace {

constexpr std::uint8_t without_settings = 16;

// Items A, B and C, numbers of five digits that may be NULL; A is stored as a range from 1 to 9.
class ItemSettingsTest : public testing::Test {
 protected:
  ItemSettingsTest() { open(); }

  void open(std::int32_t layout_kind = 1,
            std::vector<ControlItemFields> items = {{.item_number = 1, .null_allowed = 1},
                                                    {.item_number = 2, .null_allowed = 1},
                                                    {.item_number = 3, .null_allowed = 1}}) {
    setup.write_settings({{{.item_number = items[0].item_number,
                            .attribute = items[0].attribute,
                            .length = items[0].length,
                            .digits = items[0].digits,
                            .exceeded_action = 1}}},
                         layout_kind);
    setup.load(items, layout_kind);
    ASSERT_EQ(reconcile(*setup.main), 1);
  }

  ClDGCol& select(std::int32_t place) { return *setup.main->select_item(place); }
  int state(std::size_t place) { return setup.main->items[place]->state; }
  ItemDisplay& display(std::size_t place) { return setup.main->items[place]->display(); }
  std::string shown(std::size_t place) { return setup.shown(place); }

  ErrorCode store(std::int32_t place, const RangeTexts& texts, bool initializes = false,
                  bool is_custom = false) {
    select(place);
    return store_format(*setup.main, texts, initializes, is_custom);
  }
  ErrorCode copy(std::int32_t target, std::int32_t source) {
    select(target);
    return copy_settings(*setup.main, source);
  }
  ErrorCode initialize(std::int32_t place) {
    select(place);
    return set_initial_value(*setup.main);
  }
  ErrorCode remove(std::int32_t place) {
    select(place);
    return delete_settings(*setup.main);
  }
  const FmtColRec* record(std::int32_t item_number) {
    const ClFmtColInf* column = setup.main->settings.find_column(item_number);
    return column == nullptr ? nullptr : &column->record;
  }

  ReconcileSetup setup;
};

const RangeTexts two_digits = {"%2U", "07", "42", "3"};

TEST_F(ItemSettingsTest, TheInitialValueClearsTheTexts) {
  for (const std::int32_t kind : {1, 2}) {
    const std::string text = kind == 1 ? "1 Init Value [,,] 00 ref 0" : "1 Init Null [,,] 00 ref 0";
    open(kind);
    EXPECT_EQ(initialize(0), 0);
    EXPECT_EQ(state(0), 0);
    EXPECT_EQ(shown(0), text);
    EXPECT_EQ(record(1)->generation_type, 1);
    EXPECT_EQ(record(1)->exceeded_action, 0);

    EXPECT_EQ(initialize(1), 0);
    EXPECT_EQ(state(1), 0);
    setup.main->items[2]->state = without_settings;
    EXPECT_EQ(initialize(2), 0);
    EXPECT_EQ(state(2), 0);
  }
}

TEST_F(ItemSettingsTest, AnItemThatMayNotBeNullKeepsWhatItHas) {
  setup.main->items[0]->null_allowed = 0;
  EXPECT_EQ(initialize(0), -65);
  EXPECT_EQ(display(0).generation_type, 2);
  EXPECT_EQ(record(1)->generation_type, 2);
  EXPECT_EQ(state(0), 0);
}

TEST_F(ItemSettingsTest, AStoredFormatIsShown) {
  EXPECT_EQ(store(1, two_digits, true, true), 0);
  EXPECT_EQ(shown(1), "2 %2U [07,42,3] 01 ref 0");
  EXPECT_EQ(record(2)->custom_format, 1);
  EXPECT_EQ(store(1, {"%5U", "1", "", "1"}, false, false), 0);
  EXPECT_EQ(shown(1), "2 %5U [1,99999,1] 10 ref 0") << "the largest value stands for none";
  // Fixed text alone has no values.
  open(1, {{.item_number = 1, .attribute = 1, .digits = 9}, {.item_number = 2, .attribute = 1}});
  EXPECT_EQ(store(0, {"'ABC'", "1", "2", "3"}), 0);
  EXPECT_EQ(shown(0), "2 'ABC' [,,] 10 ref 0");
}

TEST_F(ItemSettingsTest, ACopyShowsWhatItsSourceShows) {
  open(1, {{.item_number = 1, .null_allowed = 1},
           {.item_number = 2, .length = 10, .digits = 6},
           {.item_number = 3}});
  ASSERT_EQ(store(2, two_digits, true, true), 0);
  EXPECT_EQ(copy(1, 2), 0) << "its first settings";
  EXPECT_EQ(state(1), 0);
  EXPECT_EQ(shown(1), "2 %2U [07,42,3] 01 ref 0");
  const FmtColRec& own = *record(2);  // its own attribute, so that it fits the next time
  EXPECT_EQ((std::vector{own.attribute, own.length, own.digits, own.custom_format}),
            (std::vector{4, 10, 6, 1}));

  FmtColRec& first = setup.main->settings.find_column(1)->record;
  first.generation_type = display(0).generation_type = generation_type::enumeration;
  first.repeat_flag = 1;
  store_field(first.enumeration_path, "/lists/a.txt");
  display(0).enumeration_path = "/lists/a.txt";
  display(0).enumeration_name = "a.txt";
  EXPECT_EQ(copy(2, 0), 0) << "had settings";
  EXPECT_EQ(display(2).generation_type, 4);
  EXPECT_EQ(display(2).enumeration_path + " " + display(2).enumeration_name, "/lists/a.txt a.txt");
  EXPECT_EQ(field_text(record(3)->enumeration_path), "/lists/a.txt");
  EXPECT_EQ(record(3)->repeat_flag, 0) << "the repeat is the item's own";

  ASSERT_EQ(initialize(0), 0);
  EXPECT_EQ(copy(2, 0), -65) << "the initial value, which it may not have";
  setup.main->items[2]->null_allowed = 1;
  setup.main->items[2]->attribute = 28;
  EXPECT_EQ(copy(2, 0), 0) << "of whatever attribute";
  EXPECT_EQ(display(2).generation_type, 1);
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
  EXPECT_EQ(copy(0, 0), -29);
  EXPECT_EQ(copy(1, 2), -36);
  EXPECT_EQ(record(2), nullptr);
  ASSERT_EQ(store(0, two_digits), 0);
  EXPECT_EQ(remove(0), 0);
  EXPECT_EQ(state(0), without_settings);
  EXPECT_EQ(shown(0), "0  [,,] 10 ref 0");
  EXPECT_EQ(record(1)->generation_type, 0);
  EXPECT_EQ(record(1)->element_count, 0);
  EXPECT_EQ(copy(1, 0), -36) << "no source any more";
  EXPECT_EQ(remove(0), -36);
  EXPECT_EQ(remove(1), -36);
  EXPECT_EQ(state(1), 0);
}

}  // namespace
}  // namespace korvex::test
