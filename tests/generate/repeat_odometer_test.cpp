
#include <algorithm>
#include <random>

#include "generate/repeat_setup.h"

namespace korvex::test {
namespace {

// One item: how many values it has, where they come from, and how it repeats. Its values are two
// digits, the first one its place among the items.
struct Wheel {
  int values = 2;        // 0 for the initial value
  bool is_list = false;  // of an enumeration file, else of a range
  std::int32_t level = 0;
  std::int32_t count = 1;
  std::int32_t action = exceeded_action::repeat;
  bool is_quoted = false;

  bool is_single() const { return !is_list && values == 1; }
};

using Wheels = std::vector<Wheel>;

std::string value_text(std::size_t item, int index) {
  return std::to_string(item) + std::to_string(index + 1);
}

// A whole field of one value, or an empty one for a negative index.
std::string field(const Wheels& wheels, std::size_t item, int index) {
  const std::string mark = wheels[item].is_quoted ? "\"" : "";
  return mark + (index < 0 ? "" : value_text(item, index)) + mark + ",";
}

// The value of an item that does not repeat: one after the other, and then by its action.
int plain_index(const Wheel& wheel, std::size_t step) {
  const auto values = static_cast<std::size_t>(wheel.values);
  return step >= values && wheel.action == 0 ? -1 : static_cast<int>(step % values);
}

// Every combination in order: each value of a level stays while the level inside runs through its
// own values as often as its count says.
void combine(const Wheels& wheels, int level, std::vector<int>& current,
             std::vector<std::vector<int>>& combinations) {
  std::size_t next = wheels.size();  // the outermost of the levels that are left
  for (std::size_t i = 0; i < wheels.size(); ++i) {
    const bool is_left = wheels[i].level > level;
    if (is_left && (next == wheels.size() || wheels[i].level < wheels[next].level)) next = i;
  }
  if (next == wheels.size()) return combinations.push_back(current);
  for (int i = 0; i < wheels[next].count * wheels[next].values; ++i) {
    current[next] = i % wheels[next].values;
    combine(wheels, wheels[next].level, current, combinations);
  }
}

// All records by nested loops, and as many as told behind the last combination. True as long as the
// innermost item has more than one value.
Names nested_loops(const Wheels& wheels, std::size_t records_behind) {
  std::vector<std::vector<int>> combinations;
  std::vector<int> current(wheels.size());
  combine(wheels, 0, current, combinations);
  Names lines;
  for (std::size_t record = 0; record < combinations.size() + records_behind; ++record) {
    std::string line;
    for (std::size_t item = 0; item < wheels.size(); ++item) {
      const Wheel& wheel = wheels[item];
      int index = plain_index(wheel, record);
      if (wheel.level != 0 && record < combinations.size()) {
        index = combinations[record][item];
      } else if (wheel.level != 0) {
        index = wheel.action == 0 ? -1 : plain_index(wheel, record - combinations.size());
      }
      line += field(wheels, item, index);
    }
    lines.push_back(line);
  }
  return lines;
}

class RepeatOdometerTest : public testing::Test {
 protected:
  // The records that the generator writes for these items.
  Names generated(const Wheels& wheels, std::size_t records) {
    std::vector<RunItem> items;
    for (std::size_t i = 0; i < wheels.size(); ++i) {
      const Wheel& wheel = wheels[i];
      RunItem item = {.number = static_cast<std::int32_t>(i) + 1,
                      .item = {wheel.is_quoted ? 1 : 4, wheel.is_quoted ? 1 : 0, 2, 2, 0},
                      .level = wheel.level,
                      .count = wheel.count,
                      .action = wheel.action};
      if (wheel.is_list) {
        item.list = "";
        for (int v = 0; v < wheel.values; ++v) *item.list += value_text(i, v) + "\n";
      } else if (wheel.values > 0) {
        // No range has a single value; one is made of two.
        item.texts = {"%2U", value_text(i, 0), value_text(i, std::max(wheel.values, 2) - 1), "1"};
      }
      items.push_back(item);
    }
    const RunOptions options = {.records = static_cast<std::int32_t>(records), .quotation = 1};
    setup.write(items, options);
    setup.change_settings(options, [&](ClFmtFile& file) {
      for (std::size_t i = 0; i < wheels.size(); ++i) {
        if (!wheels[i].is_single()) continue;
        FmtItemRec& element =
            file.find_column(static_cast<std::int32_t>(i) + 1)->elements[0]->record;
        element.end = element.start;
        store_field(element.end_text, field_text(element.start_text));
      }
    });
    return setup.generate();
  }

  // "01 11|" for a record of the fields 01 and 11.
  std::string shown(const Wheels& wheels, std::size_t records) {
    std::string text;
    for (const std::string& line : generated(wheels, records)) {
      text += line.substr(0, line.size() - 1) + "|";
    }
    std::replace(text.begin(), text.end(), ',', ' ');
    return text;
  }

  RepeatSetup setup;
};

TEST_F(RepeatOdometerTest, AnOuterItemStaysUntilTheInnerOneIsThrough) {
  EXPECT_EQ(shown({{.values = 2, .level = 1}, {.values = 3, .level = 2}, {.values = 4}}, 8),
            "01 11 21|01 12 22|01 13 23|02 11 24|02 12 21|02 13 22|01 11 23|02 12 24|");
  // Each level as often as its count says, and empty when all is done.
  EXPECT_EQ(shown({{.values = 2, .level = 5, .count = 2, .action = 0},
                   {.values = 1, .is_list = true, .level = 1, .count = 2, .action = 0}},
                  10),
            "01 11|02 11|01 11|02 11|01 11|02 11|01 11|02 11| | |");
}

// The item wraps with every record, so that its finished flag is never cleared once it is set: the
// level above moves with every record from then on. The count foretells six records.
TEST_F(RepeatOdometerTest, AnInnermostItemOfOneValueTurnsOnlyOnceInFull) {
  Wheels wheels = {{.values = 3, .level = 1}, {.values = 1, .level = 2, .count = 2}};
  EXPECT_EQ(shown(wheels, 7), "01 11|01 11|02 11|03 11|01 11|02 11|03 11|");
  wheels[0].action = wheels[1].action = 0;
  wheels[1].is_list = true;
  EXPECT_EQ(shown(wheels, 6), "01 11|01 11|02 11|03 11| | |");
}

// For the same reason an outer list can be asked for a value behind its last one.
TEST_F(RepeatOdometerTest, AListNeverEndsOutsideItself) {
  Wheels wheels = {{.values = 2, .is_list = true, .level = 1},
                   {.values = 2, .level = 2},
                   {.values = 1, .level = 3}};
  EXPECT_EQ(shown(wheels, 6), "01 11 21|01 12 21|02 11 21|01 12 21|01 11 21|02 12 21|");
  wheels[0].action = exceeded_action::initialize;
  EXPECT_EQ(shown(wheels, 5), "01 11 21|01 12 21|02 11 21| 12 21| 11 21|");
}

// It never wraps: as the innermost level it holds everything else, further out it lets what is
// inside turn for ever.
TEST_F(RepeatOdometerTest, TheInitialValueNeverTurns) {
  EXPECT_EQ(shown({{.values = 2, .level = 1}, {.values = 0, .level = 2}}, 4), "01 |01 |01 |01 |");
  EXPECT_EQ(
      shown({{.values = 0, .level = 1, .action = 0}, {.values = 2, .level = 2, .action = 0}}, 5),
      " 11| 12| 11| 12| 11|");
  EXPECT_EQ(shown({{.values = 2, .level = 1},
                   {.values = 0, .level = 2, .is_quoted = true},
                   {.values = 2, .level = 3}},
                  5),
            "01  21|01  22|01  21|01  22|01  21|");
}

// A level record without its flag lets no item repeat.
TEST_F(RepeatOdometerTest, WithoutTheLevelsFlagNothingRepeats) {
  const RunItem item = {.texts = {"%1U", "1", "2", "1"}, .level = 2, .count = 0, .action = 0};
  setup.write({item}, {.records = 4, .repeat_flag = 0});
  EXPECT_EQ(setup.generate(), (Names{"1,", "2,", ",", ","}));
}

// So many levels in any order of the items, with items beside them that do not repeat.
Wheels draw(std::mt19937& random, int levels) {
  const auto up_to = [&](unsigned most) { return static_cast<int>(random() % most) + 1; };
  Wheels wheels;
  for (int level = 1; level <= levels; ++level) {
    wheels.push_back({.values = (level == levels ? 1 : 0) + up_to(3),
                      .level = level == 1 ? 1 : 2 * level + up_to(2),
                      .count = up_to(3)});
  }
  for (int i = up_to(2); i > 0; --i) wheels.push_back({.values = up_to(4)});
  for (Wheel& wheel : wheels) {
    wheel.is_list = up_to(2) == 1;
    wheel.action = up_to(2) == 1 ? exceeded_action::repeat : exceeded_action::initialize;
    wheel.is_quoted = up_to(2) == 1;
  }
  std::shuffle(wheels.begin(), wheels.end(), random);
  return wheels;
}

TEST_F(RepeatOdometerTest, RandomRepeatsGiveEveryCombination) {
  constexpr unsigned seed = 19991231;
  std::mt19937 random(seed);
  for (int i = 0; i < 240; ++i) {
    const Wheels wheels = draw(random, i % 4 + 1);
    std::string description;
    for (const Wheel& w : wheels) {
      description += (w.is_list ? "list of " : "range of ") + std::to_string(w.values) +
                     ", level " + std::to_string(w.level) + " x " + std::to_string(w.count) +
                     ", action " + std::to_string(w.action) + "; ";
    }
    const Names expected = nested_loops(wheels, 9);
    ASSERT_EQ(generated(wheels, expected.size()), expected) << description;
  }
}

}  // namespace
}  // namespace korvex::test
