#include "run/run.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <set>

#include "host/records/engine_uniqueness.h"
#include "platform/interruption.h"
#include "run/line_team.h"
#include "run/random_settings.h"
#include "run/reference_assembler.h"
#include "support/bytes.h"
#include "support/list_values.h"
#include "support/table.h"

// The records of a run, taken in blocks, one by one and from any record on, against a slow
// reference.
namespace korvex::test {
namespace {

constexpr std::uint32_t seed = 20380119;

// How many layouts are drawn; more for a longer search than every test run can afford.
int layouts_to_draw(int usual) {
  const char* const wanted = std::getenv("KORVEX_TEST_LAYOUTS");
  return wanted != nullptr ? std::atoi(wanted) : usual;
}

// The settings of a few items, some of which take their values from lists or repeat.
class RandomLayout {
 public:
  explicit RandomLayout(RandomSettings& random)
      : layout_kind(static_cast<LayoutKind>(random.between(1, 3))),
        quotation(random.one_in(2)),
        repeats_left_(random.one_in(3) ? 3 : 0) {
    main.settings.set_run_mode(run_mode::settings_only);
    main.settings.begin(SettingsLevel{1}, StoredRecords{}, layout_kind);
    std::vector<ItemNumber> numbers;
    const std::int64_t count = random.one_in(4) ? 1 : random.between(2, 6);
    for (std::int32_t number = 1; number <= count; ++number) {
      add_item(random, number);
      numbers.push_back(ItemNumber{number});
    }
    if (random.one_in(12)) numbers.push_back(ItemNumber{1});
    for (const ItemNumber number : numbers) {
      auto named = std::make_unique<ClDGCol>();
      named->item_number = number;
      main.items.push_back(std::move(named));
    }
    main.settings.current_level()->record.repeat_flag = level_ > 0 ? 1 : 0;
  }

  ClColMain main;
  std::map<ItemNumber, std::vector<std::string>> lists;
  LayoutKind layout_kind;
  bool quotation;
  std::string description;

 private:
  void add_item(RandomSettings& random, std::int32_t number) {
    RandomItem item = random.one_in(3) ? random.draw_odd() : random.draw();
    FmtColRec& record = item.column->record;
    record.item_number = ItemNumber{number};
    if (random.one_in(4)) add_list(random, record);
    if (repeats_left_ > 0 && random.one_in(2)) {
      --repeats_left_;
      record.repeat_flag = Flag::on;
      record.repeat_level = RepeatLevel{++level_};
      record.repeat_count = static_cast<std::int32_t>(random.between(1, 3));
    }
    description += "\n  " + item.description() + ", list of " +
                   std::to_string(lists[record.item_number].size()) + ", repeat level " +
                   std::to_string(number_of(record.repeat_level)) + " count " +
                   std::to_string(record.repeat_count);
    main.settings.current_level()->append(std::move(item.column));
  }

  void add_list(RandomSettings& random, FmtColRec& record) {
    record.generation_type = generation_type::enumeration;
    std::vector<std::string>& list = lists[record.item_number];
    const std::int64_t longest = random.one_in(4) ? 70 : 9;
    for (std::int64_t i = random.between(1, random.one_in(2) ? 5 : 300); i > 0; --i) {
      list.emplace_back(static_cast<std::size_t>(random.between(1, longest)),
                        static_cast<char>('a' + i % 26));
    }
  }

  int repeats_left_;
  std::int32_t level_ = 0;
};

void prepare(RandomLayout& layout, Run& run) {
  const ErrorCode result = run.prepare(layout.main, {layout.layout_kind, layout.quotation},
                                       [&](const FmtColRec& settings, ClEnumDataList& values) {
                                         fill_list(layout.lists[settings.item_number], values);
                                         return error::none;
                                       });
  ASSERT_EQ(result, 0) << layout.description;
}

// What the reference writes: lines, and the code that ends them before `records`.
struct Expected {
  Expected(const RandomLayout& layout, int records) {
    std::map<ItemNumber, std::unique_ptr<ReferenceItem>> items;
    std::map<RepeatLevel, ReferenceRun::Entry> levels;
    ReferenceRun reference;
    for (const auto& named : layout.main.items) {
      std::unique_ptr<ReferenceItem>& item = items[named->item_number];
      if (item == nullptr) {
        const ClFmtColInf& column = *layout.main.settings.find_column(named->item_number);
        item = std::make_unique<ReferenceItem>(column, layout.layout_kind, layout.quotation);
        item->list = layout.lists.at(named->item_number);
        const FmtColRec& record = column.record;
        if (is_on(record.repeat_flag)) {
          levels[record.repeat_level] = {item.get(), record.repeat_count};
        }
      }
      reference.fields.push_back(item.get());
    }
    for (const auto& [level, entry] : levels) reference.entries.push_back(entry);
    std::string text;
    while (code == 0 && std::ssize(begins) < records) {
      begins.push_back(text.size());
      code = reference.append_record(text);
    }
    if (code != 0) begins.pop_back();
    lines = text;
  }

  std::int64_t records() const { return std::ssize(begins); }
  std::string from(std::int64_t first, std::int64_t count) const {
    const std::int64_t last = std::min(first + count, records());
    const std::size_t begin =
        first < records() ? begins[static_cast<std::size_t>(first)] : lines.size();
    return lines.substr(
        begin, (last < records() ? begins[static_cast<std::size_t>(last)] : lines.size()) - begin);
  }

  std::string lines;
  std::vector<std::size_t> begins;
  std::int32_t code = 0;
};

// Up to `count` records in blocks of random sizes, as text; ends early at a code.
std::string take_lines(Run& run, RandomSettings& random, std::int64_t count, ErrorCode& code) {
  LineBlock lines(0);
  std::string text;
  for (std::int64_t done = 0; done < count;) {
    const std::int64_t most = random.between(1, random.one_in(2) ? 20 : 700);
    code = run.append(lines, std::min(most, count - done));
    if (code != 0) return text;
    for (const std::size_t begin : run.line_begins().subspan(1)) {
      EXPECT_EQ(lines.data()[begin - 1], '\n');
    }
    done += std::ssize(run.line_begins());
    text.append(lines.data(), lines.size());
    lines.clear();
  }
  return text;
}

// The same from a record on, made by threads.
std::string take_by_threads(Run& run, RandomSettings& random, Steps first, Steps end,
                            ErrorCode& code) {
  constexpr std::size_t threads[] = {1, 2, 3, 8};
  run.seek(first);
  LineTeam team(run,
                {.first = first,
                 .end = end,
                 .chunk = static_cast<Steps>(random.between(1, 50)),
                 .tells_lines = true,
                 .piece_bytes = static_cast<std::size_t>(random.between(1, 3000))},
                threads[random.between(0, 3)]);
  std::string text;
  std::size_t watched = 0;
  code = error::none;
  const auto take = [&](const LinePiece& piece) {
    EXPECT_EQ(piece.begins.size(), piece.records);
    text.append(piece.lines.data(), piece.lines.size());
    code = piece.code;
    return code == error::none;
  };
  const auto watch = [&] {
    watched = text.size();
    return true;
  };
  const auto taker = random.one_in(2) ? platform::PieceTaker::maker : platform::PieceTaker::caller;
  EXPECT_TRUE(team.run(taker, take, watch));
  EXPECT_TRUE(watched == text.size() || code != error::none);
  return text;
}

// A record with its fields separated, put together again.
std::string take_record(Run& run, const RandomLayout& layout) {
  std::vector<std::string_view> values;
  if (run.next(values) != 0) return "";
  std::string line;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string mark = run.fields()[i]->is_quoted() ? "\"" : "";
    line += mark + std::string(values[i]) + mark + ",";
  }
  if (layout.layout_kind == layout_kind::iso) line.pop_back();
  return line + "\n";
}

// Records at and around which something happens to a field: ends, rounds, repeats.
std::vector<Steps> events(const Run& run) {
  std::vector<Steps> events = {0};
  for (const FieldFacts& field : run.field_facts()) {
    if (!field.values) continue;
    const Steps turn = product(field.hold, field.values->end);
    for (const Steps event : {turn, product(turn, 2), product(turn, field.rounds), field.hold,
                              field.repeats_end, sum(field.repeats_end, field.values->end)}) {
      for (const Steps record : {event - 1, event, event + 1}) events.push_back(record);
    }
  }
  return events;
}

class RunTest : public testing::Test {
 protected:
  static constexpr int records = 600;
  RandomSettings random{seed, records / 2};
};

TEST_F(RunTest, WritesAndSeeksWhatTheReferenceWrites) {
  const int layouts = layouts_to_draw(3'000);
  std::int64_t in_blocks = 0;
  for (int i = 0; i < layouts; ++i) {
    RandomLayout layout(random);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", layout " + std::to_string(i + 1) + ", kind " +
                 std::to_string(number_of(layout.layout_kind)) + ", quotation " +
                 std::to_string(layout.quotation) + layout.description);
    const Expected expected(layout, records);
    korvex::Run run;
    prepare(layout, run);
    ErrorCode code = error::none;
    const std::string found = take_lines(run, random, records, code);
    ASSERT_EQ(code, expected.code);
    ASSERT_TRUE(same_bytes(expected.lines, found));
    if (code == 0) {
      ASSERT_EQ(run.size(RecordCount(static_cast<std::uint64_t>(records))).value_or(found.size()),
                found.size());
    }

    if (random.one_in(8)) {
      const std::int64_t first =
          random.between(0, std::min<std::int64_t>(expected.records(), records - 1));
      ASSERT_TRUE(
          same_bytes(expected.from(first, records),
                     take_by_threads(run, random, static_cast<Steps>(first), records, code)))
          << "by threads from record " << first;
      ASSERT_EQ(code, expected.code);
    }

    std::vector<Steps> places = events(run);
    for (int k = 0; k < 20; ++k) {
      places.push_back(static_cast<Steps>(random.between(0, records - 1)));
    }
    for (const Steps place : places) {
      const auto record = static_cast<std::int64_t>(place);
      if (record < 0 || record >= expected.records()) continue;
      run.seek(place);
      ASSERT_TRUE(same_bytes(expected.from(record, 1), take_record(run, layout)))
          << "record " << record;
      if (random.one_in(2)) run.seek(place + 1);
      const std::int64_t count = std::min(random.between(0, 30), expected.records() - record - 1);
      ASSERT_TRUE(
          same_bytes(expected.from(record + 1, count), take_lines(run, random, count, code)))
          << "after record " << record;
      in_blocks += count;
    }
  }
  EXPECT_GT(in_blocks, 0);
}

// Far away a run that has been sought goes on as one that has walked there.
TEST_F(RunTest, SeeksFarAway) {
  const int layouts = layouts_to_draw(1'000);
  for (int i = 0; i < layouts; ++i) {
    RandomLayout layout(random);
    SCOPED_TRACE("layout " + std::to_string(i + 1) + layout.description);
    if (Expected(layout, 1).code != 0) continue;
    korvex::Run run;
    prepare(layout, run);
    // Stepping takes its time where an item without a course has no end near by.
    const auto far = static_cast<Steps>(run.seeks_directly()
                                            ? random.between(1'000'000, 1'000'000'000'000'000'000)
                                            : random.between(2 * records, 20'000));
    ErrorCode code = error::none;
    run.seek(far);
    const std::string walked = take_lines(run, random, records, code);
    const Steps ahead = static_cast<Steps>(random.between(1, records - 1));
    run.seek(far + ahead);
    const std::string sought =
        take_lines(run, random, records - static_cast<std::int64_t>(ahead), code);
    ASSERT_TRUE(walked.ends_with(sought)) << far << " and " << ahead << " more";
  }
}

// An item without a course, whose first cycle begins at 5 and all others at 1.
TEST_F(RunTest, SeeksInLongCyclesWithoutACourse) {
  constexpr Steps end = 150'000;
  constexpr Steps first_cycle = end - 4;
  const auto column = checked_column(
      {item_of("4 0 9 9"), {"%9U", "1", std::to_string(end), "1"}, exceeded_action::repeat});
  ASSERT_TRUE(column);
  column->elements[0]->record.current.low = 5;
  ItemRun run(*column, layout_kind::record_file);
  std::vector<std::string_view> values;
  const auto value_at = [&](Steps record) {
    run.seek(record);
    EXPECT_EQ(run.next(values), error::none);
    return std::strtoull(std::string(values[0]).c_str(), nullptr, 10);
  };
  // In this order: marks are thinned out on the way, and serve the places before them.
  for (const Steps record :
       {Steps{1024}, Steps{40'000}, Steps{1023}, first_cycle - 1, first_cycle, Steps{65'537},
        first_cycle + end - 1, first_cycle + end, Steps{1'000'000'000'000}, Steps{3}}) {
    EXPECT_EQ(value_at(record),
              record < first_cycle ? record + 5 : (record - first_cycle) % end + 1)
        << record;
  }
  // Asked to end, it stops on the way: nothing leads here, so no cycle ends.
  column->record.lead_element = ElementNumber::none;
  ItemRun interrupted(*column, layout_kind::record_file);
  {
    const platform::InterruptionWatch watch({SIGTERM});
    ASSERT_EQ(::raise(SIGTERM), 0);
    ASSERT_TRUE(platform::is_interrupted());
    interrupted.seek(endless - 1);
    EXPECT_EQ(interrupted.next(values), error::cancelled);
  }
  interrupted.seek(0);
  EXPECT_EQ(interrupted.next(values), error::none);
}

// What is told of the records that differ in some of their fields is true of those that come.
TEST_F(RunTest, TellsForHowLongRecordsDiffer) {
  int exact = 0;
  int answers = 0;
  for (int i = 0; i < layouts_to_draw(400); ++i) {
    RandomLayout layout(random);
    SCOPED_TRACE("layout " + std::to_string(i + 1) + layout.description);
    korvex::Run run;
    prepare(layout, run);
    const std::vector<FieldFacts> fields = run.field_facts();
    std::vector<std::vector<std::string>> taken;
    for (std::vector<std::string_view> values;
         std::ssize(taken) < records && run.next(values) == 0;) {
      taken.emplace_back(values.begin(), values.end());
    }
    if (std::ssize(taken) < records) continue;
    for (int sets = 0; sets < 4; ++sets) {
      std::vector<std::size_t> places = {
          static_cast<std::size_t>(random.between(0, std::ssize(fields) - 1))};
      for (std::size_t k = 0; k < fields.size(); ++k) {
        if (k != places[0] && random.one_in(4)) places.push_back(k);
      }
      std::vector<const FieldFacts*> set;
      for (const std::size_t place : places) set.push_back(&fields[place]);
      std::set<std::vector<std::string>> met;
      for (bool is_new = true; is_new && std::ssize(met) < records;) {
        std::vector<std::string> key;
        for (const std::size_t place : places) key.push_back(taken[met.size()][place]);
        is_new = met.insert(key).second;
      }
      const host::Uniqueness told = host::uniqueness_of(set, fields);
      ASSERT_LE(std::min<Steps>(told.different, records), met.size()) << places[0];
      if (told.repeated < records) {
        ASSERT_LE(met.size(), told.repeated) << places[0];
      }
      ++answers;
      exact += told.different == told.repeated ? 1 : 0;
    }
  }
  EXPECT_GT(exact, answers / 2);
}

// Records of random bytes: whatever they say, a field stays as large as its elements can be.
TEST_F(RunTest, SurvivesAnySettings) {
  constexpr std::int32_t kinds[] = {900, 901, 902, 903, 904, 905, 906, 907, 908, 999, 1002, 1003};
  constexpr std::size_t most_bytes = 3 * Course::max_text_size + 4;
  for (int i = 0; i < 3000; ++i) {
    const auto randomize = [&](auto& record) {
      for (char& byte : reinterpret_cast<char(&)[sizeof record]>(record)) {
        byte = static_cast<char>(random.between(0, 255));
      }
    };
    ClFmtColInf column;
    randomize(column.record);
    column.record.generation_type = generation_type::range;
    column.record.increment.sign = static_cast<Sign>(random.between(0, 2));
    std::vector<FmtItemRec> elements(3);
    for (FmtItemRec& element : elements) {
      randomize(element);
      element.kind = FormatKind{kinds[random.between(0, std::ssize(kinds) - 1)]};
      element.sign = static_cast<NumberSubKind>(random.between(10, 12));
      element.width = static_cast<std::int32_t>(random.between(-1, 140));
    }
    column.set_elements(elements);
    column.record.lead_element = elements[0].sequence;
    ItemRun run(column, LayoutKind{i % 3 + 1}, i % 2 == 0);
    LineBlock line(0);
    for (int record = 0; record < 8 && run.append(line, 1) == error::none; ++record) {
      ASSERT_LE(line.size(), most_bytes) << "settings " << i;
      line.clear();
      if (record == 4) run.seek(static_cast<Steps>(random.between(0, 1000)));
    }
  }
}

}  // namespace
}  // namespace korvex::test
