#include "settings/settings_reader.h"

#include <limits>

#include "settings/settings_folder.h"
#include "settings/settings_writer.h"

namespace korvex {
namespace {

using namespace test;

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

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

constexpr std::size_t old_item_size = test::previous_column_size + 2 * element_size;
constexpr std::size_t new_item_size = column_size + 2 * element_size;

std::string one_level(std::string_view magic, const std::string& area) {
  // Repeat flag and reserved bytes have no meaning in the previous version.
  std::string level = level_bytes(3, 76, 50, 2 * old_item_size, 2);
  if (magic == previous_magic) level.replace(20, 12, "\x01 reserved!!");
  return header_bytes(1, 1, 1, magic) + level + area;
}

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
  EXPECT_EQ(file.current_level()->record.records, StoredRecords{1000})
      << "the run's own number of records counts";
  EXPECT_EQ(file.current_level()->record.repeat_flag, 1);
  ASSERT_NE(file.find_column(ItemNumber{43}), nullptr);
  EXPECT_EQ(file.find_column(ItemNumber{43})->record.repeat_count, 59);
  ASSERT_EQ(file.find_column(ItemNumber{43})->elements.size(), 1U);
  EXPECT_EQ(file.find_column(ItemNumber{43})->elements[0]->record.sequence, ElementNumber{61});
  EXPECT_EQ(file.find_column(ItemNumber{43})->elements[0]->record.end.year, 65535);
}

TEST(SettingsReader, SelectsTheLevelOrAddsIt) {
  for (const auto& [kind, quotation] : {std::pair{1, 0}, {2, 0}, {3, 1}}) {
    const SettingsFolder folder;  // without a file
    ClFmtFile file;
    EXPECT_EQ(folder.load(file, 7, 500, kind), 0);
    EXPECT_FALSE(file.is_held());
    EXPECT_EQ(file.quotation(), quotation) << kind;
    EXPECT_EQ(file.current_level()->record.level, 7);
    EXPECT_EQ(file.current_level()->record.records, StoredRecords{500});
  }
  const SettingsFolder folder;
  const std::pair<std::vector<std::int32_t>, std::vector<std::int32_t>> rows[] = {
      // items of levels 1, 2, …; result of loading level 1, 2, 3, 4
      {{}, {0, 0, 0, 0}},
      {{1}, {1, 0, 0, 0}},
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

// Loads what is none, or claims more than it holds: nothing is held or current, the file stays.
void expect_refused(const SettingsFolder& folder, const std::string& bytes, std::int32_t code,
                    std::int32_t level = 1) {
  write_file(folder.path, bytes);
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, level).code(), code)
      << bytes.size() << " bytes, " << bytes.substr(0, 24);
  ASSERT_FALSE(file.is_held());
  ASSERT_EQ(file.current_level(), nullptr);
  ASSERT_TRUE(same_bytes(bytes, read_file(folder.path)));
  ASSERT_TRUE(folder.is_tidy());
}

TEST(SettingsReader, RefusesOtherFilesUntouched) {
  const SettingsFolder folder;
  const std::string good = settings_bytes({1});
  std::string magic_tail = good;
  magic_tail[23] = 'x';
  for (const auto& [bytes, code] : {std::pair<std::string, std::int32_t>{magic_tail, -5},
                                    {"t" + good.substr(1), -5},
                                    {header_bytes(1, 0, 0, "TAMBO DATA FORMAT V4L1"), -5},
                                    {header_bytes(2, 0, 0), -57},
                                    {header_bytes(2, 0, 0, previous_magic), -57}}) {
    expect_refused(folder, bytes, code);
  }
  std::filesystem::remove(folder.path);
  std::filesystem::create_directory(folder.path);
  ClFmtFile file;
  EXPECT_EQ(folder.load(file).code(), -2);
}

TEST(SettingsReader, ATruncatedFileIsRefusedAtEveryLength) {
  const SettingsFolder folder;
  // An area is read as items or, for a level that is not loaded, as raw bytes.
  for (const std::string& good : {settings_bytes({1}), settings_bytes({0, 1}),
                                  one_level(previous_magic, old_item(1) + old_item(2))}) {
    for (std::size_t size = 0; size < good.size(); ++size) {
      expect_refused(folder, good.substr(0, size), -3);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

// Two levels with one item each, and one of the previous version with two; the numbers that a
// hostile file might claim.
TEST(SettingsReader, RefusesClaimsThatTheFileDoesNotHold) {
  const SettingsFolder folder;
  const std::string good = settings_bytes({1, 1});
  const std::string old = one_level(previous_magic, old_item(1) + old_item(2));
  constexpr std::size_t level_1 = header_size;
  constexpr std::size_t level_2 = header_size + level_size;
  constexpr std::size_t area_1 = header_size + 2 * level_size;
  const auto size = static_cast<std::int32_t>(good.size());
  const std::tuple<std::string, std::size_t, std::vector<std::int32_t>, std::int32_t> rows[] = {
      {good, 32, {-1, least, most, 100}, -3},               // level count
      {good, 32, {3}, -4},                                  // that makes items to levels
      {good, level_1 + 4, {-1, least, 1, 44, 107}, -4},     // offset of the current level
      {good, level_1 + 4, {size, most}, -3},                // after the end
      {good, level_1 + 16, {-1, least, most, 3, 100}, -3},  // column count
      {good, area_1 + 4, {-1, least, most, 4}, -3},         // element count
      {good, level_2 + 4, {-1, least, 1, 44, 107}, -4},     // offset of a raw level
      {good, level_2 + 4, {size, most}, -3},                // after the end
      {good, level_2 + 12, {-1, least, most, 1269}, -3},    // size of a raw level
      {old, 32, {-1, least, most, 1000}, -3},
      {old, 44 + 16, {-1, least, most, 1000}, -3},
      {old, 76 + 4, {-1, least, most, 1000}, -3},
  };
  for (const auto& [bytes, offset, values, code] : rows) {
    for (const std::int32_t value : values) {
      SCOPED_TRACE(testing::Message() << offset << ' ' << value);
      std::string claimed = bytes;
      put_i32(claimed, offset, value);
      expect_refused(folder, claimed, code);
    }
  }
}

// Nothing is read after an offset of 0, whatever the counts beside it say.
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

TEST(SettingsReader, AHeldFileRefusesASecondOpener) {
  const SettingsFolder folder;
  write_file(folder.path, settings_bytes({1}));
  ClFmtFile second;
  {
    ClFmtFile first;
    ASSERT_EQ(folder.load(first), 1);
    EXPECT_EQ(folder.load(second).code(), -2);
    EXPECT_EQ(upgrade_settings_file(folder.path, layout_kind::record_file), -2);
    EXPECT_EQ(first.save(quotation::none), 0);
    EXPECT_FALSE(first.is_held());
    EXPECT_EQ(folder.load(second), 1);
    EXPECT_EQ(folder.load(first).code(), -2);
    second.delete_file();
    EXPECT_FALSE(second.is_held());
    EXPECT_FALSE(platform::exists(folder.path));
    write_file(folder.path, settings_bytes({}));
    EXPECT_EQ(folder.load(first), 0);
  }
  EXPECT_EQ(folder.load(second), 0) << "the hold ends with the object";
}

TEST(SettingsUpgrade, OneLevelKeepsItsPlace) {
  const SettingsFolder folder;
  std::string old = one_level(previous_magic, old_item(1) + old_item(2));
  put_i32(old, 36, 99);
  put_i32(old, 40, 99);
  write_file(folder.path, old);
  ASSERT_EQ(::chmod(folder.path.c_str(), 0640), 0);
  EXPECT_EQ(upgrade_settings_file(folder.path, layout_kind::record_file), 0);
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
  EXPECT_EQ(upgrade_settings_file(folder.path, layout_kind::table), 0);
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
  EXPECT_EQ(upgrade_settings_file(folder.path, layout_kind::record_file), 0);
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
      ASSERT_EQ(file.save(quotation::none), 0);
    }
    EXPECT_NE(read_file(folder.path).find(new_item(1) + new_item(2)), std::string::npos) << loaded;
  }
}

}  // namespace
}  // namespace korvex
