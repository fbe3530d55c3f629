#include "generate/repeat_count.h"

#include <functional>

#include "format/reconcile.h"
#include "generate/repeat_setup.h"

namespace korvex::test {
namespace {

constexpr std::uint64_t all_ones = ~std::uint64_t{0};

// A number of `digits` digits from `start` to `end`.
RunItem numbers(std::int32_t digits, const std::string& start, const std::string& end,
                const std::string& increment = "1") {
  return {.item = {4, 0, digits, digits, 0},
          .texts = {"%" + std::to_string(digits) + "U", start, end, increment}};
}

// One to `last` in five digits.
RunItem up_to(int last) { return numbers(5, "1", std::to_string(last)); }

RunItem listed(const std::string& lines) { return {.item = {4, 0, 5, 5, 0}, .list = lines}; }

RunItem text(const RangeTexts& texts) { return {.item = {1, 1, 20, 20, 0}, .texts = texts}; }

RunItem moment(std::int32_t attribute, std::int32_t digits, const RangeTexts& texts) {
  return {.item = {attribute, 0, digits, digits, 0}, .texts = texts};
}

RunItem repeated(RunItem item, std::int32_t count, std::int32_t level = 1) {
  item.level = level;
  item.count = count;
  return item;
}

struct Counted {
  std::int32_t result = 0;
  std::uint64_t data_items = 0;
  std::uint64_t bytes = 0;

  bool operator==(const Counted&) const = default;
};

void PrintTo(const Counted& counted, std::ostream* out) {
  *out << counted.result << ": " << counted.data_items << " items, " << counted.bytes << " bytes";
}

class RepeatCountTest : public testing::Test {
 protected:
  // Numbers the items from 1 and saves them; `change` then works on the first one's settings.
  void write(std::vector<RunItem> items, std::function<void(ClFmtColInf&)> change = {}) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      items[i].number = static_cast<std::int32_t>(i) + 1;
    }
    setup.write(items);
    if (!change) return;
    setup.change_settings({}, [&](ClFmtFile& file) { change(*file.find_column(1)); });
  }

  // The count of what was written last.
  Counted count(bool repeats_only) {
    ClColMain main;
    main.control_path = setup.long_control();
    main.set_run_mode(run_mode::settings_only);
    EXPECT_EQ(main.load(), 0);
    EXPECT_GE(reconcile(main), 0);
    RepeatCount counted = {77, 77};
    const std::int32_t result = count_data_items(main, repeats_only, counted);
    left_out.clear();
    for (const auto& item : main.items) left_out.push_back(item->state == 16);
    return {result, counted.data_items, counted.predicted_bytes};
  }

  RepeatSetup setup;
  std::vector<bool> left_out;  // items without settings
};

TEST_F(RepeatCountTest, PlainItemsCountByTheLongestAndRepeatsMultiply) {
  RunItem without = up_to(50);
  without.is_in_settings = false;
  struct Case {
    std::vector<RunItem> items;
    Counted all, repeats;
  };
  const Case cases[] = {
      {{up_to(10), up_to(25), {.item = {1, 1, 4, 0, 0}}}, {0, 25, 25 * 14}, {-6, 0, 0}},
      {{up_to(10), without, up_to(3)}, {0, 10, 100}, {-6, 0, 0}},
      {{repeated(up_to(4), 3), up_to(100)}, {0, 100, 1000}, {0, 12, 120}},
      {{repeated(up_to(4), 3), up_to(7), repeated(listed("1\n\n2\n"), 5, 2)},
       {0, 120, 1800},
       {0, 120, 1800}},
      // A product of one says nothing about repeats.
      {{repeated({.item = {4, 0, 5, 5, 0}}, 1), up_to(7)}, {0, 7, 70}, {0, 7, 70}},
  };
  for (const Case& c : cases) {
    write(c.items);
    EXPECT_EQ(count(false), c.all);
    EXPECT_EQ(count(true), c.repeats);
    for (std::size_t i = 0; i < c.items.size(); ++i) {
      EXPECT_EQ(left_out[i], !c.items[i].is_in_settings);
    }
  }
  write({{.item = {4, 0, 8, 3, 0}, .texts = {"%3U", "1", "5", "1"}}, up_to(10)},
        [](ClFmtColInf& column) { column.record.length = 0; });
  EXPECT_EQ(count(false), (Counted{0, 10, 10 * (5 + 3)})) << "widths come from the settings";
  write({repeated(listed("1\n2\n"), 5), up_to(7)});
  std::filesystem::remove(setup.list_path(1));
  EXPECT_EQ(count(true), (Counted{0, 7, 70})) << "a list that is missing counts nothing";
  write({up_to(10)});
  setup.change_settings({}, [](ClFmtFile& file) {
    ASSERT_EQ(file.set_initial_value(99, {4, 0, 5, 5, 0}), 0);
    ASSERT_EQ(file.delete_settings(1), 0);
  });
  EXPECT_EQ(count(false), (Counted{-6, 0, 0})) << "nothing to count";
}

TEST_F(RepeatCountTest, CountsTheValuesOfAnItem) {
  struct Case {
    RunItem item;
    std::uint64_t values;
    std::function<void(ClFmtColInf&)> change = {};
  };
  const Case cases[] = {
      {{.item = {4, 0, 5, 5, 0}}, 1},
      {numbers(5, "1", "10", "4"), 3},
      {numbers(5, "1", "9", "3"), 3},
      {numbers(5, "10", "1", "-4"), 3},
      {numbers(12, "1", "2000000001"), 2'000'000'001},
      {numbers(12, "1", "5000000000"), 3, [](auto& c) { c.record.increment.high = -2; }},
      {{.item = {4, 0, 6, 5, 2}, .texts = {"%3.2U", "0.5", "1", "0.25"}}, 3},
      {text({"%2S", "AA", "BC", "1"}), 29},
      {text({"%1S'-'%2U", "A,01", "D,10", "1"}), 10},
      {text({"'ABC'", "", "", ""}), 1},
      {moment(28, 8, {"%4YMD", "19700101", "19700201", "1"}), 101},
      {moment(31, 6, {"%T", "000000", "000100", "1"}), 101},
      {moment(32, 15, {"%TS", "20240101 000000", "20240102 000010", "3"}), 4},
      {listed("7\r\n\r\n8"), 2},
      {listed("7\nx\n"), 0},
      {listed("\n"), 0},
      {up_to(9), 1, [](auto& c) { c.record.increment.low = 0; }},
      {up_to(9), 1, [](auto& c) { c.record.lead_element = 2; }},
      {up_to(9), 1, [](auto& c) { c.record.lead_element = 0; }},
      {up_to(9), 9,
       [](auto& c) {
         c.record.generation_type = generation_type::reference;
         c.record.referenced_item = 1;
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.item.texts.format + " " + c.item.texts.end + " " + c.item.list.value_or(""));
    write({c.item}, c.change);
    // Without repeats the empty product, one, is the least that is counted.
    EXPECT_EQ(count(false).data_items, std::max<std::uint64_t>(c.values, 1));
    write({repeated(c.item, 2)}, c.change);
    EXPECT_EQ(count(true).data_items, c.values * 2);
  }
}

// A timestamp's time of day that ends before it starts, and a product of more than 64 bits, make
// the largest numbers: too large for every size limit, also beside other items and with repeats.
TEST_F(RepeatCountTest, WhatPassesTheNumbersIsTooLarge) {
  const RunItem backwards = moment(32, 15, {"%TS", "20240101 235959", "20240102 000001", "1"});
  const RunItem huge = numbers(18, "1", "999999999999999999");
  constexpr std::uint64_t below_zero = all_ones - 235957 + 1;  // 000001 - 235959 + 1
  struct Case {
    std::vector<RunItem> items;
    std::uint64_t data_items, repeated;
  };
  const Case cases[] = {
      {{backwards, up_to(3)}, below_zero, 0},
      {{repeated(backwards, 1)}, below_zero, below_zero},
      {{repeated(backwards, 2), up_to(3)}, all_ones, all_ones},
      {{repeated(backwards, 1), repeated(backwards, 1, 2)}, below_zero, below_zero},
      {{repeated(huge, 2'147'483'647), repeated(huge, 9, 2)}, all_ones, all_ones},
      {{repeated(huge, 4), repeated(up_to(5), 1, 2)}, 3999999999999999996U, 3999999999999999996U},
  };
  for (const char* limit : {"10000000000", "18446744073709551614"}) {
    setup.limit("CheckFileSizeMax", limit);
    for (const Case& c : cases) {
      write(c.items);
      EXPECT_EQ(count(false), (Counted{0, c.data_items, all_ones}));
      if (c.repeated == 0) continue;  // nothing repeats
      EXPECT_EQ(count(true), (Counted{0, c.repeated, all_ones}));
    }
  }
}

TEST_F(RepeatCountTest, ASizeAboveTheLimitIsTooLarge) {
  setup.limit("CheckFileSizeMax", "1000");
  write({up_to(100), up_to(50)});
  EXPECT_EQ(count(false), (Counted{0, 100, 1000}));
  // The pass stops where the size is too large, whatever comes behind.
  write({up_to(101), up_to(500)});
  EXPECT_EQ(count(false), (Counted{0, 101, all_ones}));
  // Plain items do not stop a count of repeats that they outnumber.
  write({up_to(500), repeated(up_to(4), 3), repeated(up_to(2), 5, 2)});
  EXPECT_EQ(count(true), (Counted{0, 120, all_ones}));
  EXPECT_EQ(count(false), (Counted{0, 500, all_ones}));
  write({repeated(up_to(40), 3), repeated(up_to(2), 5, 2)});
  EXPECT_EQ(count(true), (Counted{0, 120, all_ones})) << "stopped behind the first item";
}

TEST_F(RepeatCountTest, TheCalculationSaysWhetherItCouldCount) {
  ScriptedInterface interface;
  const platform::UserInterfaceOverride override(interface);
  const auto run = [&](std::int32_t result, std::uint64_t data_items) {
    ClRepeatCalcMain calculation;
    calculation.main.control_path = setup.long_control();
    calculation.main.set_run_mode(run_mode::settings_only);
    calculation.data_items = 77;
    EXPECT_EQ(calculation.run(), result);
    EXPECT_EQ(calculation.data_items, data_items);
  };
  run(0, 0);  // without a control file
  write({repeated(up_to(4), 3), up_to(100)});
  run(1, 12);
  write({up_to(100)});  // nothing repeats
  run(1, 0);
  setup.limit("CheckFileSizeMax", "1000");
  write({repeated(up_to(101), 1), up_to(2)});  // too large
  run(1, 0);
  std::filesystem::remove(setup.settings());
  run(0, 0);
  EXPECT_TRUE(interface.messages.empty());
}

}  // namespace
}  // namespace korvex::test
