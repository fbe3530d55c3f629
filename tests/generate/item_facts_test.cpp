#include "courses/item_facts.h"

#include <gtest/gtest.h>

#include <unordered_map>

#include "generate/field_facts.h"
#include "generate/random_settings.h"
#include "support/bytes.h"
#include "support/list_values.h"

namespace korvex::test {
namespace {

constexpr int tested_records = 1500;

// Nothing for settings that have no closed form.
std::optional<ItemFacts> facts_of(const ClFmtColInf& column, std::int32_t layout_kind) {
  const auto course = ItemCourse::of(column, layout_kind);
  return course ? std::optional(item_facts(column, *course)) : std::nullopt;
}

// What the generated fields show.
struct Seen {
  std::vector<std::uint64_t> bytes;  // of the first 0, 1, 2, … fields
  std::uint64_t first_repetition = endless;
  std::uint64_t first_empty = endless;
  std::vector<std::string> values;
};

Seen generate(const ClFmtColInf& column, std::int32_t layout_kind, int records) {
  const auto generated = generate_lines(column, layout_kind, false, records);
  EXPECT_EQ(generated.result, 0);
  Seen seen;
  seen.bytes = {0};
  std::unordered_map<std::string, std::uint64_t> met;
  for (const std::string& line : generated.lines) {
    const std::uint64_t place = seen.values.size();
    seen.values.push_back(line.substr(0, line.size() - 1));
    seen.bytes.push_back(seen.bytes.back() + line.size());
    if (line == "," && seen.first_empty == endless) seen.first_empty = place;
    const bool is_new = met.emplace(seen.values.back(), place).second;
    if (!is_new && seen.first_repetition == endless) seen.first_repetition = place;
  }
  return seen;
}

std::size_t distinct_among(const Seen& seen, std::uint64_t count) {
  const auto end = seen.values.begin() + static_cast<std::ptrdiff_t>(count);
  std::vector<std::string> values(seen.values.begin(), end);
  std::sort(values.begin(), values.end());
  return static_cast<std::size_t>(std::unique(values.begin(), values.end()) - values.begin());
}

// Holds everything that the facts says against the generated fields.
void compare(const ItemFacts& facts, const Seen& seen, bool is_constant) {
  FieldFacts field;
  field.values = facts;
  field.frame_bytes = 1;
  const std::uint64_t records = seen.values.size();
  for (std::uint64_t count = 0; count <= records; ++count) {
    ASSERT_EQ(field.bytes(count), seen.bytes[count]) << count << " records";
  }
  const bool is_emptied = facts.runs_empty && facts.end < records;
  if (!is_constant) {
    EXPECT_EQ(seen.first_empty, is_emptied ? facts.end : endless);
  }
  EXPECT_GE(seen.first_repetition, std::min(facts.different, records));
  if (!facts.period) return;
  if (!facts.runs_empty || !facts.has_end()) {
    for (std::uint64_t i = *facts.period; i < records; ++i) {
      ASSERT_EQ(seen.values[i], seen.values[i - *facts.period]) << i;
    }
  }
  if (!facts.distinct) return;
  if (*facts.period <= records) {
    EXPECT_EQ(distinct_among(seen, *facts.period), *facts.distinct);
  }
  if (facts.different < records && !(is_emptied && facts.different == facts.end)) {
    EXPECT_EQ(seen.first_repetition, facts.different);
  }
}

bool is_constant(const ClFmtColInf& column) {
  return column.record.generation_type == generation_type::initial_value;
}

TEST(ItemFactsTest, TellsWhatAPersonsSettingsGive) {
  int untold = 0;
  int without_distinct = 0;
  for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
    RandomSettings random(seed);
    const RandomItem item = random.draw();
    SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << item.description());
    const auto layout_kind = static_cast<std::int32_t>(seed % 3 + 1);
    const auto facts = facts_of(*item.column, layout_kind);
    if (!facts) {
      ++untold;
      continue;
    }
    without_distinct += facts->distinct ? 0 : 1;
    compare(*facts, generate(*item.column, layout_kind, tested_records), is_constant(*item.column));
    if (HasFailure()) return;
  }
  // Only a number that shows no more than its last digits, or counts behind its end beside another
  // element, leaves something open.
  EXPECT_EQ(untold, 0);
  EXPECT_LT(without_distinct, 150);
}

TEST(ItemFactsTest, SaysNothingWrongOfCraftedSettings) {
  int told = 0;
  for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
    RandomSettings random(seed);
    const RandomItem item = random.draw_odd();
    const auto facts = facts_of(*item.column, 1);
    if (!facts) continue;
    SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << item.description());
    ++told;
    compare(*facts, generate(*item.column, 1, tested_records), is_constant(*item.column));
    if (HasFailure()) return;
  }
  EXPECT_GT(told, 300);
}

struct LongCase {
  ItemAttributes item;
  RangeTexts texts;
  std::uint64_t period;
  std::uint64_t distinct;
  bool has_end = true;
};

// Far beyond what a test generates.
TEST(ItemFactsTest, CountsToEndsThatNoTestReaches) {
  const LongCase cases[] = {
      {unsigned_item,
       {"%18U", "1", "999999999999999999", "1"},
       999999999999999999,
       999999999999999999},
      {unsigned_item, {"%10U", "0", "9999999999", "7"}, 1428571429, 1428571429},
      {signed_item, {"%10D", "-2147483648", "2147483648", "2"}, 2147483649, 2147483649},
      {character_item, {"%5S", "AAAAA", "ZZZZZ", "1"}, 11881376, 11881376},
      {character_item, {"%5S%3U", "AAAAA,001", "ZZZZZ,999", "1"}, 11881376, 11881376},
      {character_item, {"%1U%4s", "1,aaaa", "9,zzzz", "1"}, 456976, 456976},
      {national_item, {"%2N", cp932("！！"), cp932("熙熙"), "1"}, 6953, 6953},
      // One character stands twice in the order of full-width characters.
      {national_item, {"%N", "\x81\x42", "\xFA\x57", "1"}, 7334, 7333},
      {national_item, {"%N", "\x81\x42", "\xFA\x57", "7"}, 1048, 1048},
      {date_item, {"%4YMD", "19700101", "20380119", "1"}, 24856, 24856},
      {date_item, {"%2YMD", "700101", "380119", "9"}, 2762, 2762},
      {date_item, {"%4YMA", "00010101", "99991231", "1"}, 3719628, 3719628, false},
      {date_item, {"%2YMA", "380101", "400101", "1"}, 745, 745},
      {date_item, {"%2YMA", "690101", "700101", "1"}, 1, 1},
      {time_item, {"%T", "000000", "235959", "7"}, 86400, 86400, false},
      {time_item, {"%T", "000000", "235958", "5"}, 17280, 17280, false},
      {time_item, {"%T", "000000", "235949", "7"}, 12342, 12342},
      {timestamp_item, {"%TS", "19700101 090000", "20380119 031407", "1"}, 2147451248, 2147451248},
      {timestamp_item, {"%TS", "20380119 031407", "19700101 090000", "-1"}, 2147451248, 2147451248},
  };
  for (const LongCase& row : cases) {
    SCOPED_TRACE(row.texts.format + " to " + row.texts.end);
    const auto column = make_column({row.item, row.texts});
    const auto facts = facts_of(*column, 1);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->period, row.period);
    EXPECT_EQ(facts->distinct, row.distinct);
    EXPECT_EQ(facts->has_end(), row.has_end);
    const std::uint64_t records = std::uint64_t{1} << 31;
    FieldFacts field;
    field.values = facts;
    EXPECT_EQ(field.bytes(records), records * fields(*column, 1).size());
  }
}

TEST(ItemFactsTest, ListsKeepTheirLengthsAndRepetitions) {
  ClEnumDataList values;
  fill_list({"a", "bb", "cc", "bb", "dddd"}, values);
  for (const bool runs_empty : {false, true}) {
    const ItemFacts facts = list_facts(values, runs_empty);
    EXPECT_EQ(facts.distinct, 4u);
    EXPECT_EQ(facts.different, 3u);
    FieldFacts field;
    field.values = facts;
    field.frame_bytes = 3;
    EXPECT_EQ(field.bytes(3), 5u + 9u);
    EXPECT_EQ(field.bytes(12), (runs_empty ? 11u : 11u + 11u + 3u) + 36u);
  }
}

}  // namespace
}  // namespace korvex::test
