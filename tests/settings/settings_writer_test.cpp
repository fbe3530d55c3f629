#include "settings/settings_writer.h"

#include "settings/settings_folder.h"
#include "support/faulty_file_calls.h"

namespace korvex {
namespace {

using namespace test;

// Every byte of a file that holds one checked range.
TEST(SettingsWriter, WritesARangeByteForByte) {
  const SettingsFolder folder;
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 3, 1000, 2), 0);
  file.edited().texts = {"%3.2D", "1.5", "99.99", "0.05"};
  file.edited().choices = {exceeded_action::repeat, Flag::on};
  ASSERT_EQ(file.check_and_store(ItemNumber{7}, {attribute::decimal, Flag::on, 8, 5, 2}), 0);
  ASSERT_EQ(file.save(quotation::double_mark), 0);

  const ValueFields start = {1, 1, 150, "150", 0, "", {}};
  const ValueFields end = {1, 2, 9999, "9999", 0, "", {}};
  const ColumnFields column = {7,      1,       1, 4, 1, 8, 5, 2, {1, 1, 5, "005", 0, "", {}},
                               "0.05", "%3.2D", 1, 2, 0, 1};
  const ElementFields element = {1,     900, 10,     7,         3,         2,   start,
                                 start, end, "3.2D", "+001.50", "+099.99", 9849};
  const std::string written = read_file(folder.path);
  EXPECT_TRUE(same_bytes(header_bytes(2, 1, 1) + level_bytes(3, 76, 1000, 1268, 1) +
                             column_bytes(column) + element_bytes(element),
                         written));
  EXPECT_TRUE(folder.is_tidy());
}

TEST(SettingsWriter, RawLevelsMoveWithTheirBytes) {
  const SettingsFolder folder;
  std::string bytes = settings_bytes({1, 1, 1});
  put_i32(bytes, 36, 0x01020304);  // which nobody knows
  const std::size_t area = header_size + 3 * level_size;
  const std::size_t item_size = column_size + element_size;
  for (std::size_t i = 0; i < 100; ++i) bytes[area + item_size + 300 + i] = static_cast<char>(i);
  write_file(folder.path, bytes);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 3, 30), 1);
  ASSERT_EQ(file.save(quotation::none), 0);
  EXPECT_TRUE(same_bytes(bytes, read_file(folder.path))) << "unchanged";
  ASSERT_EQ(folder.load(file, 1, 77), 1);
  ASSERT_EQ(store_range(file, 500), 0);
  ASSERT_EQ(file.save(quotation::none), 0);
  const std::string written = read_file(folder.path);
  EXPECT_TRUE(same_bytes(bytes.substr(0, header_size) + level_bytes(1, area, 77, 2 * item_size, 2) +
                             level_bytes(2, area + 2 * item_size, 20, item_size, 1) +
                             level_bytes(3, area + 3 * item_size, 30, item_size, 1),
                         written.substr(0, area)));
  EXPECT_TRUE(same_bytes(bytes.substr(area + item_size), written.substr(area + 2 * item_size)));
}

// Written out, levels that share their bytes would make a file many times as large.
TEST(SettingsWriter, LevelsThatOverlapHaveNoPlace) {
  const SettingsFolder folder;
  std::string bytes = settings_bytes({1, 1, 1});
  bytes.replace(header_size + level_size, 16, bytes, header_size + 2 * level_size, 16);
  put_i32(bytes, header_size + level_size, 2);
  write_file(folder.path, bytes);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 1), 1);
  EXPECT_EQ(file.save(quotation::none), 0) << "there is room for two areas of this size";
  put_i32(bytes, header_size + level_size + 12, static_cast<std::int32_t>(bytes.size() - 200));
  put_i32(bytes, header_size + level_size + 4, 200);
  write_file(folder.path, bytes);
  ASSERT_EQ(folder.load(file, 1), 1);
  EXPECT_EQ(file.save(quotation::none), -4);
  EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
  EXPECT_TRUE(folder.is_tidy());
}

TEST(SettingsWriter, ALevelWithoutSettingsGoes) {
  const SettingsFolder folder;
  write_file(folder.path, settings_bytes({1, 1}));
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 2), 1);
  ASSERT_EQ(file.delete_settings(ItemNumber{201}), 0);
  {
    const FaultyFileCalls full_disk({.call = 1, .error_number = ENOSPC, .kind = "write"});
    EXPECT_EQ(file.save(quotation::none), -27);
  }
  EXPECT_EQ(store_range(file, 201), 0) << "the level is still there to be worked on";
  ASSERT_EQ(file.delete_settings(ItemNumber{201}), 0);
  EXPECT_EQ(file.save(quotation::none), 0);
  EXPECT_TRUE(same_bytes(settings_bytes({1}), read_file(folder.path)));
  EXPECT_EQ(file.save(quotation::none), -68) << "the level that was current is gone";
  EXPECT_EQ(file.read_item(ItemNumber{201}).code(), -68);
}

TEST(SettingsWriter, NothingLeftToWriteIsACode) {
  const SettingsFolder folder;
  const std::string bytes = settings_bytes({1});
  for (const std::int32_t code : {-6, -44}) {
    ClFmtFile file;
    EXPECT_EQ(folder.load(file), code == -6 ? 0 : 1);
    if (code == -44) {
      EXPECT_EQ(file.delete_settings(ItemNumber{101}), 0);
    }
    EXPECT_EQ(file.save(quotation::none), code);
    EXPECT_EQ(file.save(quotation::none), code);
    EXPECT_EQ(read_file(folder.path), code == -6 ? "" : bytes);
    EXPECT_TRUE(folder.is_tidy());
    write_file(folder.path, bytes);
  }
}

// Replacing a file needs no right to write it.
TEST(SettingsWriter, AWriteProtectedFileStays) {
  const SettingsFolder folder;
  const std::string bytes = settings_bytes({1});
  write_file(folder.path, bytes);
  std::filesystem::permissions(folder.path, std::filesystem::perms::owner_read);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file), 1);
  EXPECT_EQ(file.save(quotation::none), -26);
  file.delete_file();
  EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
  EXPECT_TRUE(folder.is_tidy());
  file.disregard_protection();
  file.delete_file();
  EXPECT_FALSE(platform::exists(folder.path));
}

}  // namespace
}  // namespace korvex
