#include "host/commands/check_command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <set>
#include <sstream>

#include "generate/generate_data_file.h"
#include "host/layout/control_writer.h"
#include "host/layout/layout_reader.h"
#include "host/layout/settings_editor.h"
#include "host/records/record_source.h"
#include "host/records/uniqueness.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

namespace fs = std::filesystem;

class CheckCommand : public testing::Test {
 protected:
  // The file that the generator writes, byte by byte.
  std::string generate(std::int32_t records) {
    const LayoutReading reading = read_layout(layout(), records);
    EXPECT_TRUE(reading.errors.empty());
    EXPECT_EQ(write_settings_of(reading.layout).file_code, 0);
    TemporaryControlFile control_file;
    EXPECT_EQ(control_file.write(reading.layout, ControlForm::short_form), 0);
    ClGenerateDataFile generator;
    generator.main.control_path = control_file.path();
    EXPECT_EQ(generator.run(), 0);
    return test::read_file(folder.file("d.csv"));
  }

  void write_layout(const std::string& header, const std::string& items) {
    fs::remove(folder.file("d.fif"));
    test::write_file(layout(), "[layout]\ndata = \"d.csv\"\nrecords = 1\n" + header + items);
  }

  std::string layout() const { return folder.file("l.toml"); }

  test::TempFolder folder;
  test::TempFolder config_folder;
  test::ScopedVariable config_{"XDG_CONFIG_HOME", config_folder.path()};
  std::ostringstream messages;
};

// Draws layouts of a few items with short cycles, lists, and repeats.
class RandomLayout {
 public:
  explicit RandomLayout(unsigned seed) : random_(seed) {}

  std::string header() {
    constexpr std::array kinds = {"record", "table", "iso"};
    return std::string("kind = \"") + kinds[pick(3)] + "\"\nquote = \"" +
           (pick(2) == 0 ? "none" : "double") + "\"\n";
  }

  std::string items(std::size_t count, const test::TempFolder& folder) {
    std::string text;
    std::size_t level = 0;
    for (std::size_t i = 0; i < count; ++i) {
      text += "[[item]]\nname = \"" + std::string(1, static_cast<char>('A' + i)) + "\"\n";
      text += values(folder.file("list" + std::to_string(i)));
      text += std::string("exceeded = \"") + (pick(2) == 0 ? "repeat" : "initialize") + "\"\n";
      if (pick(2) == 0) continue;
      text += "repeat = { level = " + std::to_string(++level) +
              ", count = " + std::to_string(pick(3) + 1) + " }\n";
    }
    return text;
  }

  std::size_t pick(std::size_t count) { return random_() % count; }

 private:
  std::string values(const std::string& list_path) {
    const std::string last = std::to_string(pick(8) + 2);
    switch (pick(4)) {
      case 0: {
        std::string lines;
        for (std::size_t i = pick(6) + 1; i > 0; --i) {
          lines += std::string(pick(5) + 1, static_cast<char>('a' + pick(3))) + "\n";
        }
        test::write_file(list_path, lines);
        return "attribute = \"character\"\nlength = 9\n[item.values]\ntype = \"enumeration\"\n"
               "file = \"" +
               list_path + "\"\n";
      }
      case 1:  // leaves the calendar, so the number behind is missing in the last record
        return "attribute = \"character\"\nlength = 12\n[item.values]\ntype = \"range\"\n"
               "format = \"%4YMD%1U\"\nstart = \"2038010" +
               last.substr(0, 1) +
               ",1\"\nend = \"20380119,9\"\nincrement = " + std::to_string(pick(4) + 1) + "\n";
      case 2:
        return "attribute = \"time\"\n[item.values]\ntype = \"range\"\nformat = \"%T\"\n"
               "start = \"000000\"\nend = \"00000" +
               last.substr(0, 1) + "\"\n";
      default:
        return "attribute = \"decimal\"\ndigits = 2\n[item.values]\ntype = \"range\"\n"
               "format = \"%2U\"\nstart = 1\nend = " +
               last + "\n";
    }
  }

  std::mt19937 random_;
};

// The first record that was there before, among the given fields.
std::uint64_t first_repetition(const std::vector<std::vector<std::string>>& records,
                               const std::vector<std::size_t>& places) {
  std::set<std::vector<std::string>> met;
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::vector<std::string> key;
    for (const std::size_t place : places) key.push_back(records[i][place]);
    if (!met.insert(key).second) return i;
  }
  return endless;
}

TEST_F(CheckCommand, AgreesWithWhatIsGenerated) {
  constexpr std::int32_t tested_records = 2500;
  int told = 0;
  int exact = 0;
  int answers = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomLayout random(seed);
    const std::size_t count = random.pick(4) + 1;
    write_layout(random.header(), random.items(count, folder));
    const auto records = static_cast<std::int32_t>(random.pick(tested_records));

    PreparedLayout sized;
    ASSERT_EQ(sized.prepare(layout(), records, messages), 0) << messages.str();
    const std::string data = generate(records);
    if (const auto size = sized.run().size(static_cast<Steps>(sized.layout().records))) {
      ++told;
      ASSERT_EQ(*size, data.size()) << test::read_file(layout());
    }

    PreparedLayout prepared;
    ASSERT_EQ(prepared.prepare(layout(), tested_records, messages), 0);
    const std::vector<FieldFacts> fields = prepared.run().field_facts();
    std::vector<std::vector<std::string>> generated;
    RecordSource source(prepared);
    for (std::vector<std::string_view> values; source.next(values);) {
      generated.emplace_back(values.begin(), values.end());
    }
    for (unsigned chosen = 1; chosen < 1U << count; ++chosen) {
      std::vector<const FieldFacts*> set;
      std::vector<std::size_t> places;
      for (std::size_t i = 0; i < count; ++i) {
        if ((chosen >> i & 1) == 0) continue;
        set.push_back(&fields[i]);
        places.push_back(i);
      }
      const Uniqueness answer = uniqueness_of(set, fields);
      const std::uint64_t seen = first_repetition(generated, places);
      ++answers;
      exact += answer.different == answer.repeated ? 1 : 0;
      EXPECT_LE(std::min<std::uint64_t>(answer.different, tested_records), seen) << chosen;
      if (answer.repeated < tested_records) {
        EXPECT_LE(seen, answer.repeated) << chosen;
      }
      if (HasFailure()) FAIL() << test::read_file(layout());
    }
  }
  EXPECT_GT(told, 40);
  EXPECT_GT(exact, answers / 2);
}

// Every item of every example alone: its values, its first repetition, the bytes of the file.
TEST_F(CheckCommand, AgreesWithTheExamples) {
  constexpr std::int32_t tested_records = 12000;
  for (const auto& entry : fs::directory_iterator(KORVEX_EXAMPLES)) {
    if (entry.path().extension() != ".toml") continue;
    SCOPED_TRACE(entry.path().filename().string());
    fs::remove_all(folder.file("out"));
    const auto overwrite = fs::copy_options::overwrite_existing | fs::copy_options::recursive;
    fs::copy(std::string(KORVEX_EXAMPLES) + "/lists", folder.file("lists"), overwrite);
    fs::copy_file(entry.path(), layout(), overwrite);
    PreparedLayout prepared;
    ASSERT_EQ(prepared.prepare(layout(), tested_records, messages), 0) << messages.str();
    const std::vector<FieldFacts> fields = prepared.run().field_facts();
    std::vector<std::vector<std::string>> generated;
    RecordSource source(prepared);
    for (std::vector<std::string_view> values; source.next(values);) {
      generated.emplace_back(values.begin(), values.end());
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Uniqueness answer = uniqueness_of({&fields[i]}, fields);
      EXPECT_EQ(answer.different, answer.repeated) << i;
      const std::uint64_t first = first_repetition(generated, {i});
      EXPECT_EQ(first, answer.different < tested_records ? answer.different : endless) << i;
      const ItemFacts& item = *fields[i].values;
      if (fields[i].is_repeated || !item.period || *item.period > tested_records) continue;
      std::set<std::string> values;
      for (std::size_t r = 0; r < *item.period; ++r) values.insert(generated[r][i]);
      EXPECT_EQ(values.size(), item.distinct) << i;
    }
    generate(tested_records);
    EXPECT_EQ(prepared.run().size(static_cast<Steps>(prepared.layout().records)),
              fs::file_size(prepared.layout().data));
  }
}

// Values that look like several fields are told apart where they are made.
TEST_F(CheckCommand, RecordsAreThoseOfTheFile) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomLayout random(seed);
    write_layout(random.header(), random.items(4, folder) + R"([[item]]
name = "COMMA"
attribute = "character"
length = 6
[item.values]
type = "range"
format = "',\",'%2U"
start = 1
end = 12
)");
    PreparedLayout prepared;
    ASSERT_EQ(prepared.prepare(layout(), 300, messages), 0) << messages.str();
    std::string lines;
    RecordSource source(prepared);
    for (std::vector<std::string_view> values; source.next(values);) {
      for (std::size_t i = 0; i < values.size(); ++i) {
        const std::string mark = prepared.run().fields()[i]->is_quoted() ? "\"" : "";
        lines += mark + std::string(values[i]) + mark + ",";
      }
      if (prepared.layout().kind == layout_kind::third) lines.pop_back();
      lines += "\n";
    }
    EXPECT_EQ(source.code(), 0);
    ASSERT_TRUE(test::same_bytes(generate(300), lines)) << test::read_file(layout());
  }
}

}  // namespace
}  // namespace korvex::host
