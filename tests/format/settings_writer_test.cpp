#include "format/settings_writer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "format/settings_folder.h"

namespace korvex {
namespace {

using namespace test;

constexpr std::size_t area_of_one = header_size + level_size;

// Every byte of a file that holds one checked range.
TEST(SettingsWriter, WritesARangeByteForByte) {
  const SettingsFolder folder;
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 3, 1000, 2), 0);
  file.edited().texts = {"%3.2D", "1.5", "99.99", "0.05"};
  file.edited().choices = {1, 1};
  ASSERT_EQ(file.check_and_store(7, {4, 1, 8, 5, 2}), 0);
  ASSERT_EQ(file.save(1), 0);

  const ValueFields start = {1, 1, 150, "150", 0, "", {}};
  const ValueFields end = {1, 2, 9999, "9999", 0, "", {}};
  const ColumnFields column = {
      .item_number = 7,
      .attribute = 4,
      .signed_flag = 1,
      .length = 8,
      .digits = 5,
      .decimals = 2,
      .increment = {1, 1, 5, "005", 0, "", {}},
      .increment_text = "0.05",
      .format = "%3.2D",
      .exceeded_action = 1,
      .custom_format = 1,
  };
  const ElementFields element = {
      .kind = 900,
      .sign = 10,
      .width = 7,
      .digits = 3,
      .decimals = 2,
      .current = start,
      .start = start,
      .end = end,
      .text = "3.2D",
      .start_text = "+001.50",
      .end_text = "+099.99",
      .span_low = 9849,
  };
  const std::string written = read_file(folder.path);
  EXPECT_TRUE(same_bytes(header_bytes(2, 1, 1) + level_bytes(3, 76, 1000, 1268, 1) +
                             column_bytes(column) + element_bytes(element),
                         written));
  EXPECT_TRUE(folder.is_tidy());
  // The same in plain hex, for the fields that others look at first.
  const std::tuple<std::size_t, const char*> rows[] = {
      {0, "54 41 4D 42 4F 20 44 41 54 41 20 46 4F 52 4D 41 54 20 56 33 4C 31 00 00"},
      {24, "02 00 00 00 01 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00"},
      {44, "03 00 00 00 4C 00 00 00 E8 03 00 00 F4 04 00 00 01 00 00 00 00 00 00 00"},
      {76, "07 00 00 00 01 00 00 00 01 00 00 00 04 00 00 00 01 00 00 00 08 00 00 00"},
      {76 + 84, "30 2E 30 35 00"},
      {76 + 108, "25 33 2E 32 44 00"},
      {76 + 364, "01 00 00 00 02 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00"},
      {736, "01 00 00 00 84 03 00 00 0A 00 00 00 07 00 00 00 03 00 00 00 02 00 00 00"},
      {736 + 180, "33 2E 32 44 00"},
      {736 + 312, "2B 30 30 31 2E 35 30 00"},
      {736 + 576, "79 26 00 00 00 00 00 00 00 00 00 00"},
  };
  for (const auto& [offset, digits] : rows) {
    const std::string expected = hex(digits);
    EXPECT_TRUE(same_bytes(expected, written.substr(offset, expected.size()))) << offset;
  }
}

TEST(SettingsWriter, WritesDatesAndFullWidthCharacters) {
  const SettingsFolder folder;
  ClFmtFile file;
  ASSERT_EQ(folder.load(file), 0);
  file.edited().texts = {"%YMD", "991231", "000101", "1"};
  ASSERT_EQ(file.check_and_store(1, {28, 0, 8, 8, 0}), 0);
  file.edited().texts = {"%2N", cp932("あい"), cp932("いえ"), "1"};
  ASSERT_EQ(file.check_and_store(2, {11, 0, 4, 2, 0}), 0);
  ASSERT_EQ(file.save(0), 0);

  const ValueFields one = {1, 0, 1, "1", 0, "", {}};
  const ValueFields date_start = {1, 0, 991231, "", 0, "", {1999, 12, 31}};
  const ValueFields date_end = {1, 0, 101, "", 0, "", {2000, 1, 1}};
  const auto character = [](std::int32_t sign, std::int32_t ordinal, const char* text) {
    return ValueFields{sign, 0, ordinal, cp932(text), 0, "", {}};
  };
  const std::string expected =
      column_bytes(
          {.attribute = 28, .length = 8, .digits = 8, .increment = one, .format = "%YMD"}) +
      element_bytes({1, 906, 0, 6, 6, 0, date_start, date_start, date_end, "YMD", "991231",
                     "000101", 98870, 98870, 0}) +
      column_bytes({.item_number = 2,
                    .element_count = 2,
                    .lead_element = 2,
                    .attribute = 11,
                    .length = 4,
                    .digits = 2,
                    .increment = one,
                    .format = "%2N"}) +
      element_bytes({1, 905, 0, 1, 1, 0, character(1, 208, "あ"), character(1, 208, "あ"),
                     character(1, 210, "い"), "N", cp932("あ"), cp932("い"), 2, 0, 1}) +
      element_bytes({2, 905, 0, 1, 1, 0, character(0, 210, "い"), character(0, 210, "い"),
                     character(0, 214, "え"), "N", cp932("い"), cp932("え"), 4, 0, 0});
  EXPECT_TRUE(same_bytes(expected, read_file(folder.path).substr(area_of_one)));
}

TEST(SettingsWriter, AnUnchangedFileIsWrittenAsItWas) {
  const SettingsFolder folder;
  std::string bytes = settings_bytes({2, 0, 1});
  put_i32(bytes, 36, 0x01020304);
  put_i32(bytes, 40, -1);
  for (const std::int32_t level : {1, 3}) {
    write_file(folder.path, bytes);
    ClFmtFile file;
    ASSERT_GT(folder.load(file, level, 10 * level), 0);
    ASSERT_EQ(file.save(0), 0);
    EXPECT_TRUE(same_bytes(bytes, read_file(folder.path))) << level;
  }
}

TEST(SettingsWriter, RawLevelsMoveWithTheirBytes) {
  const SettingsFolder folder;
  std::string bytes = settings_bytes({1, 1, 1});
  const std::size_t area = header_size + 3 * level_size;
  const std::size_t item_size = column_size + element_size;
  for (std::size_t i = 0; i < 100; ++i) bytes[area + item_size + 300 + i] = static_cast<char>(i);
  write_file(folder.path, bytes);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 1, 77), 1);
  ASSERT_EQ(store_range(file, 500), 0);
  ASSERT_EQ(file.save(0), 0);
  const std::string written = read_file(folder.path);
  EXPECT_TRUE(same_bytes(header_bytes(1, 0, 3) + level_bytes(1, area, 77, 2 * item_size, 2) +
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
  EXPECT_EQ(file.save(0), 0) << "there is room for two areas of this size";
  put_i32(bytes, header_size + level_size + 12, static_cast<std::int32_t>(bytes.size() - 200));
  put_i32(bytes, header_size + level_size + 4, 200);
  write_file(folder.path, bytes);
  ASSERT_EQ(folder.load(file, 1), 1);
  EXPECT_EQ(file.save(0), -4);
  EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
  EXPECT_TRUE(folder.is_tidy());
}

TEST(SettingsWriter, ALevelWithoutSettingsGoes) {
  const SettingsFolder folder;
  write_file(folder.path, settings_bytes({1, 1}));
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 2), 1);
  ASSERT_EQ(file.delete_settings(201), 0);
  EXPECT_EQ(file.save(0), 0);
  EXPECT_TRUE(same_bytes(settings_bytes({1}), read_file(folder.path)));
  EXPECT_EQ(file.save(0), -68) << "the level that was current is gone";
  EXPECT_EQ(file.read_item(201), -68);
}

TEST(SettingsWriter, NothingLeftToWriteIsACode) {
  const SettingsFolder folder;
  {
    ClFmtFile fresh;
    EXPECT_EQ(folder.load(fresh), 0);
    EXPECT_EQ(fresh.save(0), -6);
    EXPECT_EQ(fresh.save(0), -6);
  }
  const std::string bytes = settings_bytes({1});
  write_file(folder.path, bytes);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file), 1);
  ASSERT_EQ(file.delete_settings(101), 0);
  EXPECT_EQ(file.save(0), -44);
  EXPECT_EQ(file.save(0), -44);
  EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
  EXPECT_TRUE(folder.is_tidy());
}

TEST(SettingsWriter, AMissingWorkFolderCannotBeOpened) {
  const SettingsFolder folder;
  ClFmtFile file;
  file.set_paths(folder.path, folder.work.file("none"));
  ASSERT_EQ(file.load(1, 1, 1), 0);
  ASSERT_EQ(store_range(file, 1), 0);
  EXPECT_EQ(file.save(0), -2);
  EXPECT_FALSE(platform::exists(folder.path));
}

TEST(SettingsWriter, KeepsModeAndLinkOfTheOldFile) {
  const SettingsFolder folder;
  const TempFolder elsewhere;
  write_file(elsewhere.file("real"), settings_bytes({1}));
  ASSERT_EQ(::chmod(elsewhere.file("real").c_str(), 0646), 0);
  std::filesystem::create_symlink(elsewhere.file("real"), folder.path);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file), 1);
  ASSERT_EQ(file.save(1), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path));
  struct stat status = {};
  ASSERT_EQ(::stat(folder.path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0646u);
  EXPECT_EQ(read_file(elsewhere.file("real")).substr(28, 4), hex("01 00 00 00"));
  EXPECT_EQ(elsewhere.names(), std::vector<std::string>{"real"});
}

TEST(SettingsWriter, InADialogRunItRemembersTheItems) {
  const SettingsFolder folder;
  ClFmtFile file;
  file.set_run_mode(run_mode::data_file_dialog);
  ASSERT_EQ(folder.load(file), 0);
  for (const std::int32_t item : {30, 10, 20}) ASSERT_EQ(store_range(file, item), 0);
  ASSERT_EQ(file.delete_settings(10), 0);
  ASSERT_EQ(store_range(file, 30), 0);
  ASSERT_EQ(file.save(0), 0);
  EXPECT_EQ(file.saved_items(), (std::vector<std::int32_t>{30, 10, 20}));
  const std::string written = read_file(folder.path);
  EXPECT_EQ(written.substr(header_size + 16, 4), hex("02 00 00 00"));
  EXPECT_EQ(written.size(), area_of_one + 2 * (column_size + element_size));
}

}  // namespace
}  // namespace korvex
