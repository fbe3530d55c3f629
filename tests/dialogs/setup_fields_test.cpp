#include "dialogs/setup_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "format/records.h"

namespace korvex {
namespace {

// Every text of the fields in one line.
std::string line(const SetupFields& f) {
  return std::to_string(f.type_index) + " r=" + f.reference + " n=" + f.enumeration_name +
         " p=" + f.enumeration_path + " f=" + f.format + " [" + f.start + "," + f.end + "," +
         f.increment + "] c=" + (f.custom ? "1" : "0") + " x=" + std::to_string(f.exceeded);
}

// Settings with something in every text, whatever the type shows of them.
ItemDisplay display_of(std::int32_t type, std::int32_t action = exceeded_action::repeat) {
  ItemDisplay display;
  display.generation_type = type;
  display.generation_text = "%2U";
  display.start = "1";
  display.end = "9";
  display.increment = "2";
  display.enumeration_name = "a.txt";
  display.enumeration_path = "/lists/a.txt";
  display.custom_format = 1;
  display.exceeded_action = action;
  return display;
}

TEST(SetupFields, ShowWhatTheTypeHas) {
  SetupFields before = fields_of(display_of(4), {});
  before.exceeded = 0;
  before.format = before.start = before.end = before.increment = before.reference = "old";
  struct Row {
    std::int32_t type;
    std::int32_t action;
    const char* expected;
  };
  const Row rows[] = {
      {0, 1, "-1 r= n= p= f= [,,] c=0 x=-1"},
      {1, 1, "0 r= n= p= f= [,,] c=0 x=0"},  // the choice of the item before
      {2, 1, "1 r= n= p= f=%2U [1,9,2] c=1 x=1"},
      {2, 0, "1 r= n= p= f=%2U [1,9,2] c=1 x=0"},
      {2, 7, "1 r= n= p= f=%2U [1,9,2] c=1 x=-1"},
      {3, 1, "2 r=%2U n= p= f= [,,] c=0 x=1"},
      {4, 1, "3 r= n=a.txt p=/lists/a.txt f= [,,] c=0 x=1"},
      {5, 1, "-1 r= n= p= f= [,,] c=0 x=-1"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(line(fields_of(display_of(row.type, row.action), before)), row.expected)
        << "type " << row.type;
  }
}

TEST(SetupFields, ConfirmingATypeFillsOnlyWhatIsEmpty) {
  struct Row {
    std::int32_t type_index;
    const char* typed;  // into the format and its values
    const char* stored_text;
    std::int32_t stored_type;
    const char* expected;
  };
  const Row rows[] = {
      {1, "", "", 0, "1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0"},
      {1, "", "Init Value", 1, "1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0"},
      {1, "", "Init Null", 1, "1 r= n= p=/a.txt f=%4U [,,1] c=0 x=0"},
      {1, "", "Enumeration type", 4, "1 r= n= p=/a.txt f=%4U [1,9,2] c=0 x=1"},
      {1, "", "%2U", 2, "1 r= n= p=/a.txt f=%2U [1,9,2] c=0 x=1"},
      {1, "3", "%2U", 2, "1 r= n= p=/a.txt f=3 [3,3,3] c=0 x=1"},
      {3, "3", "%2U", 2, "3 r= n= p=/a.txt f=3 [3,3,3] c=0 x=1"},
      {0, "", "%2U", 2, "0 r= n= p=/a.txt f= [,,] c=0 x=-1"},
  };
  for (const Row& row : rows) {
    ClDGCol item;
    item.attribute = 4;
    item.digits = 4;
    if (row.stored_type >= generation_type::range) item.display() = display_of(row.stored_type);
    item.display().generation_text = row.stored_text;
    SetupFields fields;
    fields.type_index = row.type_index;
    fields.format = fields.start = fields.end = fields.increment = row.typed;
    fields.reference = "B";
    fields.enumeration_name = "a.txt";
    fields.enumeration_path = "/a.txt";
    confirm_type(fields, item);
    EXPECT_EQ(line(fields), row.expected) << row.stored_text;
  }
}

class SetupFieldsTest : public testing::Test {
 protected:
  SetupFieldsTest() {
    for (const char* name : {"A", "B", "B", "C"}) {
      main.items.push_back(std::make_unique<ClDGCol>());
      main.items.back()->name = name;
    }
    main.select_item(0);
  }

  ItemDisplay& display(std::size_t place) { return main.items[place]->display(); }

  ClColMain main;
};

TEST_F(SetupFieldsTest, WhatIsShownIsUnchangedAndEveryFieldOfTheTypeCounts) {
  struct Change {
    const char* name;
    void (*apply)(SetupFields&);
    std::vector<std::int32_t> types;  // whose stored settings it changes
  };
  const Change changes[] = {
      {"nothing", [](SetupFields&) {}, {}},
      {"format", [](SetupFields& f) { f.format = "%2u"; }, {2}},
      {"start", [](SetupFields& f) { f.start = "01"; }, {2}},
      {"end", [](SetupFields& f) { f.end = ""; }, {2}},
      {"increment", [](SetupFields& f) { f.increment = "+2"; }, {2}},
      {"custom", [](SetupFields& f) { f.custom = !f.custom; }, {2}},
      {"exceeded", [](SetupFields& f) { f.exceeded = 0; }, {2, 4}},
      {"name", [](SetupFields& f) { f.enumeration_name = "b.txt"; }, {4}},
      {"folder", [](SetupFields& f) { f.enumeration_path = "/other/a.txt"; }, {4}},
      {"reference", [](SetupFields& f) { f.reference = "C"; }, {3}},
      {"initial value", [](SetupFields& f) { f.type_index = 0; }, {0, 2, 3, 4}},
      {"range", [](SetupFields& f) { f.type_index = 1; }, {0, 1, 3, 4}},
      {"enumeration", [](SetupFields& f) { f.type_index = 3; }, {0, 1, 2, 3}},
  };
  for (const Change& change : changes) {
    for (std::int32_t type = 0; type <= 4; ++type) {
      display(0) = display_of(type);
      if (type == 3) display(0).generation_text = "B";
      SetupFields fields = fields_of(display(0), {});
      change.apply(fields);
      const bool counts =
          std::find(change.types.begin(), change.types.end(), type) != change.types.end();
      EXPECT_EQ(is_changed(fields, main), counts) << change.name << " of type " << type;
    }
  }
}

TEST_F(SetupFieldsTest, AReferenceChangesWhatItsSourceHasOtherwise) {
  struct Row {
    const char* name;
    std::int32_t stored_type;
    const char* reference;
    ItemDisplay source;  // of the first B
    bool changed;
  };
  ItemDisplay other_format = display_of(2);
  other_format.generation_text = "%3U";
  ItemDisplay other_file = display_of(4);
  other_file.enumeration_name = "b.txt";
  const Row rows[] = {
      {"nothing stored", 0, "B", display_of(0), true},
      {"unknown name", 2, "X", display_of(2), true},
      {"other case", 2, "b", display_of(2), true},
      {"same initial value", 1, "B", display_of(1), false},
      {"initial value and range", 1, "B", display_of(2), true},
      {"same range", 2, "B", display_of(2), false},
      {"other format", 2, "B", other_format, true},
      {"other action", 2, "B", display_of(2, 0), true},
      {"same file", 4, "B", display_of(4), false},
      {"other file", 4, "B", other_file, true},
      {"the same reference", 3, "%2U", display_of(2), false},
      {"another reference", 3, "B", display_of(3), true},
  };
  for (const Row& row : rows) {
    display(0) = display_of(row.stored_type);
    display(1) = row.source;
    SetupFields fields = fields_of(display(0), {});
    fields.type_index = type_entry::reference;
    fields.reference = row.reference;
    EXPECT_EQ(is_changed(fields, main), row.changed) << row.name;
  }
}

TEST(SetupEnablement, FollowsTheSelection) {
  struct Row {
    std::int32_t type_index;
    bool custom;
    bool name_shown;
    std::string enabled;  // the groups that can be used
  };
  const Row rows[] = {
      {-1, true, true, ""},
      {4, true, true, ""},
      {0, true, true, "remove setup "},
      {1, false, true, "remove setup custom values exceeded "},
      {1, true, true, "remove setup custom format values exceeded "},
      {2, true, true, "remove setup reference "},
      {3, true, true, "remove setup file browse exceeded "},
      {3, true, false, "remove setup file browse? exceeded "},
  };
  for (const Row& row : rows) {
    SetupFields fields;
    fields.type_index = row.type_index;
    fields.custom = row.custom;
    const SetupEnablement e = enablement(fields, generation_type::range, row.name_shown);
    std::string enabled;
    const std::pair<bool, const char*> groups[] = {
        {e.remove, "remove "},       {e.setup, "setup "},
        {e.enumeration, "file "},    {e.browse.value_or(true), e.browse ? "browse " : "browse? "},
        {e.reference, "reference "}, {e.custom, "custom "},
        {e.format, "format "},       {e.values, "values "},
        {e.exceeded, "exceeded "}};
    for (const auto& [is_enabled, name] : groups) enabled += is_enabled ? name : "";
    EXPECT_EQ(enabled, row.enabled) << row.type_index;

    const SetupEnablement unset = enablement(fields, generation_type::none, row.name_shown);
    EXPECT_FALSE(unset.remove);
    EXPECT_EQ(unset.setup, e.setup);
  }
}

}  // namespace
}  // namespace korvex
