#include "format/item_settings.h"

#include <gtest/gtest.h>

#include "format/reconcile.h"
#include "format/record_text.h"
#include "platform/file.h"
#include "reconcile/reconcile_setup.h"

namespace korvex::test {
namespace {

constexpr std::uint8_t registered = 1;
constexpr std::uint8_t newly_set = 2;
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
    setup.main->settings_counter = 0;
  }

  ClDGCol& select(std::int32_t place) { return *setup.main->select_item(place); }
  int state(std::size_t place) { return setup.main->items[place]->state; }
  ItemDisplay& display(std::size_t place) { return setup.main->items[place]->display(); }

  std::int32_t store(std::int32_t place, const RangeTexts& texts, bool initializes = false,
                     bool is_custom = false) {
    select(place);
    return store_format(*setup.main, texts, initializes, is_custom);
  }
  std::int32_t copy(std::int32_t target, std::int32_t source) {
    select(target);
    return copy_settings(*setup.main, source);
  }
  std::int32_t initialize(std::int32_t place, bool refuses = true) {
    select(place);
    return set_initial_value(*setup.main, refuses);
  }
  std::int32_t remove(std::int32_t place) {
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

TEST_F(ItemSettingsTest, AnItemIsNewlySetOnceAndRegisteredFromThenOn) {
  EXPECT_EQ(state(0), 0);
  EXPECT_EQ(store(0, two_digits), 0) << "had settings";
  EXPECT_EQ(state(0), registered);
  EXPECT_EQ(store(1, two_digits), 1) << "its first";
  EXPECT_EQ(state(1), newly_set);
  EXPECT_EQ(store(1, two_digits), 0);
  EXPECT_NE(state(1) & registered, 0);

  EXPECT_EQ(remove(1), 0);
  EXPECT_EQ(state(1), without_settings);
  EXPECT_EQ(store(1, two_digits), 1) << "its first again";
  EXPECT_EQ(state(1), newly_set);
  EXPECT_TRUE(platform::exists(setup.settings()));
}

TEST_F(ItemSettingsTest, TheInitialValueClearsTheTexts) {
  for (const std::int32_t kind : {1, 2}) {
    open(kind);
    EXPECT_EQ(initialize(0), 0);
    EXPECT_EQ(state(0), registered);
    EXPECT_EQ(setup.main->settings_counter, 0);
    const ItemDisplay& shown = display(0);
    EXPECT_EQ(shown.generation_type, 1);
    EXPECT_EQ(shown.generation_text, kind == 1 ? "Init Value" : "Init Null");
    EXPECT_EQ(shown.start + shown.end + shown.increment, "");
    EXPECT_EQ(shown.exceeded_action, 0);
    EXPECT_EQ(record(1)->generation_type, 1);
    EXPECT_EQ(record(1)->exceeded_action, 0);

    EXPECT_EQ(initialize(1), 0);
    EXPECT_EQ(state(1), newly_set);
    EXPECT_EQ(setup.main->settings_counter, 1) << "one item more";
    setup.main->items[2]->state = without_settings;
    EXPECT_EQ(initialize(2), 0);
    EXPECT_EQ(state(2), newly_set);
    EXPECT_EQ(setup.main->settings_counter, 2);
  }
}

TEST_F(ItemSettingsTest, AnItemThatMayNotBeNullKeepsWhatItHas) {
  setup.main->items[0]->null_allowed = 0;
  setup.main->settings_counter = 5;
  EXPECT_EQ(initialize(0, true), -65);
  EXPECT_EQ(initialize(0, false), 5);
  EXPECT_EQ(display(0).generation_type, 2);
  EXPECT_EQ(record(1)->generation_type, 2);
  EXPECT_EQ(state(0), 0);
}

TEST_F(ItemSettingsTest, AStoredFormatIsShown) {
  EXPECT_EQ(store(1, two_digits, true, true), 1);
  const ItemDisplay& shown = display(1);
  EXPECT_EQ(shown.generation_type, 2);
  EXPECT_EQ(shown.generation_text, "%2U");
  EXPECT_EQ(shown.start + "|" + shown.end + "|" + shown.increment, "07|42|3");
  EXPECT_EQ(shown.exceeded_action, 0);
  EXPECT_EQ(shown.custom_format, 1);
  EXPECT_EQ(record(2)->custom_format, 1);

  EXPECT_EQ(store(1, {"%5U", "1", "", "1"}, false, false), 0);
  EXPECT_EQ(shown.end, "99999") << "the largest value stands for none";
  EXPECT_EQ(shown.exceeded_action, 1);
  EXPECT_EQ(shown.custom_format, 0);

  // Fixed text alone has no values.
  open(1, {{.item_number = 1, .attribute = 1, .digits = 9}, {.item_number = 2, .attribute = 1}});
  EXPECT_EQ(store(0, {"'ABC'", "1", "2", "3"}), 0);
  EXPECT_EQ(display(0).generation_text, "'ABC'");
  EXPECT_EQ(display(0).start + display(0).end + display(0).increment, "");
}

TEST_F(ItemSettingsTest, ARefusedFormatChangesNothing) {
  struct Case {
    RangeTexts texts;
    std::int32_t code;
  };
  for (const Case& c : {Case{{"%2U", "", "9", "1"}, -37}, Case{{"%2U", "9", "1", "1"}, -18},
                        Case{{"%2U", "1", "9", "10"}, -20}}) {
    EXPECT_EQ(store(0, c.texts), c.code);
    EXPECT_EQ(setup.main->settings_counter, c.code);
    EXPECT_EQ(store(1, c.texts), c.code);
    EXPECT_EQ(state(0) + state(1), 0);
    EXPECT_EQ(display(0).generation_text, "%U");
    EXPECT_EQ(display(1).generation_type, 0);
    EXPECT_EQ(record(2), nullptr);
  }
}

TEST_F(ItemSettingsTest, CopiesShowWhatTheSourceShows) {
  open(1, {{.item_number = 1, .null_allowed = 1},
           {.item_number = 2, .length = 10, .digits = 6},
           {.item_number = 3}});
  ASSERT_EQ(store(2, two_digits, true, true), 1);
  EXPECT_EQ(copy(1, 2), 1) << "its first settings";
  EXPECT_EQ(state(1), newly_set);
  const ItemDisplay& shown = display(1);
  EXPECT_EQ(shown.generation_type, 2);
  EXPECT_EQ(shown.generation_text, "%2U");
  EXPECT_EQ(shown.start + "|" + shown.end + "|" + shown.increment, "07|42|3");
  EXPECT_EQ(shown.exceeded_action, 0);
  EXPECT_EQ(record(2)->attribute, 4);
  EXPECT_EQ(record(2)->length, 10) << "its own attribute, so that it fits the next time";
  EXPECT_EQ(record(2)->digits, 6);
  EXPECT_EQ(record(2)->custom_format, 1);

  FmtColRec& first = setup.main->settings.find_column(1)->record;
  first.generation_type = display(0).generation_type = generation_type::enumeration;
  first.repeat_flag = 1;
  store_field(first.enumeration_path, "/lists/a.txt");
  display(0).enumeration_path = "/lists/a.txt";
  display(0).enumeration_name = "a.txt";
  EXPECT_EQ(copy(2, 0), 0) << "had settings";
  EXPECT_EQ(setup.main->settings_counter, 0);
  EXPECT_EQ(display(2).generation_type, 4);
  EXPECT_EQ(display(2).enumeration_path, "/lists/a.txt");
  EXPECT_EQ(display(2).enumeration_name, "a.txt");
  EXPECT_EQ(field_text(record(3)->enumeration_path), "/lists/a.txt");
  EXPECT_EQ(record(3)->repeat_flag, 0) << "the repeat is the item's own";

  ASSERT_EQ(initialize(0), 0);
  EXPECT_EQ(copy(2, 0), -65) << "the initial value, which it may not have";
  setup.main->items[2]->null_allowed = 1;
  setup.main->items[2]->attribute = 28;
  EXPECT_EQ(copy(2, 0), 0) << "of whatever attribute";
  EXPECT_EQ(display(2).generation_type, 1);
}

struct RefusalCase {
  const char* name;
  ControlItemFields source;
  ControlItemFields target;
  std::int32_t code;
};

class RefusedCopies : public ItemSettingsTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(RefusedCopies, ChangeNothing) {
  ControlItemFields source = GetParam().source;
  ControlItemFields target = GetParam().target;
  source.item_number = 1;
  target.item_number = 2;
  open(1, {source, target});
  EXPECT_EQ(copy(1, 0), GetParam().code);
  EXPECT_EQ(state(1), 0);
  EXPECT_EQ(display(1).generation_type, 0);
  EXPECT_EQ(record(2), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, RefusedCopies,
    testing::Values(
        RefusalCase{"Attribute", {.attribute = 4}, {.attribute = 5}, -31},
        RefusalCase{"AttributeFirst", {.attribute = 4}, {.attribute = 5, .signed_flag = 1}, -31},
        RefusalCase{"Sign", {.signed_flag = 1}, {.signed_flag = 0}, -32},
        RefusalCase{"SignBeforeSize", {}, {.signed_flag = 1, .length = 8}, -32},
        RefusalCase{"Length", {.length = 9}, {.length = 8}, -33},
        RefusalCase{"Digits", {.digits = 5}, {.digits = 4}, -33},
        RefusalCase{"Decimals", {.decimals = 3}, {.decimals = 2}, -33},
        RefusalCase{"NoDecimals", {.decimals = 0}, {.decimals = 2}, -69}),
    [](const auto& test) { return test.param.name; });

TEST_F(ItemSettingsTest, ACopyNeedsASource) {
  EXPECT_EQ(copy(0, 0), -29);
  EXPECT_EQ(copy(1, 2), -36);
  ASSERT_EQ(remove(0), 0);
  EXPECT_EQ(copy(1, 0), -36);
  EXPECT_EQ(state(1), 0);
}

TEST_F(ItemSettingsTest, DeletedSettingsAreGoneFromTheDisplayToo) {
  ASSERT_EQ(store(0, two_digits), 0);
  EXPECT_EQ(remove(0), 0);
  EXPECT_EQ(setup.main->settings_counter, 0);
  EXPECT_EQ(state(0), without_settings);
  const ItemDisplay& shown = display(0);
  EXPECT_EQ(shown.generation_type, 0);
  EXPECT_EQ(shown.generation_text + shown.start + shown.end + shown.increment, "");
  EXPECT_EQ(record(1)->generation_type, 0);
  EXPECT_EQ(record(1)->element_count, 0);

  EXPECT_EQ(remove(0), -36);
  EXPECT_EQ(remove(1), -36);
  EXPECT_EQ(setup.main->settings_counter, -36);
  EXPECT_EQ(state(1), 0);
}

}  // namespace
}  // namespace korvex::test
