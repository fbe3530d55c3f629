#include "dialogs/format_examples.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex {
namespace {

using Texts = std::vector<std::string>;

std::string sized(std::size_t size) { return "%" + std::string(size - 1, 'S'); }

class FormatExamplesTest : public testing::Test {
 protected:
  void write(const Texts& values) const {
    std::filesystem::remove_all(folder.file("Host"));
    for (std::size_t i = 0; i < values.size(); ++i) {
      ASSERT_EQ(store.write(format_example_values[i], values[i]), platform::StoreStatus::ok);
    }
  }

  Texts stored() const {
    Texts values(format_example_values.size(), "none");
    for (std::size_t i = 0; i < values.size(); ++i) store.read(format_example_values[i], values[i]);
    return values;
  }

  // The user's examples.
  Texts loaded() const {
    FormatExamples examples;
    examples.load(store);
    const Texts& entries = examples.entries();
    return {entries.begin() + default_format_examples.size(), entries.end()};
  }

  test::TempFolder folder;
  test::ScopedVariable configuration{"XDG_CONFIG_HOME", folder.path()};
  platform::SettingsStore store{"Host"};
};

TEST_F(FormatExamplesTest, HoldsAHundredEntriesOfWhichTheUsersCanBeDeleted) {
  std::string piece;
  for (int i = 0; i < 92; ++i) piece += "%" + std::to_string(i) + ",";
  write({piece, "%5S"});
  FormatExamples examples;
  EXPECT_FALSE(examples.can_delete());
  examples.load(store);
  ASSERT_EQ(examples.entries().size(), 100u);
  EXPECT_EQ(examples.entries()[8] + examples.entries()[9] + examples.entries()[99], "%TS%0%90");
  EXPECT_FALSE(examples.can_add());
  EXPECT_FALSE(examples.add("%5S"));

  for (const std::int32_t position : {-1, 0, 8, 100}) {
    EXPECT_FALSE(examples.erase(position)) << position;
  }
  EXPECT_TRUE(examples.erase(9));
  EXPECT_FALSE(examples.contains("%0"));
  EXPECT_TRUE(examples.can_add());
  EXPECT_TRUE(examples.add("%5S"));
  EXPECT_TRUE(examples.contains("%5S") && examples.contains("%D") && !examples.contains("%5s"));
  while (examples.can_delete()) ASSERT_TRUE(examples.erase(9));
  EXPECT_EQ(examples.entries().size(), 9u);
}

TEST_F(FormatExamplesTest, CutsWhatItSavesIntoPieces) {
  using Sizes = std::vector<std::size_t>;
  struct Row {
    Sizes examples;
    Sizes pieces;
  };
  const Row rows[] = {
      {{}, {0, 0, 0}},
      {Sizes(91, 20), {1007, 902, 0}},
      {{255, 255, 255, 255, 3}, {1023, 3, 0}},
      {{255, 255, 255, 254, 3}, {1022, 3, 0}},
      {{255, 255, 255, 256, 3}, {767, 260, 0}},
      // What does not fit ends the list.
      {{1023, 1023, 1000, 100, 3}, {1023, 1023, 1000}},
  };
  for (const Row& row : rows) {
    FormatExamples examples;
    for (const std::size_t size : row.examples) ASSERT_TRUE(examples.add(sized(size)));
    EXPECT_EQ(examples.save(store), 0);
    Sizes sizes;
    for (const std::string& value : stored()) sizes.push_back(value.size());
    EXPECT_EQ(sizes, row.pieces);
    for (const std::string& example : loaded()) EXPECT_NE(example.back(), ',');
  }
}

}  // namespace
}  // namespace korvex
