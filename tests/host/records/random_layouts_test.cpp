#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

#include "host/process/exit_status.h"
#include "host/records/forecast.h"
#include "host/records/random_layout.h"
#include "host/records/record_source.h"
#include "host/ways/draw.h"
#include "host/ways/permutation.h"
#include "host/ways/statistics.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

using test::RandomLayout;
using test::RandomTables;

using Record = std::vector<std::string>;
using Records = std::vector<Record>;

// A layout made ready in a folder of its own, which holds those that it leads to.
class Ready {
 public:
  explicit Ready(const RandomLayout& layout, const RandomTables& tables = {},
                 const Preparation& how = {}) {
    for (const RandomLayout* other : {&tables.parents, &tables.children}) {
      if (!other->items.empty()) other->write(folder_.path());
    }
    layout.write(folder_.path());
    std::ostringstream messages;
    const ExitStatus status =
        prepared.prepare(folder_.file(layout.file), std::nullopt, messages, how);
    if (status != ExitStatus::done) throw std::runtime_error(messages.str());
  }

 private:
  test::TempFolder folder_;

 public:
  PreparedLayout prepared;
};

Record taken(RecordSource& source) {
  std::vector<std::string_view> values;
  if (!source.next(values)) throw std::runtime_error(source.failure());
  return {values.begin(), values.end()};
}

Records all_records(PreparedLayout& prepared) {
  RecordSource source(prepared);
  Records records;
  for (std::uint64_t i = 0; i < prepared.layout().records.number(); ++i)
    records.push_back(taken(source));
  return records;
}

Records records_of(const RandomLayout& layout, const RandomTables& tables = {}) {
  Ready ready(layout, tables);
  return all_records(ready.prepared);
}

Record column(const Records& records, std::size_t item) {
  Record texts;
  for (const Record& record : records) texts.push_back(record[item]);
  return texts;
}

// How often an answer was one that says much.
struct Tally {
  std::map<std::string, std::uint64_t> answers;
  std::uint64_t asked = 0;
};

void check_item(const Forecast& forecast, std::size_t item, const sources::TextFacts& text_facts,
                const Record& texts, Tally& tally) {
  const auto empty = static_cast<std::uint64_t>(std::count(texts.begin(), texts.end(), ""));
  const sources::Count told_empty = text_facts.empty(texts.size());
  ASSERT_LE(told_empty.least, empty);
  ASSERT_GE(told_empty.most, empty);
  tally.answers["empty"] += empty > 0 && told_empty.is_exact();
  std::set<std::string> values(texts.begin(), texts.end());
  values.erase("");
  const sources::Count told = forecast.item(item).values;
  ASSERT_LE(values.size(), told.most);
  tally.answers["values"] += told.is_exact();
  if (!told.is_exact() || text_facts.all_after <= texts.size()) {
    ASSERT_GE(values.size(), told.least);
  }
}

void check_set(const Forecast& forecast, const std::vector<std::size_t>& items,
               const Records& records, EmptyValues empty, Tally& tally) {
  const Forecast::Set told = forecast.set(items, empty);
  std::set<Record> seen;
  std::uint64_t different = records.size();
  for (std::size_t i = 0; i < records.size(); ++i) {
    Record values;
    for (const std::size_t item : items) values.push_back(records[i][item]);
    const bool is_aside = empty == EmptyValues::different &&
                          std::find(values.begin(), values.end(), "") != values.end();
    if (!is_aside && !seen.insert(values).second) different = std::min<std::uint64_t>(different, i);
  }
  const sources::Uniqueness& uniqueness = told.uniqueness;
  ASSERT_GE(different, std::min<std::uint64_t>(uniqueness.different, records.size()));
  ASSERT_TRUE(different <= uniqueness.repeated) << uniqueness.repeated;
  ASSERT_LE(seen.size(), told.combinations.most);
  ++tally.asked;
  tally.answers["unique"] += uniqueness.different >= records.size();
  tally.answers["repeated"] += uniqueness.repeated < records.size();
}

TEST(RandomLayouts, AreForecastRightly) {
  Tally tally;
  for (std::uint64_t seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    const RandomTables tables = test::draw_tables(seed);
    for (const RandomLayout* layout : {&tables.parents, &tables.children}) {
      Ready ready(*layout, tables);
      const Records records = all_records(ready.prepared);
      const Forecast forecast(ready.prepared);
      for (std::size_t i = 0; i < layout->items.size(); ++i) {
        SCOPED_TRACE(layout->items[i]);
        const sources::TextFacts& text_facts = ready.prepared.fields()[i]->text_facts();
        check_item(forecast, i, text_facts, column(records, i), tally);
        check_set(forecast, {i}, records, EmptyValues::same, tally);
        check_set(forecast, {i}, records, EmptyValues::different, tally);
        if (testing::Test::HasFatalFailure()) return;
      }
      const std::size_t count = layout->items.size();
      for (std::uint64_t set = 0; set < 3 * count; ++set) {
        // Items that belong together are near each other.
        std::vector<std::size_t> items = {set % count};
        items.push_back((set + 1 + ways::draw_below({seed}, set, set < count ? 3 : count)) % count);
        if (set > 2 * count) items.push_back(ways::draw_below({set}, seed, count));
        std::string names;
        for (const std::size_t item : items) names += layout->items[item];
        SCOPED_TRACE(names);
        check_set(forecast, items, records, EmptyValues::same, tally);
        check_set(forecast, items, records, EmptyValues::different, tally);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
  EXPECT_GT(tally.answers["values"], 600);
  EXPECT_GT(tally.answers["empty"], 200);
  EXPECT_GT(tally.answers["unique"], 500);
  EXPECT_GT(tally.answers["repeated"], 1500);
}

template <class Task>
std::string failure_of(Task task) {
  try {
    task();
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return {};
}

TEST(RandomLayouts, FitWhereAThoroughTrialSaysSo) {
  Tally tally;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const RandomTables tables = test::draw_tight_tables(seed);
    for (const RandomLayout* layout : {&tables.parents, &tables.children}) {
      const std::string refusal = failure_of([&] {
        const Ready ready(*layout, tables, {.trial = Trial::thorough});
        ASSERT_TRUE(ready.prepared.untold().empty());
      });
      const std::string failure = failure_of([&] { records_of(*layout, tables); });
      const bool is_of_other = refusal.find(layout->file + ':') == std::string::npos;
      ASSERT_TRUE(!refusal.empty() || failure.empty()) << seed << failure;
      ASSERT_TRUE(refusal.empty() || is_of_other || !failure.empty()) << seed << refusal;
      tally.answers["fits"] += refusal.empty();
      tally.answers["late"] += failure.starts_with("record ");
    }
  }
  EXPECT_GT(tally.answers["fits"], 20);
  EXPECT_GT(tally.answers["late"], 10);
}

TEST(RandomLayouts, GiveTheSameRecordsInAnyOrder) {
  for (std::uint64_t seed = 0; seed < 15; ++seed) {
    const RandomTables tables = test::draw_tables(seed);
    for (const RandomLayout* layout : {&tables.parents, &tables.children}) {
      const Records in_a_row = records_of(*layout, tables);
      Ready again(*layout, tables);
      RecordSource source(again.prepared);
      const ways::Permutation order({seed}, layout->records);
      for (std::uint64_t i = 0; i < layout->records; ++i) {
        source.seek(RecordNumber(order.at(i)));
        ASSERT_EQ(taken(source), in_a_row[order.at(i)]) << seed;
      }
    }
  }
}

TEST(RandomLayouts, KeepTheirColumnsWhenThereIsOneMore) {
  for (std::uint64_t seed = 0; seed < 15; ++seed) {
    const RandomTables tables = test::draw_tables(seed);
    RandomTables more = tables;
    const auto place = static_cast<std::ptrdiff_t>(seed);
    for (RandomLayout* layout : {&more.parents, &more.children}) {
      layout->items.insert(layout->items.begin() + place,
                           test::layout_item("NEW", R"(type = "default", order = "shuffled")"));
    }
    Records records = records_of(more.children, more);
    for (Record& record : records) record.erase(record.begin() + place);
    ASSERT_EQ(records_of(tables.children, tables), records) << seed;
  }
}

// What sets draws apart, and what does not.
TEST(Columns, AreOthersForAnotherSeedTableOrItem) {
  const std::string way =
      R"(type = "range", format = "%2U", start = 1, end = 99, order = "shuffled")";
  const auto texts = [](const std::string& file, const std::string& keys, const std::string& item) {
    return column(records_of({file, 99, keys, {item}}), 0);
  };
  const std::string a = test::layout_item("A", way);
  const std::string salted = test::layout_item("B", way + R"(, salt = "A")");
  const Record first = texts("t.toml", "", a);
  EXPECT_EQ(texts("t.toml", "seed = 0", salted), first);
  EXPECT_EQ(texts("u.toml", R"(salt = "t")", a), first);
  std::set<Record> all = {first};
  for (const auto& [file, keys, item] : {std::tuple{"t.toml", "seed = 1", a},
                                         {"u.toml", "", a},
                                         {"t.toml", R"(salt = "x")", a},
                                         {"t.toml", "", test::layout_item("B", way)},
                                         {"t.toml", "", test::layout_item("a", way)}}) {
    all.insert(texts(file, keys, item));
  }
  EXPECT_EQ(all.size(), 6);
}

// All ways of one layout beside each other, beside the place of the record, and each beside itself
// in the record before. A column's first character stands for its value.
TEST(Columns, AreNotCorrelated) {
  constexpr double even_the_worst_of_many = 2 * ways::surely_uneven;
  RandomLayout layout = {"t.toml", 10'000, "", {}};
  const std::string range = R"(type = "range", format = "%3U", start = 0, end = 999)";
  const std::string list =
      R"(type = "list", values = ["0", "1", "2", "3", "4"], weights = [1, 2, 3, 2, 2])";
  const std::string values[] = {
      range + R"(, order = "shuffled")",
      range + R"(, order = "random")",
      range + R"(, order = "zipf", skew = 0.8)",
      range + R"(, joint = "J")",
      list,
      range + R"(, order = "shuffled", empty = 0.3)",
      R"(type = "offset", of = "ONE", from = 100, to = 999)",
  };
  for (const std::string& value : values) {
    for (const char* copy : {"A", "B"}) {
      const std::string name = copy + std::to_string(layout.items.size());
      layout.items.push_back(test::layout_item(name, value));
    }
  }
  const std::size_t drawn = layout.items.size();
  layout.items.push_back(test::layout_item("ONE", R"(type = "list", values = ["0"])"));
  const Records records = records_of(layout);
  std::vector<std::string> columns(2 * drawn + 1);
  for (std::size_t i = 1; i < records.size(); ++i) {
    for (std::size_t item = 0; item < drawn; ++item) {
      columns[item] += (records[i][item] + "-")[0];
      columns[drawn + item] += (records[i - 1][item] + "-")[0];
    }
    columns.back() += static_cast<char>('0' + 10 * i / records.size());
  }
  for (std::size_t one = 0; one < columns.size(); ++one) {
    for (std::size_t other = 0; other < one; ++other) {
      EXPECT_LT(ways::dependence(columns[one], columns[other]), even_the_worst_of_many)
          << one << ", " << other;
    }
  }
}

}  // namespace
}  // namespace korvex::host
