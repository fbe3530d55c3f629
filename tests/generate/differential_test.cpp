#include <sstream>

#include "generate/random_settings.h"
#include "generate/reference_assembler.h"

namespace korvex::test {
namespace {

constexpr std::uint32_t seed = 20380119;

// A few items, and which of them stands in each field of a record.
struct RandomRecord {
  std::vector<RandomItem> items;
  std::vector<std::size_t> fields;
  std::int32_t layout_kind = 1;
  bool quotation = false;

  std::string description() const {
    std::ostringstream out;
    out << "layout kind " << layout_kind << " quotation " << quotation << ", fields";
    for (const std::size_t field : fields) out << " " << field + 1;
    for (const RandomItem& item : items) out << "\n  " << item.description();
    return out.str();
  }
};

using Draw = RandomItem (RandomSettings::*)();

RandomRecord draw_record(RandomSettings& random, Draw draw) {
  RandomRecord record;
  const std::int64_t items = random.one_in(2) ? 1 : random.between(2, 5);
  for (std::int64_t i = 0; i < items; ++i) {
    record.items.push_back((random.*draw)());
    record.fields.push_back(static_cast<std::size_t>(i));
  }
  if (random.one_in(8)) record.fields.push_back(0);
  record.layout_kind = static_cast<std::int32_t>(random.between(1, 3));
  record.quotation = random.one_in(2);
  return record;
}

// Compares record by record until the first difference.
testing::AssertionResult same_as_reference(const RandomRecord& record, int records) {
  std::vector<std::unique_ptr<ItemGenerator>> items;
  std::vector<ReferenceItem> reference;
  for (const RandomItem& item : record.items) {
    items.push_back(
        std::make_unique<ItemGenerator>(*item.column, record.layout_kind, record.quotation));
    reference.emplace_back(*item.column, record.layout_kind, record.quotation);
  }
  RecordAssembler assembler;
  for (const std::size_t field : record.fields) assembler.add_field(*items[field]);

  LineBlock block(0);
  for (int done = 0; done < records; ++done) {
    const std::int32_t result = assembler.assemble(block);
    std::string expected;
    std::int32_t expected_result = 0;
    for (std::size_t i = 0; i < record.fields.size() && expected_result == 0; ++i) {
      expected_result = reference[record.fields[i]].append_field(expected);
    }
    const std::string line(block.cursor() - block.line_size(), block.line_size());
    if (result != expected_result || (result == 0 && line != expected)) {
      return testing::AssertionFailure()
             << record.description() << "\nrecord " << done + 1 << ": result " << expected_result
             << " and " << testing::PrintToString(expected) << " expected, " << result << " and "
             << testing::PrintToString(line) << " found";
    }
    if (result != 0) break;
    block.finish_line();
    block.remove_front(block.finished().size());
  }
  return testing::AssertionSuccess();
}

void compare(int settings, Draw draw, int records) {
  RandomSettings random(seed, records / 2);
  for (int i = 0; i < settings; ++i) {
    ASSERT_TRUE(same_as_reference(draw_record(random, draw), records))
        << "seed " << seed << ", settings " << i + 1;
  }
}

TEST(RandomSettingsTest, GenerateWhatTheReferenceGenerates) {
  compare(5'000, &RandomSettings::draw, 250);
  compare(4'000, &RandomSettings::draw_odd, 250);
  // Long enough for carries beyond four digits.
  compare(50, &RandomSettings::draw_odd, 25'000);
}

}  // namespace
}  // namespace korvex::test
