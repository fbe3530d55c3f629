#include "format/settings_reader.h"

#include <limits>

#include "format/settings_folder.h"

namespace korvex {
namespace {

using namespace test;

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

TEST(SettingsReader, ReadsTheRecordsAsTheyStand) {
  const SettingsFolder folder;
  const ColumnFields column = {.item_number = 43, .repeat_count = 59};
  const ElementFields element = {.sequence = 61, .end = {.words = {65535, 38, 39, 40, 41, 42}}};
  write_file(folder.path, header_bytes(2, 1, 1) + level_bytes(76, 76, 77, 1268, 1, 1) +
                              column_bytes(column) + element_bytes(element));
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 76, 1000, 2), 1);
  EXPECT_TRUE(file.is_held());
  EXPECT_EQ(file.quotation(), 1);
  EXPECT_EQ(file.current_level()->record.records, 1000) << "the run's own number of records counts";
  EXPECT_EQ(file.current_level()->record.repeat_flag, 1);
  ASSERT_NE(file.find_column(43), nullptr);
  EXPECT_EQ(file.find_column(43)->record.repeat_count, 59);
  ASSERT_EQ(file.find_column(43)->elements.size(), 1U);
  EXPECT_EQ(file.find_column(43)->elements[0]->record.sequence, 61);
  EXPECT_EQ(file.find_column(43)->elements[0]->record.end.year, 65535);
}

TEST(SettingsReader, AMissingFileIsANewOne) {
  for (const auto& [kind, quotation] : {std::pair{1, 0}, {2, 0}, {3, 1}}) {
    const SettingsFolder folder;
    ClFmtFile file;
    EXPECT_EQ(folder.load(file, 7, 500, kind), 0);
    EXPECT_FALSE(file.is_held());
    EXPECT_EQ(file.quotation(), quotation) << kind;
    EXPECT_EQ(file.current_level()->record.level, 7);
    EXPECT_EQ(file.current_level()->record.records, 500);
  }
}

TEST(SettingsReader, SelectsTheLevelOrAddsIt) {
  const SettingsFolder folder;
  const std::pair<std::vector<std::int32_t>, std::vector<std::int32_t>> rows[] = {
      // items of levels 1, 2, …; result of loading level 1, 2, 3, 4
      {{}, {0, 0, 0, 0}},
      {{1}, {1, 0, 0, 0}},
      {{0, 2}, {0, 2, 0, 0}},
      {{2, 0, 3}, {2, 0, 3, 0}},
  };
  for (const auto& [items_of_level, results] : rows) {
    const std::string bytes = settings_bytes(items_of_level);
    for (std::int32_t level = 1; level <= 4; ++level) {
      write_file(folder.path, bytes);
      ClFmtFile file;
      EXPECT_EQ(folder.load(file, level), results[static_cast<std::size_t>(level) - 1]);
      EXPECT_TRUE(file.is_held());
      EXPECT_EQ(file.current_level()->record.level, level);
      EXPECT_EQ(read_file(folder.path), bytes);
      EXPECT_TRUE(folder.is_tidy());
    }
  }
}

TEST(SettingsReader, RefusesOtherFilesUntouched) {
  const SettingsFolder folder;
  const std::string good = settings_bytes({1});
  std::string magic_tail = good;
  magic_tail[23] = 'x';
  const std::pair<std::string, std::int32_t> rows[] = {
      {magic_tail, -5},
      {"t" + good.substr(1), -5},
      {header_bytes(1, 0, 0, "TAMBO DATA FORMAT V4L1"), -5},
      {header_bytes(2, 0, 0), -57},
      {header_bytes(2, 0, 0, "TAMBO DATA FORMAT V2L1"), -57},
      {"", -3},
  };
  for (const auto& [bytes, code] : rows) {
    SCOPED_TRACE(bytes.substr(0, 24));
    write_file(folder.path, bytes);
    ClFmtFile file;
    EXPECT_EQ(folder.load(file), code);
    EXPECT_FALSE(file.is_held());
    EXPECT_EQ(file.current_level(), nullptr);
    EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
    EXPECT_TRUE(folder.is_tidy());
  }
  std::filesystem::remove(folder.path);
  std::filesystem::create_directory(folder.path);
  ClFmtFile file;
  EXPECT_EQ(folder.load(file), -2);
}

TEST(SettingsReader, ATruncatedFileIsRefusedAtEveryLength) {
  const SettingsFolder folder;
  // An area is read as items or, for a level that is not loaded, as raw bytes.
  for (const auto& [items_of_level, level] :
       {std::pair(std::vector{1}, 1), {std::vector{0, 1}, 1}}) {
    const std::string good = settings_bytes(items_of_level);
    for (std::size_t size = 0; size < good.size(); ++size) {
      write_file(folder.path, good.substr(0, size));
      ClFmtFile file;
      ASSERT_EQ(folder.load(file, level), -3) << "size " << size << " level " << level;
      ASSERT_FALSE(file.is_held());
    }
    ASSERT_TRUE(folder.is_tidy());
  }
}

// Two levels with one item each; the numbers that a hostile file might claim.
TEST(SettingsReader, RefusesClaimsThatTheFileDoesNotHold) {
  const SettingsFolder folder;
  const std::string good = settings_bytes({1, 1});
  constexpr std::size_t level_1 = header_size;
  constexpr std::size_t level_2 = header_size + level_size;
  constexpr std::size_t area_1 = header_size + 2 * level_size;
  const auto size = static_cast<std::int32_t>(good.size());
  const std::tuple<std::size_t, std::vector<std::int32_t>, std::int32_t> rows[] = {
      {32, {-1, least, most, 100}, -3},               // level count
      {32, {3}, -4},                                  // that makes items to levels
      {level_1 + 4, {-1, least, 1, 44, 107}, -4},     // offset of the current level
      {level_1 + 4, {size, most}, -3},                // behind the end
      {level_1 + 16, {-1, least, most, 3, 100}, -3},  // column count
      {area_1 + 4, {-1, least, most, 4}, -3},         // element count
      {level_2 + 4, {-1, least, 1, 44, 107}, -4},     // offset of a raw level
      {level_2 + 4, {size, most}, -3},                // behind the end
      {level_2 + 12, {-1, least, most, 1269}, -3},    // size of a raw level
  };
  for (const auto& [offset, values, code] : rows) {
    for (const std::int32_t value : values) {
      std::string bytes = good;
      put_i32(bytes, offset, value);
      write_file(folder.path, bytes);
      ClFmtFile file;
      EXPECT_EQ(folder.load(file), code) << offset << ' ' << value;
      EXPECT_FALSE(file.is_held()) << offset << ' ' << value;
      EXPECT_EQ(file.current_level(), nullptr) << offset << ' ' << value;
      EXPECT_TRUE(same_bytes(bytes, read_file(folder.path)));
    }
  }
}

// Nothing is read behind an offset of 0, whatever the counts beside it say.
TEST(SettingsReader, AnOffsetOfZeroEndsTheAreas) {
  const SettingsFolder folder;
  for (const std::int32_t claimed : {-57, -1, 5}) {
    std::string bytes = settings_bytes({1, 1});
    put_i32(bytes, header_size + 4, 0);
    put_i32(bytes, header_size + 16, claimed);
    write_file(folder.path, bytes);
    ClFmtFile file;
    EXPECT_EQ(folder.load(file), 0) << claimed;
    ASSERT_NE(file.current_level(), nullptr);
    EXPECT_TRUE(file.current_level()->columns.empty());
  }
}

TEST(SettingsReader, OverlappingRawAreasTakeNoMoreThanTheFile) {
  const SettingsFolder folder;
  constexpr std::int32_t levels = 20'000;
  std::string bytes = header_bytes(1, 0, levels);
  const std::size_t area = header_size + level_size * levels;
  for (std::int32_t level = 1; level <= levels; ++level) {
    bytes += level_bytes(level, area, 1, 100'000, 1);
  }
  bytes += std::string(100'000, 'x');
  write_file(folder.path, bytes);
  ClFmtFile file;
  EXPECT_EQ(folder.load(file, levels + 1), 0);
}

TEST(SettingsReader, AHeldFileRefusesASecondOpener) {
  const SettingsFolder folder;
  write_file(folder.path, settings_bytes({1}));
  ClFmtFile second;
  {
    ClFmtFile first;
    ASSERT_EQ(folder.load(first), 1);
    EXPECT_EQ(folder.load(second), -2);
    EXPECT_EQ(first.save(0), 0);
    EXPECT_FALSE(first.is_held());
    EXPECT_EQ(folder.load(second), 1);
    EXPECT_EQ(folder.load(first), -2);
    second.delete_file();
    EXPECT_FALSE(second.is_held());
    EXPECT_FALSE(platform::exists(folder.path));
    write_file(folder.path, settings_bytes({}));
    EXPECT_EQ(folder.load(first), 0);
  }
  EXPECT_EQ(folder.load(second), 0) << "the hold ends with the object";
}

}  // namespace
}  // namespace korvex
