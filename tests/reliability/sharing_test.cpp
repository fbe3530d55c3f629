// Several processes at the same files.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "run/generate_data_file.h"
#include "support/generation_setup.h"

namespace korvex::test {
namespace {

// Runs the work in a process of its own; its answer is the process's exit status.
pid_t start(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  return child;
}

int status_of(pid_t child) {
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr ItemAttributes counter_item = {attribute::decimal, Flag::off, 9, 9, 0};

Result<std::size_t> load(ClFmtFile& file, const GenerationSetup& setup) {
  file.set_paths(setup.settings(), setup.folder.path());
  return file.load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file);
}

ErrorCode store_count(ClFmtFile& file, int count) {
  file.edited().texts = {"%9U", "1", std::to_string(count), "1"};
  return file.check_and_store(ItemNumber{1}, counter_item);
}

ErrorCode generate(const GenerationSetup& setup) {
  ClGenerateDataFile generator;
  generator.main.control_path = setup.control();
  return generator.run();
}

// Both found no settings. The one that comes too late must not replace what the other one holds.
TEST(SharingTest, AFileThatCameIntoBeingAndIsHeldStays) {
  const GenerationSetup setup;
  ClFmtFile late;
  ASSERT_EQ(load(late, setup), 0);
  ASSERT_EQ(store_count(late, 55), 0);
  setup.save_settings();
  const std::string bytes = read_file(setup.settings());
  {
    ClFmtFile holder;
    ASSERT_EQ(load(holder, setup), 1);
    EXPECT_EQ(late.save(quotation::none), -26);
    EXPECT_TRUE(same_bytes(bytes, read_file(setup.settings())));
    EXPECT_TRUE(setup.outputs().empty());
  }
  EXPECT_EQ(late.save(quotation::none), 0);
}

// Each process raises a number in the settings as soon as it gets hold of them. A save that works
// on anything but the last one's file loses a raise.
TEST(SharingTest, NoSaveIsLostBetweenProcesses) {
  constexpr int processes = 3;
  constexpr int raises = 30;
  constexpr int first_count = 2;
  const GenerationSetup setup;
  {
    ClFmtFile file;
    ASSERT_EQ(load(file, setup), 0);
    ASSERT_EQ(store_count(file, first_count), 0);
    ASSERT_EQ(file.save(quotation::none), 0);
  }
  const auto raise_often = [&] {
    for (int done = 0; done < raises;) {
      ClFmtFile file;
      const Result<std::size_t> loaded = load(file, setup);
      if (loaded.code() == error::cannot_open) continue;
      if (loaded != 1 || file.read_item(ItemNumber{1}) != true) return 1;
      if (store_count(file, std::stoi(file.edited().texts.end) + 1) != 0) return 2;
      if (file.save(quotation::none) != 0) return 3;
      ++done;
    }
    return 0;
  };
  std::vector<pid_t> children;
  for (int i = 0; i < processes; ++i) children.push_back(start(raise_often));
  for (const pid_t child : children) EXPECT_EQ(status_of(child), 0);

  ClFmtFile file;
  ASSERT_EQ(load(file, setup), 1);
  ASSERT_EQ(file.read_item(ItemNumber{1}), 1);
  EXPECT_EQ(std::stoi(file.edited().texts.end), first_count + processes * raises);
  EXPECT_TRUE(setup.outputs().empty());
}

// While one process fills a data file, another one is refused, whether the file is new or old.
TEST(SharingTest, OneDataFileIsNotWrittenTwiceAtOnce) {
  for (const bool is_there : {false, true}) {
    const GenerationSetup setup;
    setup.save_settings();
    setup.write_control();
    if (is_there) write_file(setup.data(), "old data");
    platform::File first;
    ASSERT_EQ(first.create(setup.data()), platform::FileCause::none);
    ASSERT_EQ(first.write("first\n", 6), platform::FileCause::none);
    EXPECT_EQ(status_of(start([&] { return generate(setup) == -2 ? 0 : 1; })), 0) << is_there;
    EXPECT_EQ(first.close(), platform::FileCause::none);
    EXPECT_EQ(read_file(setup.data()), "first\n") << is_there;
  }
}

}  // namespace
}  // namespace korvex::test
