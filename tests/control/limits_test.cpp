#include "control/limits.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex {
namespace {

using test::read_file;
using test::write_file;

class LimitsTest : public testing::Test {
 protected:
  void write_store(const std::string& content) const {
    std::filesystem::create_directories(folder.file("Host"));
    write_file(path, content);
  }

  test::TempFolder folder;
  test::ScopedVariable configuration{"XDG_CONFIG_HOME", folder.path()};
  platform::SettingsStore store{"Host"};
  std::string path = folder.file("Host/Korvex.conf");
};

TEST_F(LimitsTest, AMissingStoreGetsTheDefaults) {
  const Limits limits = read_limits(store);
  EXPECT_EQ(limits.file_size_max, 10'000'000'000u);
  EXPECT_EQ(limits.repeat_max, 0u);
  EXPECT_EQ(read_file(path), "CheckFileSizeMax=10000000000\nRepeatLevelNumMax=0\n");
}

TEST_F(LimitsTest, ReadsDigitsAndReplacesAnythingElse) {
  constexpr std::uint64_t standard = 10'000'000'000;
  struct Row {
    std::string size;
    std::string repeat;
    std::uint64_t size_limit;
    std::uint64_t repeat_limit;
    std::string size_after;
    std::string repeat_after;
  };
  const std::string longest = std::string(1022, '0') + "5";
  const Row rows[] = {
      {"2147483648", "5", 2147483648, 5, "2147483648", "5"},
      {"18446744073709551615", "18446744073709551615", UINT64_MAX, UINT64_MAX,
       "18446744073709551615", "18446744073709551615"},
      // The arithmetic is 64 bits wide and wraps.
      {"18446744073709551617", "18446744073709551616", 1, 0, "18446744073709551617",
       "18446744073709551616"},
      {"12a4", "5x", standard, 0, "10000000000", "0"},
      {"-5", "+5", standard, 0, "10000000000", "0"},
      {" 5", "5 ", standard, 0, "10000000000", "0"},
      {"000", "007", standard, 7, "000", "007"},
      {"", "", standard, 0, "10000000000", "0"},
      {longest, longest, 5, 5, longest, longest},
      {"0" + longest, "0" + longest, standard, 0, "10000000000", "0"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.size.substr(0, 30) + " and " + row.repeat.substr(0, 30));
    write_store("CheckFileSizeMax=" + row.size + "\nOther=x\nRepeatLevelNumMax=" + row.repeat +
                "\n");
    const Limits limits = read_limits(store);
    EXPECT_EQ(limits.file_size_max, row.size_limit);
    EXPECT_EQ(limits.repeat_max, row.repeat_limit);
    EXPECT_EQ(read_file(path), "CheckFileSizeMax=" + row.size_after +
                                   "\nOther=x\nRepeatLevelNumMax=" + row.repeat_after + "\n");
  }
}

TEST_F(LimitsTest, AStoreThatCannotBeUsedStopsNothing) {
  std::filesystem::create_directories(path);
  const Limits limits = read_limits(store);
  EXPECT_EQ(limits.file_size_max, 10'000'000'000u);
  EXPECT_EQ(limits.repeat_max, 0u);
}

TEST_F(LimitsTest, StoreValuesHaveTheirCodes) {
  std::string value;
  EXPECT_EQ(read_store_value(store, "Name", 1024, value), -60) << "no key";
  EXPECT_EQ(write_store_value(store, "Name", "12345"), 0);
  EXPECT_EQ(read_store_value(store, "Other", 1024, value), -60) << "no value";
  EXPECT_EQ(read_store_value(store, "Name", 6, value), 0);
  EXPECT_EQ(value, "12345");
  EXPECT_EQ(read_store_value(store, "Name", 5, value), -63) << "no room for the terminator";
  EXPECT_EQ(write_store_value(store, "Name", ""), 0);
  EXPECT_EQ(read_store_value(store, "Name", 1024, value), -62);
  EXPECT_EQ(read_store_value(store, "Name", 1, value), -62);
  EXPECT_EQ(write_store_value(store, "Name", "two\nlines"), -61);
  std::filesystem::remove_all(path);
  std::filesystem::create_directories(path);
  EXPECT_EQ(read_store_value(store, "Name", 1024, value), -61);
  EXPECT_EQ(write_store_value(store, "Name", "1"), -61);
}

}  // namespace
}  // namespace korvex
