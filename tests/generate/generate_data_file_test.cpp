#include "generate/generate_data_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "generate/random_settings.h"
#include "generate/record_writer.h"
#include "generate/reference_assembler.h"
#include "support/generation_setup.h"
#include "support/settings_bytes.h"

namespace korvex::test {
namespace {

class GenerateDataFileTest : public testing::Test {
 protected:
  std::int32_t run(std::int32_t output_option = 0) {
    ClGenerateDataFile generator;
    generator.main.control_path = setup.control();
    generator.output_option = output_option;
    generator.parent = &parent_window;
    return generator.run();
  }

  GenerationSetup setup;
  int parent_window = 0;
};

const Names data_and_log = {"out.csv", "out.log"};
const Names data_only = {"out.csv"};

TEST_F(GenerateDataFileTest, WritesDataAndLog) {
  setup.save_settings({{.number = 5},
                       {.number = 9, .item = {1, 1, 8, 8, 0}, .texts = {"%2S", "AA", "AZ", "1"}},
                       {.number = 2, .texts = {}}});
  // Items come in the control file's order, also twice; 7 has no settings.
  setup.write_control({.records = 2, .items = {9, 7, 2, 5, 9}});
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(read_file(setup.data()), "AA,,001,AB,\nAC,,002,AD,\n");
  EXPECT_EQ(read_file(setup.log()), log_bytes(2, 1, {9, 2, 5, 9}));
  EXPECT_EQ(setup.outputs(), data_and_log);
  EXPECT_TRUE(setup.interface.messages.empty());
}

TEST_F(GenerateDataFileTest, TakesTheLevelOfTheControlFile) {
  setup.save_settings({{.number = 1}}, 2, 0, 1);
  setup.save_settings({{.number = 1, .texts = {"%U", "7", "9", "1"}}}, 2, 0, 4);
  setup.write_control({.records = 2, .layout_kind = 2, .level = 4});
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(read_file(setup.data()), "7,\n8,\n");
  EXPECT_EQ(read_file(setup.log()), log_bytes(2, 4, {1}));
}

TEST_F(GenerateDataFileTest, NoRecordsMakeEmptyDataAndLog) {
  setup.save_settings();
  setup.write_control({.records = 0});
  write_file(setup.data(), "old");
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(read_file(setup.data()), "");
  EXPECT_EQ(read_file(setup.log()), log_bytes(0, 1, {}));
  EXPECT_EQ(setup.interface.percentages, (std::vector<int>{100}));
}

TEST_F(GenerateDataFileTest, ShowsProgressAndOffersCancelOnlyWhenGuarded) {
  setup.save_settings();
  setup.write_control({.records = 4});
  for (const std::int32_t option : {0, 1, guarded_output}) {
    setup.interface = {};
    EXPECT_EQ(run(option), 0);
    EXPECT_EQ(setup.interface.offered_cancel, option == guarded_output);
    EXPECT_EQ(setup.interface.progress_parent, &parent_window);
    EXPECT_EQ(setup.interface.percentages, (std::vector<int>{25, 50, 75, 100}));
    EXPECT_EQ(setup.interface.polls, 4);
    EXPECT_EQ(setup.interface.open_progresses, 0);
  }
}

// What spoils a run, and which files then remain of an older data file and log.
struct FailureCase {
  std::int32_t code;
  std::function<void(GenerationSetup&)> spoil;
  Names remains = data_and_log;
};

TEST_F(GenerateDataFileTest, FailuresBeforeTheFirstRecordTouchNothing) {
  const FailureCase cases[] = {
      {-2, [](GenerationSetup& s) { std::filesystem::remove(s.control()); }},
      {-3, [](GenerationSetup& s) { std::filesystem::resize_file(s.control(), 1019); }},
      {-3, [](GenerationSetup& s) { std::filesystem::resize_file(s.control(), 1023); }},
      {-4, [](GenerationSetup& s) { s.write_control({.records = -1}); }},
      {-6,
       [](GenerationSetup& s) {
         s.write_control({.items = {8, 9}});
       }},
      {-6, [](GenerationSetup& s) { s.write_control({.items = {}}); }},
      {-57, [](GenerationSetup& s) { s.write_control({.layout_kind = 2}); }},
      {-5, [](GenerationSetup& s) { write_file(s.settings(), std::string(500, 'T')); }},
      {-3, [](GenerationSetup& s) { std::filesystem::resize_file(s.settings(), 1000); }},
      {-28, [](GenerationSetup& s) { std::filesystem::remove(s.settings()); }, data_only},
      {-28, [](GenerationSetup& s) { s.write_control({.level = 2}); }, data_only},
      {-2, [](GenerationSetup& s) { s.write_control({.data = s.folder.file("no/out.csv")}); }},
  };
  setup.save_settings();
  const std::string settings = read_file(setup.settings());
  for (const FailureCase& row : cases) {
    SCOPED_TRACE(row.code);
    write_file(setup.settings(), settings);
    write_file(setup.data(), "old data");
    write_file(setup.log(), "old log");
    setup.write_control();
    row.spoil(setup);
    EXPECT_EQ(run(), row.code);
    EXPECT_EQ(setup.outputs(), row.remains);
    EXPECT_EQ(read_file(setup.data()), "old data");
    if (row.remains == data_and_log) {
      EXPECT_EQ(read_file(setup.log()), "old log");
    }
    EXPECT_TRUE(setup.interface.messages.empty());
  }
}

TEST_F(GenerateDataFileTest, SettingsThatSomebodyHoldsAreOutOfReach) {
  setup.save_settings();
  setup.write_control();
  ClFmtFile other;
  other.set_paths(setup.settings(), setup.folder.path());
  ASSERT_EQ(other.load(1, 1, 1), 1);
  EXPECT_EQ(run(), -2);
  EXPECT_TRUE(setup.outputs().empty());
}

TEST_F(GenerateDataFileTest, ALogThatCannotBeMadeLeavesTheData) {
  setup.save_settings();
  std::filesystem::create_directory(setup.log());
  setup.write_control();
  EXPECT_EQ(run(), -2);
  EXPECT_EQ(read_file(setup.data()), "001,\n002,\n003,\n");
}

TEST_F(GenerateDataFileTest, UnknownSettingsEndTheRunAndItsFile) {
  for (const auto& [kind, code] : {std::pair{1001, -7}, std::pair{900, -40}}) {
    write_file(setup.settings(), header_bytes(1, 0, 1) +
                                     level_bytes(1, 76, 1, column_size + element_size, 1) +
                                     column_bytes({}) + element_bytes({.kind = kind}));
    write_file(setup.data(), "old data");
    write_file(setup.log(), "old log");
    setup.write_control();
    EXPECT_EQ(run(), code);
    EXPECT_EQ(setup.outputs(), Names{"out.log"});
    EXPECT_EQ(read_file(setup.log()), "old log");
    EXPECT_EQ(setup.interface.open_progresses, 0);
  }
}

TEST_F(GenerateDataFileTest, CancelLeavesNothing) {
  setup.save_settings();
  setup.write_control({.records = 3});
  for (const int poll : {1, 2, 3}) {
    setup.interface = {};
    setup.interface.cancel_at_poll = poll;
    EXPECT_EQ(run(guarded_output), -79);
    EXPECT_EQ(setup.interface.polls, poll);
    EXPECT_TRUE(setup.outputs().empty());
  }
}

TEST_F(GenerateDataFileTest, WritesThroughALink) {
  setup.save_settings();
  setup.write_control();
  const std::string target = setup.folder.file("target");
  write_file(target, "old data");
  std::filesystem::create_symlink(target, setup.data());
  EXPECT_EQ(run(), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(setup.data()));
  EXPECT_EQ(read_file(target), "001,\n002,\n003,\n");

  setup.interface.cancel_at_poll = setup.interface.polls + 1;
  EXPECT_EQ(run(), -79);
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(GenerateDataFileTest, DevicesAndPipesStay) {
  setup.save_settings();
  const std::string pipe = setup.folder.file("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int reader = ::open(pipe.c_str(), O_RDWR | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  setup.write_control({.data = pipe});
  EXPECT_EQ(run(), 0);
  char text[64] = {};
  EXPECT_EQ(::read(reader, text, sizeof text), 15);
  EXPECT_STREQ(text, "001,\n002,\n003,\n");

  setup.interface.cancel_at_poll = setup.interface.polls + 2;
  EXPECT_EQ(run(), -79);
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  ::close(reader);

  setup.write_control({.records = 20, .data = "/dev/null"});
  EXPECT_EQ(run(), 0);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  EXPECT_EQ(read_file(setup.folder.file("null.log")), log_bytes(20, 1, {1}));
}

TEST_F(GenerateDataFileTest, RandomRunsMatchTheReference) {
  constexpr std::uint32_t seed = 18991231;
  constexpr int runs = 60;
  RandomSettings random(seed);
  for (int i = 0; i < runs; ++i) {
    const auto layout_kind = static_cast<std::int32_t>(random.between(1, 3));
    const auto quotation = static_cast<std::int32_t>(random.between(0, 1));
    const auto records = static_cast<std::int32_t>(random.between(1, 400));
    std::vector<SavedItem> saved;
    std::vector<std::int32_t> numbers;
    std::vector<ReferenceItem> reference;
    const std::int64_t items = random.between(1, 12);
    for (std::int32_t number = 1; number <= items; ++number) {
      RandomItem item = random.draw();
      const bool initial = item.column->record.generation_type == generation_type::initial_value;
      saved.push_back({number, item.settings.item, initial ? RangeTexts{} : item.settings.texts,
                       item.settings.action});
      numbers.push_back(number);
      reference.emplace_back(*item.column, layout_kind, quotation == 1);
    }
    std::string expected;
    for (std::int32_t done = 0; done < records; ++done) {
      for (ReferenceItem& item : reference) ASSERT_EQ(item.append_field(expected), 0);
      if (layout_kind == 3) expected.pop_back();
      expected += '\n';
    }
    std::filesystem::remove(setup.settings());
    setup.save_settings(saved, layout_kind, quotation);
    setup.write_control({.records = records, .layout_kind = layout_kind, .items = numbers});
    ASSERT_EQ(run(guarded_output), 0);
    ASSERT_TRUE(same_bytes(expected, read_file(setup.data()))) << "seed " << seed << " run " << i;
    ASSERT_EQ(read_file(setup.log()), log_bytes(records, 1, numbers));
  }
}

}  // namespace
}  // namespace korvex::test
