#include "generate/generate_data_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

#include "generate/record_writer.h"
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
TEST_F(GenerateDataFileTest, FailuresBeforeTheFirstRecordTouchNothing) {
  using Setup = GenerationSetup;
  const auto rewrite = [](const ControlFields& fields) {
    return [fields](Setup& s) { s.write_control(fields); };
  };
  const auto cut_control = [](std::uintmax_t size) {
    return [size](Setup& s) { std::filesystem::resize_file(s.control(), size); };
  };
  const std::tuple<std::int32_t, std::function<void(Setup&)>, Names> cases[] = {
      {-2, [](Setup& s) { std::filesystem::remove(s.control()); }, data_and_log},
      {-3, cut_control(1019), data_and_log},
      {-3, cut_control(1023), data_and_log},
      {-4, rewrite({.records = -1}), data_and_log},
      {-6, rewrite({.items = {8, 9}}), data_and_log},
      {-6, rewrite({.items = {}}), data_and_log},
      {-57, rewrite({.layout_kind = 2}), data_and_log},
      {-5, [](Setup& s) { write_file(s.settings(), std::string(500, 'T')); }, data_and_log},
      {-3, [](Setup& s) { std::filesystem::resize_file(s.settings(), 1000); }, data_and_log},
      {-28, [](Setup& s) { std::filesystem::remove(s.settings()); }, data_only},
      {-28, rewrite({.level = 2}), data_only},
      {-28, rewrite({.settings = "/no/such/folder/out.fif"}), data_only},
      {-28, rewrite({.settings = "/dev/null/out.fif"}), data_only},
      {-2, rewrite({.data = "/no/such/folder/out.csv"}), data_and_log},
  };
  setup.save_settings();
  const std::string settings = read_file(setup.settings());
  for (const auto& [code, spoil, remains] : cases) {
    SCOPED_TRACE(code);
    write_file(setup.settings(), settings);
    write_file(setup.data(), "old data");
    write_file(setup.log(), "old log");
    setup.write_control();
    spoil(setup);
    EXPECT_EQ(run(), code);
    EXPECT_EQ(setup.outputs(), remains);
    EXPECT_EQ(read_file(setup.data()), "old data");
    EXPECT_EQ(read_file(setup.log()), remains == data_only ? "" : "old log");
    EXPECT_TRUE(setup.interface.messages.empty());
  }
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

}  // namespace
}  // namespace korvex::test
