#include "format/settings_upgrade.h"

#include "format/settings_folder.h"

namespace korvex {
namespace {

using namespace test;

constexpr std::string_view previous_magic = "TAMBO DATA FORMAT V2L1";

ColumnFields item(std::int32_t number, std::int32_t elements) {
  return {.item_number = number, .element_count = elements, .format = "%5U", .custom_format = 1};
}

std::string old_item(std::int32_t number) {
  return previous_column_bytes(item(number, 2)) + element_bytes({}) + element_bytes({});
}
std::string new_item(std::int32_t number) {
  return column_bytes(item(number, 2)) + element_bytes({}) + element_bytes({});
}

constexpr std::size_t old_item_size = previous_column_size + 2 * element_size;
constexpr std::size_t new_item_size = column_size + 2 * element_size;

std::string one_level(std::string_view magic, const std::string& area) {
  // Repeat flag and reserved bytes have no meaning in the previous version.
  std::string level = level_bytes(3, 76, 50, 2 * old_item_size, 2);
  if (magic == previous_magic) level.replace(20, 12, "\x01 reserved!!");
  return header_bytes(1, 1, 1, magic) + level + area;
}

TEST(SettingsUpgrade, OneLevelKeepsItsPlace) {
  const SettingsFolder folder;
  std::string old = one_level(previous_magic, old_item(1) + old_item(2));
  put_i32(old, 36, 99);
  put_i32(old, 40, 99);
  write_file(folder.path, old);
  ASSERT_EQ(::chmod(folder.path.c_str(), 0640), 0);
  EXPECT_EQ(upgrade_settings_file(folder.path, 1), 0);
  const std::string upgraded = read_file(folder.path);
  // What the size says is the business of whoever reads the level as raw bytes, see below.
  std::string expected = one_level("TAMBO DATA FORMAT V3L1", new_item(1) + new_item(2));
  expected.replace(header_size + 12, 4, upgraded.substr(header_size + 12, 4));
  EXPECT_TRUE(same_bytes(expected, upgraded));
  EXPECT_TRUE(folder.is_tidy());
  struct stat status = {};
  ASSERT_EQ(::stat(folder.path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0640u);

  ClFmtFile file;
  EXPECT_EQ(folder.load(file, 3), 2);
}

TEST(SettingsUpgrade, SeveralLevelsMoveToTheirNewPlaces) {
  const SettingsFolder folder;
  const std::size_t area = header_size + 3 * level_size;
  write_file(folder.path, header_bytes(2, 1, 3, previous_magic) +
                              level_bytes(1, area, 10, 2 * old_item_size, 2) +
                              level_bytes(2, area + 2 * old_item_size, 20, 0, 0) +
                              level_bytes(3, area + 2 * old_item_size, 30, old_item_size, 1) +
                              old_item(1) + old_item(2) + old_item(3));
  EXPECT_EQ(upgrade_settings_file(folder.path, 2), 0);
  EXPECT_TRUE(same_bytes(header_bytes(2, 1, 3) + level_bytes(1, area, 10, 2 * new_item_size, 2) +
                             level_bytes(2, area + 2 * new_item_size, 20, 0, 0) +
                             level_bytes(3, area + 2 * new_item_size, 30, new_item_size, 1) +
                             new_item(1) + new_item(2) + new_item(3),
                         read_file(folder.path)));
}

TEST(SettingsUpgrade, TextsKeepNothingBehindTheirTerminators) {
  const SettingsFolder folder;
  std::string column = previous_column_bytes(item(1, 1));
  std::string element = element_bytes({});
  for (const std::size_t end_of_text : {44u + 11, 60u + 11, 84u + 23, 108u + 255}) {
    column[end_of_text] = 'x';
  }
  for (const std::size_t end_of_text :
       {36u + 11, 88u + 11, 140u + 11, 180u + 131, 312u + 131, 444u + 131, 588u, 607u}) {
    element[end_of_text] = 'x';
  }
  const std::string table = level_bytes(1, 76, 1, 996, 1);
  write_file(folder.path, header_bytes(1, 0, 1, previous_magic) + table + column + element);
  EXPECT_EQ(upgrade_settings_file(folder.path, 1), 0);
  EXPECT_TRUE(same_bytes(column_bytes(item(1, 1)) + element_bytes({}),
                         read_file(folder.path).substr(header_size + level_size)));
}

// A run on another level keeps the upgraded level as it is, all of it.
TEST(SettingsUpgrade, NoLevelIsLostWhenAnotherOneIsLoaded) {
  const SettingsFolder folder;
  for (const std::int32_t loaded : {1, 2, 4}) {
    write_file(folder.path, one_level(previous_magic, old_item(1) + old_item(2)));
    {
      ClFmtFile file;
      ASSERT_EQ(folder.load(file, loaded), 0);
      ASSERT_EQ(store_range(file, 9), 0);
      ASSERT_EQ(file.save(0), 0);
    }
    EXPECT_NE(read_file(folder.path).find(new_item(1) + new_item(2)), std::string::npos) << loaded;
  }
}

TEST(SettingsUpgrade, ATruncatedFileStaysAsItIs) {
  const SettingsFolder folder;
  const std::string good = one_level(previous_magic, old_item(1) + old_item(2));
  for (std::size_t size = 0; size < good.size(); ++size) {
    write_file(folder.path, good.substr(0, size));
    ASSERT_EQ(upgrade_settings_file(folder.path, 1), -3) << size;
    ASSERT_TRUE(folder.is_tidy()) << size;
    ASSERT_EQ(read_file(folder.path).size(), size);
  }
}

TEST(SettingsUpgrade, RefusesClaimsThatTheFileDoesNotHold) {
  const SettingsFolder folder;
  const std::string good = one_level(previous_magic, old_item(1) + old_item(2));
  for (const std::size_t count : {32u, 44u + 16, 76u + 4}) {
    for (const std::int32_t value : {-1, INT32_MIN, INT32_MAX, 1000}) {
      std::string bytes = good;
      put_i32(bytes, count, value);
      write_file(folder.path, bytes);
      EXPECT_EQ(upgrade_settings_file(folder.path, 1), -3) << count << ' ' << value;
      EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
      EXPECT_TRUE(folder.is_tidy());
    }
  }
}

}  // namespace
}  // namespace korvex
