#include "dialogs/rules/setup_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "support/table.h"

namespace korvex::test {
namespace {

// Every text of the fields in one line.
std::string line(const SetupFields& f) {
  return std::to_string(number_of(f.type_index)) + " r=" + f.reference +
         " n=" + f.enumeration_name + " p=" + f.enumeration_path + " f=" + f.format + " [" +
         f.start + "," + f.end + "," + f.increment + "] c=" + (f.custom ? "1" : "0") +
         " x=" + std::to_string(number_of(f.exceeded.value_or(ExceededAction{-1})));
}

// Settings with something in every text, whatever the type shows of them.
ItemDisplay display_of(std::int32_t type, ExceededAction action = exceeded_action::repeat) {
  ItemDisplay display;
  display.generation_type = GenerationType{type};
  display.generation_text = "%2U";
  display.start = "1";
  display.end = "9";
  display.increment = "2";
  display.enumeration_name = "a.txt";
  display.enumeration_path = "/lists/a.txt";
  display.is_custom = true;
  display.exceeded_action = action;
  return display;
}

TEST(SetupFieldsTest, ShowWhatTheTypeHas) {
  SetupFields before = fields_of(display_of(4), {});
  before.exceeded = exceeded_action::initialize;
  before.format = before.start = before.end = before.increment = before.reference = "old";
  // Type and action; the initial value shows the choice of the item before.
  for (const auto& [stored, expected] : table<2>(R"(
      0 1 | -1 r= n= p= f= [,,] c=0 x=-1
      1 1 | 0 r= n= p= f= [,,] c=0 x=0
      2 1 | 1 r= n= p= f=%2U [1,9,2] c=1 x=1
      2 0 | 1 r= n= p= f=%2U [1,9,2] c=1 x=0
      2 7 | 1 r= n= p= f=%2U [1,9,2] c=1 x=-1
      3 1 | 2 r=%2U n= p= f= [,,] c=0 x=1
      4 1 | 3 r= n=a.txt p=/lists/a.txt f= [,,] c=0 x=1
      5 1 | -1 r= n= p= f= [,,] c=0 x=-1
  )")) {
    const auto of = numbers(stored);
    EXPECT_EQ(line(fields_of(display_of(of[0], ExceededAction{of[1]}), before)), expected)
        << stored;
  }
}

TEST(SetupFieldsTest, ConfirmingATypeFillsOnlyWhatIsEmpty) {
  // Chosen and stored type, what is in the format and its values, and the stored text.
  for (const auto& [types, typed, stored, expected] : table<4>(R"(
      1 0 |   |                  | 1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0
      1 1 |   | Init Value       | 1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0
      1 1 |   | Init Null        | 1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0
      1 4 |   | Enumeration type | 1 r= n= p=/a.txt f=%4U [1,9,2] c=0 x=1
      1 2 |   | %2U              | 1 r= n= p=/a.txt f=%2U [1,9,2] c=0 x=1
      1 2 | 3 | %2U              | 1 r= n= p=/a.txt f=3 [3,3,3] c=0 x=1
      3 2 | 3 | %2U              | 3 r= n= p=/a.txt f=3 [3,3,3] c=0 x=1
      0 2 |   | %2U              | 0 r= n= p=/a.txt f= [,,] c=0 x=-1
  )")) {
    ClDGCol item;
    item.attribute = attribute::decimal;
    item.digits = 4;
    const std::int32_t stored_type = numbers(types)[1];
    if (GenerationType{stored_type} >= generation_type::range)
      item.display() = display_of(stored_type);
    item.display().generation_text = stored;
    SetupFields fields;
    fields.type_index = TypeEntry{numbers(types)[0]};
    fields.format = fields.start = fields.end = fields.increment = typed;
    fields.reference = "B";
    fields.enumeration_name = "a.txt";
    fields.enumeration_path = "/a.txt";
    confirm_type(fields, item);
    EXPECT_EQ(line(fields), expected) << types << stored;
  }
}

class ChangedFieldsTest : public testing::Test {
 protected:
  ChangedFieldsTest() {
    for (const char* name : {"A", "B", "B", "C"}) {
      main.items.push_back(std::make_unique<ClDGCol>());
      main.items.back()->name = name;
    }
    main.select_item(0);
  }

  ItemDisplay& display(std::size_t place) { return main.items[place]->display(); }

  ClColMain main;
};

TEST_F(ChangedFieldsTest, WhatIsShownIsUnchangedAndEveryFieldOfTheTypeCounts) {
  // The change, and the types whose stored settings it changes.
  const std::pair<void (*)(SetupFields&), std::vector<std::int32_t>> changes[] = {
      {[](SetupFields&) {}, {}},
      {[](SetupFields& f) { f.format = "%2u"; }, {2}},
      {[](SetupFields& f) { f.start = "01"; }, {2}},
      {[](SetupFields& f) { f.end = ""; }, {2}},
      {[](SetupFields& f) { f.increment = "+2"; }, {2}},
      {[](SetupFields& f) { f.custom = !f.custom; }, {2}},
      {[](SetupFields& f) { f.exceeded = exceeded_action::initialize; }, {2, 4}},
      {[](SetupFields& f) { f.enumeration_name = "b.txt"; }, {4}},
      {[](SetupFields& f) { f.enumeration_path = "/other/a.txt"; }, {4}},
      {[](SetupFields& f) { f.reference = "C"; }, {3}},
      {[](SetupFields& f) { f.type_index = type_entry::initial_value; }, {0, 2, 3, 4}},
      {[](SetupFields& f) { f.type_index = type_entry::range; }, {0, 1, 3, 4}},
      {[](SetupFields& f) { f.type_index = type_entry::enumeration; }, {0, 1, 2, 3}},
  };
  for (const auto& [change, types] : changes) {
    for (std::int32_t type = 0; type <= 4; ++type) {
      display(0) = display_of(type);
      if (type == 3) display(0).generation_text = "B";
      SetupFields fields = fields_of(display(0), {});
      change(fields);
      EXPECT_EQ(is_changed(fields, main), std::ranges::count(types, type) > 0)
          << &change - &changes[0].first << " of type " << type;
    }
  }
}

TEST_F(ChangedFieldsTest, AReferenceChangesWhatItsSourceHasOtherwise) {
  // Type and action of the item and of the first B, B's format and list, the name that is entered.
  for (const auto& [stored, source, format, list, name, changed] : table<6>(R"(
      0 1 | 0 1 | %2U | a.txt | B   | changed
      2 1 | 2 1 | %2U | a.txt | X   | changed
      2 1 | 2 1 | %2U | a.txt | b   | changed
      1 1 | 1 1 | %2U | a.txt | B   |
      1 1 | 2 1 | %2U | a.txt | B   | changed
      2 1 | 2 1 | %2U | a.txt | B   |
      2 1 | 2 1 | %3U | a.txt | B   | changed
      2 1 | 2 0 | %2U | a.txt | B   | changed
      4 1 | 4 1 | %2U | a.txt | B   |
      4 1 | 4 1 | %2U | b.txt | B   | changed
      3 1 | 2 1 | %2U | a.txt | %2U |
      3 1 | 3 1 | %2U | a.txt | B   | changed
  )")) {
    display(0) = display_of(numbers(stored)[0], ExceededAction{numbers(stored)[1]});
    display(1) = display_of(numbers(source)[0], ExceededAction{numbers(source)[1]});
    display(1).generation_text = format;
    display(1).enumeration_name = list;
    SetupFields fields = fields_of(display(0), {});
    fields.type_index = type_entry::reference;
    fields.reference = name;
    EXPECT_EQ(is_changed(fields, main), !changed.empty()) << stored << ", " << source << name;
  }
}

}  // namespace
}  // namespace korvex::test
