#include "dialogs/rules/format_examples.h"

#include <gtest/gtest.h>

#include "support/codes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::test {
namespace {

struct FormatExamplesTest : testing::Test {
  TempFolder folder;
  ScopedVariable configuration{"XDG_CONFIG_HOME", folder.path()};
  platform::SettingsStore store{"Host"};
  FormatExamples examples;
};

TEST_F(FormatExamplesTest, HoldsAHundredEntriesOfWhichTheUsersCanBeDeleted) {
  std::string piece;
  for (int i = 0; i < 92; ++i) piece += "%" + std::to_string(i) + ",";
  ASSERT_EQ(store.write(format_example_values[0], piece), platform::StoreStatus::ok);
  ASSERT_EQ(store.write(format_example_values[1], "%5S"), platform::StoreStatus::ok);
  EXPECT_FALSE(examples.can_delete());
  examples.load(store);
  ASSERT_EQ(examples.entries().size(), 100u);
  EXPECT_EQ(examples.entries()[8] + examples.entries()[9] + examples.entries()[99], "%TS%0%90");
  EXPECT_FALSE(examples.can_add());
  EXPECT_FALSE(examples.add("%5S"));
  for (const std::int32_t position : {-1, 0, 8, 100}) EXPECT_FALSE(examples.erase(position));
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
  const std::pair<Sizes, Sizes> rows[] = {
      // of the examples, and of the pieces; what does not fit ends the list
      {{}, {0, 0, 0}},
      {Sizes(91, 20), {1007, 902, 0}},
      {{255, 255, 255, 255, 3}, {1023, 3, 0}},
      {{255, 255, 255, 254, 3}, {1022, 3, 0}},
      {{255, 255, 255, 256, 3}, {767, 260, 0}},
      {{1023, 1023, 1000, 100, 3}, {1023, 1023, 1000}},
  };
  for (const auto& [sizes, pieces] : rows) {
    examples = {};
    for (const std::size_t size : sizes) {
      ASSERT_TRUE(examples.add("%" + std::string(size - 1, 'S')));
    }
    EXPECT_EQ(examples.save(store), 0);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      std::string piece = "none";
      store.read(format_example_values[i], piece);
      EXPECT_EQ(piece.size(), pieces[i]) << sizes.size() << " examples";
    }
    examples = {};
    examples.load(store);
    for (const std::string& example : examples.entries()) EXPECT_NE(example.back(), ',');
  }
}

}  // namespace
}  // namespace korvex::test
