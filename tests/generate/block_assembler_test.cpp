#include "generate/block_assembler.h"

#include <gtest/gtest.h>

#include <iostream>

#include "generate/random_settings.h"
#include "support/list_values.h"

namespace korvex::test {
namespace {

constexpr std::uint32_t seed = 17520902;

// The settings of a few items, some of which take their values from lists or repeat.
class RandomLayout {
 public:
  explicit RandomLayout(RandomSettings& random)
      : layout_kind(static_cast<std::int32_t>(random.between(1, 3))),
        quotation(random.one_in(2)),
        repeats_left_(random.one_in(3) ? 3 : 0) {
    main.settings.set_run_mode(run_mode::settings_only);
    main.settings.load(1, 0, layout_kind);
    const std::int64_t count = random.one_in(4) ? 1 : random.between(2, 6);
    for (std::int32_t number = 1; number <= count; ++number) add_item(random, number);
    if (random.one_in(20)) fields.push_back(1);
  }

  ClColMain main;
  std::vector<std::int32_t> fields;
  std::vector<std::vector<std::string>> lists;  // of the items in their order; empty for ranges
  std::int32_t layout_kind;
  bool quotation;
  std::string description;

 private:
  void add_item(RandomSettings& random, std::int32_t number) {
    RandomItem item = random.one_in(3) ? random.draw_odd() : random.draw();
    FmtColRec& record = item.column->record;
    record.item_number = number;
    lists.emplace_back();
    if (random.one_in(4)) add_list(random, record);
    if (repeats_left_ > 0 && random.one_in(2)) {
      --repeats_left_;
      record.repeat_flag = 1;
      record.repeat_level = ++level_;
      record.repeat_count = static_cast<std::int32_t>(random.between(1, 3));
    }
    description += "\n  " + item.description() + ", list of " +
                   std::to_string(lists.back().size()) + ", repeat level " +
                   std::to_string(record.repeat_level);
    auto named = std::make_unique<ClDGCol>();
    named->item_number = number;
    main.items.push_back(std::move(named));
    main.settings.current_level()->append(std::move(item.column));
    fields.push_back(number);
  }

  void add_list(RandomSettings& random, FmtColRec& record) {
    record.generation_type = generation_type::enumeration;
    const std::int64_t longest = random.one_in(4) ? 70 : 9;
    for (std::int64_t i = random.between(1, random.one_in(2) ? 5 : 300); i > 0; --i) {
      lists.back().emplace_back(static_cast<std::size_t>(random.between(1, longest)),
                                static_cast<char>('a' + i % 26));
    }
  }

  int repeats_left_;
  std::int32_t level_ = 0;
};

// The generators of one run over a layout.
class LayoutRun {
 public:
  explicit LayoutRun(RandomLayout& layout) : layout_kind_(layout.layout_kind) {
    EXPECT_EQ(repeats_.build(layout.main), 0);
    for (std::size_t i = 0; i < layout.lists.size(); ++i) {
      const auto number = static_cast<std::int32_t>(i + 1);
      const ClFmtColInf& column = *layout.main.settings.find_column(number);
      items_.push_back(std::make_unique<ItemGenerator>(column, layout_kind_, layout.quotation));
      if (!layout.lists[i].empty()) {
        items_.back()->set_enumeration(make_list(layout.lists[i]));
      }
      if (column.record.repeat_flag == 0) continue;
      ClRepeatData& entry = *repeats_.find_level(column.record.repeat_level);
      entry.item = items_.back().get();
      items_.back()->join_repeat(repeats_.next_inner(entry));
    }
    for (const std::int32_t number : layout.fields) {
      records_.add_field(*items_[static_cast<std::size_t>(number) - 1]);
    }
    if (!repeats_.is_empty()) records_.set_repeats(repeats_);
  }

  std::int32_t append_record(std::string& text) {
    LineBlock line(0);
    const std::int32_t result = records_.assemble(line);
    if (result != 0) return result;
    text.append(line.data(), line.size());
    if (layout_kind_ == layout_kind::third) text.pop_back();
    text += '\n';
    return 0;
  }

  // Blocks of all sizes, with single records in between.
  std::int32_t append_blocks(RandomSettings& random, std::int64_t records, std::string& text) {
    BlockAssembler blocks(records_, layout_kind_);
    LineBlock lines(0);
    for (std::int64_t done = 0; done < records;) {
      const std::int64_t most = random.between(1, random.one_in(2) ? 20 : 700);
      const std::int64_t count = random.one_in(4)
                                     ? blocks.assemble(lines, 0)
                                     : blocks.assemble(lines, std::min(most, records - done));
      if (count == 0) {
        if (const std::int32_t result = append_record(text); result != 0) return result;
        ++done;
        continue;
      }
      EXPECT_EQ(static_cast<std::size_t>(count), blocks.line_begins().size());
      for (const std::size_t begin : blocks.line_begins().subspan(1)) {
        EXPECT_EQ(lines.data()[begin - 1], '\n');
      }
      text.append(lines.data(), lines.size());
      lines.clear();
      done += count;
      by_block += count;
    }
    return 0;
  }

  std::int64_t by_block = 0;

 private:
  std::int32_t layout_kind_;
  RepeatTable repeats_;
  std::vector<std::unique_ptr<ItemGenerator>> items_;
  RecordAssembler records_;
};

TEST(BlockAssemblerTest, WritesWhatTheRecordAssemblerWrites) {
  constexpr int settings = 4'000;
  constexpr int records = 600;
  RandomSettings random(seed, records / 2);
  std::int64_t by_block = 0;
  for (int i = 0; i < settings; ++i) {
    RandomLayout layout(random);
    std::string expected;
    std::int32_t expected_result = 0;
    LayoutRun one_by_one(layout);
    for (int done = 0; done < records && expected_result == 0; ++done) {
      expected_result = one_by_one.append_record(expected);
    }
    LayoutRun in_blocks(layout);
    std::string found;
    const std::int32_t result = in_blocks.append_blocks(random, records, found);
    ASSERT_TRUE(result == expected_result && found == expected)
        << "seed " << seed << ", settings " << i + 1 << ", layout kind " << layout.layout_kind
        << ", quotation " << layout.quotation << layout.description << "\nresults "
        << expected_result << " and " << result << ", first difference in line "
        << 1 + std::count(
                   expected.begin(),
                   std::mismatch(expected.begin(), expected.end(), found.begin(), found.end())
                       .first,
                   '\n');
    by_block += in_blocks.by_block;
  }
  EXPECT_GT(by_block, 0);
  std::cout << settings << " settings compared over " << records << " records, "
            << 100 * by_block / (std::int64_t{settings} * records)
            << " percent of them in blocks\n";
}

}  // namespace
}  // namespace korvex::test
