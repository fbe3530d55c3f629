
#include "korvex/korvex.h"
#include "support/generation_setup.h"

namespace korvex::test {
namespace {

// Items of every kind of field, saved in another order than the control file's.
std::vector<SavedItem> golden_items() {
  return {
      {1, {4, 0, 8, 4, 0}, {"%4U", "9997", "9999", "1"}},
      {2, {1, 1, 10, 10, 0}, {"'AB-'%2S%3U", "AY,7", "BB,500", "1"}},
      {3, {28, 0, 8, 8, 0}, {"%4YMD", "20080227", "20080301", "1"}, exceeded_action::initialize},
      {4, {31, 0, 6, 6, 0}, {"%T", "235955", "235959", "2"}},
      {5, {32, 0, 15, 15, 0}, {"%TS", "20071231 235958", "20080101 000002", "1"}},
      {6, {4, 1, 8, 6, 2}, {"%3.2D", "0.02", "-0.02", "-0.01"}},
      {7, {1, 1, 10, 10, 0}, {}},
      {8, {11, 0, 4, 2, 0}, {"%2N", cp932("ＡＸ"), cp932("ＣＺ"), "1"}},
      {9, {4, 0, 2, 2, 2}, {"%.2U", "0.97", "0.99", "0.01"}, exceeded_action::initialize},
      {10, {28, 0, 6, 6, 0}, {"%2YMA", "080230", "080302", "1"}},
      {12, {6, 0, 3, 3, 0}, {"%3s", "aac", "aaa", "-1"}, exceeded_action::initialize},
  };
}

TEST(GoldenTest, WholeRunsGiveTheSameBytes) {
  const std::tuple<std::int32_t, std::int32_t, std::string> cases[] = {
      {1, 0, "record_plain.csv"}, {1, 1, "record_quoted.csv"}, {2, 0, "table_plain.csv"},
      {2, 1, "table_quoted.csv"}, {3, 0, "third_plain.csv"},   {3, 1, "third_quoted.csv"},
  };
  const std::string golden = KORVEX_GOLDEN_FOLDER "/";
  for (const auto& [kind, quotation, name] : cases) {
    SCOPED_TRACE(name);
    const GenerationSetup setup;
    setup.save_settings(golden_items(), kind, quotation, 3);
    setup.write_control({.records = 6,
                         .layout_kind = kind,
                         .level = 3,
                         .items = {2, 1, 3, 99, 7, 4, 5, 6, 8, 9, 10, 12}});
    const std::string settings = read_file(setup.settings());
    EXPECT_EQ(DGCreateData(setup.control().c_str(), 0, nullptr, 0), 0);
    EXPECT_TRUE(same_bytes(read_file(golden + name), read_file(setup.data())));
    EXPECT_TRUE(same_bytes(read_file(golden + "run.log"), read_file(setup.log())));
    EXPECT_EQ(read_file(setup.settings()), settings);
    EXPECT_EQ(setup.outputs(), (Names{"out.csv", "out.log"}));
    EXPECT_TRUE(setup.interface.messages.empty());
  }
}

}  // namespace
}  // namespace korvex::test
