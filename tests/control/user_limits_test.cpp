#include "control/user_limits.h"

#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex {
namespace {

using test::read_file;
using test::write_file;

constexpr std::uint64_t standard = 10'000'000'000;

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

TEST_F(LimitsTest, ReadsDigitsAndReplacesAnythingElse) {
  const std::string longest = std::string(1022, '0') + "5";
  const std::string most = "18446744073709551615";
  const std::string wraps = "18446744073709551617";  // the arithmetic is 64 bits wide
  // As it stands in the store, the limit, and what the store holds then.
  const std::tuple<std::string, std::uint64_t, std::string> sizes[] = {
      {"2147483648", 2147483648, "2147483648"},
      {most, UINT64_MAX, most},
      {wraps, 1, wraps},
      {"000", standard, "000"},
      {longest, 5, longest},
      {"0" + longest, standard, "10000000000"}};
  const std::tuple<std::string, std::uint64_t, std::string> repeats[] = {
      {"5", 5, "5"},     {most, UINT64_MAX, most}, {wraps, 1, wraps},
      {"007", 7, "007"}, {longest, 5, longest},    {"0" + longest, 0, "0"}};
  const auto check = [&](const auto& size, const auto& repeat) {
    const auto& [size_text, size_limit, size_after] = size;
    const auto& [repeat_text, repeat_limit, repeat_after] = repeat;
    SCOPED_TRACE(size_text.substr(0, 30) + " and " + repeat_text.substr(0, 30));
    write_store("CheckFileSizeMax=" + size_text + "\nOther=x\nRepeatLevelNumMax=" + repeat_text +
                "\n");
    const Limits limits = read_limits(store);
    EXPECT_EQ(limits.file_size_max, size_limit);
    EXPECT_EQ(limits.repeat_max, repeat_limit);
    EXPECT_EQ(read_file(path), "CheckFileSizeMax=" + size_after +
                                   "\nOther=x\nRepeatLevelNumMax=" + repeat_after + "\n");
  };
  for (std::size_t i = 0; i < std::size(sizes); ++i) check(sizes[i], repeats[i]);
  for (const std::string bad : {"", "12a4", "-5", "+5", " 5", "5 "}) {
    check(std::tuple(bad, standard, std::string("10000000000")),
          std::tuple(bad, std::uint64_t{0}, std::string("0")));
  }
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
  const Limits limits = read_limits(store);
  EXPECT_EQ(limits.file_size_max, standard) << "a store that cannot be used stops nothing";
  EXPECT_EQ(limits.repeat_max, 0u);
}

}  // namespace
}  // namespace korvex
