#include <gtest/gtest.h>

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
};

using Wheels = std::vector<Wheel>;

std::string value_text(std::size_t item, int index) {
  return std::to_string(item) + std::to_string(index + 1);
}

// A whole field of one value, or an empty one for a negative index.
std::string field(const Wheels& wheels, std::size_t item, int index) {
  if (wheels[item].values == 0) return ",";
  const std::string mark = wheels[item].is_quoted ? "\"" : "";
  return mark + (index < 0 ? "" : value_text(item, index)) + mark + ",";
}

// The value of an item that does not repeat: one after the other, and then by its action.
int plain_index(const Wheel& wheel, std::size_t step) {
  const auto values = static_cast<std::size_t>(wheel.values);
  return values == 0 || (step >= values && wheel.action == 0) ? -1
                                                              : static_cast<int>(step % values);
}

// The repeated items from the outermost to the innermost.
std::vector<std::size_t> levels_of(const Wheels& wheels) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < wheels.size(); ++i) {
    if (wheels[i].level != 0) order.push_back(i);
  }
  std::sort(order.begin(), order.end(),
            [&](auto a, auto b) { return wheels[a].level < wheels[b].level; });
  return order;
}

// Every combination in order: each value of a level stays while the level inside runs through its
// own values as often as its count says.
void combine(const Wheels& wheels, const std::vector<std::size_t>& order, std::size_t depth,
             std::vector<int>& current, std::vector<std::vector<int>>& combinations) {
  if (depth == order.size()) {
    combinations.push_back(current);
    return;
  }
  const Wheel& wheel = wheels[order[depth]];
  for (std::int32_t repetition = 0; repetition < wheel.count; ++repetition) {
    for (int value = 0; value < wheel.values; ++value) {
      current[order[depth]] = value;
      combine(wheels, order, depth + 1, current, combinations);
    }
  }
}

// All records by nested loops, and what comes behind the last combination. True as long as the
// innermost item has more than one value.
Names nested_loops(const Wheels& wheels, std::size_t records) {
  std::vector<std::vector<int>> combinations;
  std::vector<int> current(wheels.size());
  combine(wheels, levels_of(wheels), 0, current, combinations);
  Names lines;
  for (std::size_t record = 0; record < records; ++record) {
    std::string line;
    for (std::size_t item = 0; item < wheels.size(); ++item) {
      const bool repeats = wheels[item].level != 0;
      if (!repeats) {
        line += field(wheels, item, plain_index(wheels[item], record));
      } else if (record < combinations.size()) {
        line += field(wheels, item, combinations[record][item]);
      } else if (wheels[item].action == 0) {
        line += field(wheels, item, -1);
      } else {
        line += field(wheels, item, plain_index(wheels[item], record - combinations.size()));
      }
    }
    lines.push_back(line);
  }
  return lines;
}

// The counters step by step: what an item writes, when it has wrapped, and how the table turns. It
// also knows what the loops do not: items that wrap with every record, or never.
class Counters {
 public:
  explicit Counters(const Wheels& wheels)
      : wheels_(wheels), items_(wheels.size()), order_(levels_of(wheels)), entries_(order_.size()) {
    for (std::size_t i = 0; i < order_.size(); ++i) items_[order_[i]].entry = i;
  }

  std::string next_record() {
    std::string line;
    for (std::size_t item = 0; item < wheels_.size(); ++item) line += next_field(item);
    ++records_;
    if (!order_.empty() && !all_finished_) advance();
    return line;
  }

 private:
  struct Item {
    int index = 0;
    bool wrapped = false;
    std::string saved;
    std::size_t entry = 0;
  };
  struct Entry {
    bool finished = false;
    std::int32_t done = 0;
  };

  std::string next_field(std::size_t place) {
    const Wheel& wheel = wheels_[place];
    Item& item = items_[place];
    if (wheel.values == 0) return ",";
    const bool repeats = wheel.level != 0;
    if (repeats && all_finished_ && wheel.action == 0) return field(wheels_, place, -1);
    if (!repeats || all_finished_) return plain_field(place);

    const bool is_innermost = item.entry + 1 == entries_.size();
    const bool waits = !is_innermost && records_ != 0 && !entries_[item.entry + 1].finished;
    if (wheel.is_list) {
      if (waits) --item.index;
      if (item.index >= wheel.values) return plain_field(place);  // never outside the list
      const std::string text = field(wheels_, place, item.index++);
      if (item.index == wheel.values) item.wrapped = true;
      return text;
    }
    if (waits) return item.saved;
    item.saved = field(wheels_, place, item.index++);
    if (item.index == wheel.values) item.wrapped = true;
    if (item.wrapped) item.index = 0;
    return item.saved;
  }

  std::string plain_field(std::size_t place) {
    const Wheel& wheel = wheels_[place];
    Item& item = items_[place];
    if (item.index == wheel.values) {
      if (wheel.action == 0) return field(wheels_, place, -1);
      item.index = 0;
    }
    return field(wheels_, place, item.index++);
  }

  void advance() {
    for (std::size_t i = entries_.size(); i-- > 0;) {
      Item& item = items_[order_[i]];
      if (i + 1 < entries_.size()) {
        if (!item.wrapped || !entries_[i + 1].finished) return;
      } else if (!item.wrapped) {
        for (Entry& entry : entries_) entry.finished = false;
        return;
      }
      item.wrapped = false;
      if (wheels_[order_[i]].is_list) item.index = 0;
      if (++entries_[i].done == wheels_[order_[i]].count) entries_[i] = {true, 0};
      if (i == 0 && entries_[i].finished) all_finished_ = true;
      if (all_finished_) return;
    }
  }

  const Wheels& wheels_;
  std::vector<Item> items_;
  std::vector<std::size_t> order_;
  std::vector<Entry> entries_;
  std::int64_t records_ = 0;
  bool all_finished_ = false;
};

Names counted(const Wheels& wheels, std::size_t records) {
  Counters counters(wheels);
  Names lines;
  while (lines.size() < records) lines.push_back(counters.next_record());
  return lines;
}

class RepeatOdometerTest : public testing::Test {
 protected:
  // The records that the generator writes for these items.
  Names generated(const Wheels& wheels, std::size_t records, std::int32_t quotation = 1) {
    std::vector<RunItem> items;
    for (std::size_t i = 0; i < wheels.size(); ++i) {
      const Wheel& wheel = wheels[i];
      RunItem item;
      item.number = static_cast<std::int32_t>(i) + 1;
      item.item = wheel.is_quoted ? ItemAttributes{1, 1, 2, 2, 0} : ItemAttributes{4, 0, 2, 2, 0};
      item.level = wheel.level;
      item.count = wheel.count;
      item.action = wheel.action;
      if (wheel.is_list) {
        item.list = "";
        for (int v = 0; v < wheel.values; ++v) *item.list += value_text(i, v) + "\n";
      } else if (wheel.values > 0) {
        // No range has a single value; one is made of two.
        item.texts = {"%2U", value_text(i, 0), value_text(i, std::max(wheel.values, 2) - 1), "1"};
      }
      items.push_back(item);
    }
    const RunOptions options = {.records = static_cast<std::int32_t>(records),
                                .quotation = quotation};
    setup.write(items, options);
    const auto is_single = [](const Wheel& wheel) { return !wheel.is_list && wheel.values == 1; };
    if (std::any_of(wheels.begin(), wheels.end(), is_single)) {
      setup.change_settings(options, [&](ClFmtFile& file) {
        for (std::size_t i = 0; i < wheels.size(); ++i) {
          if (!is_single(wheels[i])) continue;
          FmtItemRec& element = file.find_element(static_cast<std::int32_t>(i) + 1, 1)->record;
          element.end = element.start;
          store_field(element.end_text, field_text(element.start_text));
        }
      });
    }
    return setup.generate();
  }

  // "01 11" for the fields 01 and 11.
  static std::string words(const std::string& line) {
    std::string text = line.substr(0, line.size() - 1);
    std::replace(text.begin(), text.end(), ',', ' ');
    return text;
  }

  std::string shown(const Wheels& wheels, std::size_t records) {
    std::string text;
    for (const std::string& line : generated(wheels, records)) text += words(line) + "|";
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

TEST_F(RepeatOdometerTest, ASavedFieldKeepsItsQuotationMarks) {
  const Wheels wheels = {{.values = 2, .level = 1, .action = 0, .is_quoted = true},
                         {.values = 2, .is_list = true, .level = 2, .action = 0, .is_quoted = true},
                         {.values = 2, .level = 3, .action = 0}};
  const Names expected = {"\"01\",\"11\",21,", "\"01\",\"11\",22,", "\"01\",\"12\",21,",
                          "\"01\",\"12\",22,", "\"02\",\"11\",21,"};
  EXPECT_EQ(generated(wheels, 5), expected);
  EXPECT_EQ(generated(wheels, 9).back(), "\"\",\"\",,");
  EXPECT_EQ(generated(wheels, 5, 0).front(), "01,11,21,");
}

// The item wraps with every record, so that its finished flag is never cleared once it is set: the
// level above moves with every record from then on. The count foretells six records.
TEST_F(RepeatOdometerTest, AnInnermostItemOfOneValueTurnsOnlyOnceInFull) {
  const Wheels ranges = {{.values = 3, .level = 1}, {.values = 1, .level = 2, .count = 2}};
  EXPECT_EQ(shown(ranges, 7), "01 11|01 11|02 11|03 11|01 11|02 11|03 11|");
  Wheels emptied = ranges;
  emptied[0].action = emptied[1].action = 0;
  emptied[1].is_list = true;
  EXPECT_EQ(shown(emptied, 6), "01 11|01 11|02 11|03 11| | |");
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

class RandomRepeats : public RepeatOdometerTest, public testing::WithParamInterface<int> {
 protected:
  int up_to(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)) + 1; }
  bool one_in(int count) { return up_to(count) == 1; }

  // So many levels in any order of the items, with items beside them that do not repeat.
  Wheels draw(int levels, int fewest_inner_values) {
    Wheels wheels;
    for (int level = 1; level <= levels; ++level) {
      const bool is_innermost = level == levels;
      wheels.push_back({.values = is_innermost ? fewest_inner_values - 1 + up_to(3) : up_to(3),
                        .is_list = one_in(2),
                        .level = level == 1 ? 1 : 2 * level + up_to(2),
                        .count = up_to(3)});
    }
    for (int i = up_to(2); i > 0; --i) wheels.push_back({.values = up_to(4), .is_list = one_in(2)});
    for (Wheel& wheel : wheels) {
      wheel.action = one_in(2) ? exceeded_action::repeat : exceeded_action::initialize;
      wheel.is_quoted = one_in(2);
    }
    std::shuffle(wheels.begin(), wheels.end(), random_);
    return wheels;
  }

  static std::string describe(const Wheels& wheels) {
    std::string text;
    for (const Wheel& w : wheels) {
      text += (w.is_list ? "list of " : "range of ") + std::to_string(w.values) + ", level " +
              std::to_string(w.level) + " x " + std::to_string(w.count) + ", action " +
              std::to_string(w.action) + "; ";
    }
    return text;
  }

  std::mt19937 random_{19991231};
};

constexpr std::size_t records_behind_the_end = 9;

TEST_P(RandomRepeats, GiveEveryCombination) {
  for (int i = 0; i < 60; ++i) {
    const Wheels wheels = draw(GetParam(), 2);
    std::size_t records = records_behind_the_end;
    std::size_t product = 1;
    for (const Wheel& w : wheels) {
      if (w.level != 0) product *= static_cast<std::size_t>(w.values * w.count);
    }
    records += product;
    const Names expected = nested_loops(wheels, records);
    ASSERT_EQ(counted(wheels, records), expected) << describe(wheels);
    ASSERT_EQ(generated(wheels, records), expected) << describe(wheels);
  }
}

TEST_P(RandomRepeats, TurnStepByStep) {
  for (int i = 0; i < 60; ++i) {
    Wheels wheels = draw(GetParam(), 1);
    for (Wheel& wheel : wheels) {
      if (!one_in(8)) continue;
      wheel.values = 0;
      wheel.is_list = false;
    }
    ASSERT_EQ(generated(wheels, 120), counted(wheels, 120)) << describe(wheels);
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, RandomRepeats, testing::Values(1, 2, 3, 4));

}  // namespace
}  // namespace korvex::test
