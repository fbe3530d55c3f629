#include "courses/item_facts.h"

#include <gtest/gtest.h>

#include <unordered_map>

#include "run/field_facts.h"
#include "run/random_settings.h"
#include "support/bytes.h"
#include "support/list_values.h"
#include "support/table.h"

namespace korvex::test {
namespace {

constexpr int tested_records = 1500;

// Nothing for settings that have no closed form.
std::optional<ItemFacts> facts_of(const ClFmtColInf& column, LayoutKind layout_kind) {
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

Seen generate(const ClFmtColInf& column, LayoutKind layout_kind, int records) {
  ItemRun run(column, layout_kind);
  Seen seen;
  seen.bytes = {0};
  std::unordered_map<std::string, std::uint64_t> met;
  std::vector<std::string_view> values;
  for (std::uint64_t place = 0; std::cmp_less(place, records); ++place) {
    EXPECT_EQ(run.next(values), error::none);
    seen.values.emplace_back(values[0]);
    seen.bytes.push_back(seen.bytes.back() + values[0].size() + 1);
    if (values[0].empty() && seen.first_empty == endless) seen.first_empty = place;
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

void expect_counts(const ItemSettings& settings, Steps period, Steps distinct, bool has_end) {
  SCOPED_TRACE(settings.texts.format + " to " + settings.texts.end);
  const auto column = checked_column(settings);
  ASSERT_TRUE(column);
  const auto facts = facts_of(*column, layout_kind::record_file);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->period, period);
  EXPECT_EQ(facts->distinct, distinct);
  EXPECT_EQ(facts->has_end(), has_end);
  FieldFacts field;
  field.values = facts;
  const std::uint64_t records = RecordCount::most;
  const std::size_t size = generate(*column, layout_kind::record_file, 1).values[0].size();
  EXPECT_EQ(field.bytes(records), ByteCount{records} * size);
}

// Of settings that a person can enter, and of those that only a file from elsewhere can hold.
TEST(ItemFactsTest, TellsWhatSettingsGive) {
  for (const bool is_odd : {false, true}) {
    int told = 0;
    int without_distinct = 0;
    for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
      RandomSettings random(seed);
      const RandomItem item = is_odd ? random.draw_odd() : random.draw();
      SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << item.description());
      const auto layout_kind = static_cast<LayoutKind>(seed % 3 + 1);
      const auto facts = facts_of(*item.column, layout_kind);
      if (!facts) continue;
      ++told;
      without_distinct += facts->distinct ? 0 : 1;
      compare(*facts, generate(*item.column, layout_kind, tested_records),
              item.column->record.generation_type == generation_type::initial_value);
      if (HasFailure()) return;
    }
    // Only a number that shows no more than its last digits, or counts beyond its end beside
    // another element, leaves something open.
    EXPECT_GE(told, is_odd ? 300 : 3000);
    EXPECT_LT(without_distinct, is_odd ? told : 150);
  }
}

// Far beyond what a test generates.
TEST(ItemFactsTest, CountsToEndsThatNoTestReaches) {
  // Item, settings, period and number of different values, and whether there is no end.
  for (const auto& [item, format, start, end, increment, period, distinct, endless_run] :
       table<8>(R"(
      4 0 20 18   | %18U   | 1           | 999999999999999999 | 1 | 999999999999999999 | 999999999999999999 |
      4 0 20 18   | %10U   | 0           | 9999999999 | 7  | 1428571429 | 1428571429 |
      4 1 20 18   | %10D   | -2147483648 | 2147483648 | 2  | 2147483649 | 2147483649 |
      1 1 128 128 | %5S    | AAAAA       | ZZZZZ      | 1  | 11881376   | 11881376   |
      1 1 128 128 | %5S%3U | AAAAA,001   | ZZZZZ,999  | 1  | 11881376   | 11881376   |
      1 1 128 128 | %1U%4s | 1,aaaa      | 9,zzzz     | 1  | 456976     | 456976     |
      11 0 128 64 | %2N    | ！！        | 熙熙       | 1  | 6953       | 6953       |
      28 0 8 8    | %4YMD  | 19700101    | 20380119   | 1  | 24856      | 24856      |
      28 0 8 8    | %2YMD  | 700101      | 380119     | 9  | 2762       | 2762       |
      28 0 8 8    | %4YMA  | 00010101    | 99991231   | 1  | 3719628    | 3719628    | endless
      28 0 8 8    | %2YMA  | 380101      | 400101     | 1  | 745        | 745        |
      28 0 8 8    | %2YMA  | 690101      | 700101     | 1  | 1          | 1          |
      31 0 6 6    | %T     | 000000      | 235959     | 7  | 86400      | 86400      | endless
      31 0 6 6    | %T     | 000000      | 235958     | 5  | 17280      | 17280      | endless
      31 0 6 6    | %T     | 000000      | 235949     | 7  | 12342      | 12342      |
      32 0 15 15  | %TS    | 19700101 090000 | 20380119 031407 | 1  | 2147451248 | 2147451248 |
      32 0 15 15  | %TS    | 20380119 031407 | 19700101 090000 | -1 | 2147451248 | 2147451248 |
  )")) {
    expect_counts({item_of(item), {format, cp932(start), cp932(end), increment}},
                  std::stoull(period), std::stoull(distinct), endless_run.empty());
  }
  // One character occurs twice in the order of full-width characters.
  expect_counts({item_of("11 0 128 64"), {"%N", "\x81\x42", "\xFA\x57", "1"}}, 7334, 7333, true);
  expect_counts({item_of("11 0 128 64"), {"%N", "\x81\x42", "\xFA\x57", "7"}}, 1048, 1048, true);
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
