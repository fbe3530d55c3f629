#include "format/settings_reader.h"

#include <gtest/gtest.h>

#include <limits>

#include "format/record_text.h"
#include "format/settings_folder.h"

namespace korvex {
namespace {

using namespace test;

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

TEST(SettingsReader, ReadsEachFieldFromItsOffset) {
  const SettingsFolder folder;
  const ValueFields increment = {1, 2, 3, "4", 5, "6", {}};
  const ValueFields current = {7, 8, 9, "10", 11, "12", {13, 14, 15, 16, 17, 18}};
  const ValueFields start = {19, 20, 21, "22", 23, "24", {25, 26, 27, 28, 29, 30}};
  const ValueFields end = {31, 32, 33, "34", 35, "36", {65535, 38, 39, 40, 41, 42}};
  const ColumnFields column = {43,   1,  45, 46, 47, 48, 49, 50, increment,   "51",
                               "52", 53, 54, 55, 56, 57, 58, 59, "/sixty.txt"};
  const ElementFields element = {61,  62,   63,   64,   65,  66, current, start,
                                 end, "70", "71", "72", -73, 74, 75};
  write_file(folder.path, header_bytes(2, 1, 1) + level_bytes(76, 76, 77, 1268, 1, 1) +
                              column_bytes(column) + element_bytes(element));
  ClFmtFile file;
  ASSERT_EQ(folder.load(file, 76, 1000, 2), 1);
  EXPECT_TRUE(file.is_held());
  EXPECT_EQ(file.quotation(), 1);
  EXPECT_EQ(file.current_level()->record.records, 1000) << "the run's own number of records counts";
  EXPECT_EQ(file.current_level()->record.repeat_flag, 1);

  const ClFmtColInf* found = file.find_column(43);
  ASSERT_NE(found, nullptr);
  const FmtColRec& c = found->record;
  EXPECT_EQ(
      (std::vector{c.element_count, c.lead_element, c.attribute, c.signed_flag, c.length, c.digits,
                   c.decimals, c.increment.sign, c.increment.position, c.increment.low,
                   c.increment.high, c.exceeded_action, c.generation_type, c.referenced_item,
                   c.custom_format, c.repeat_flag, c.repeat_level, c.repeat_count}),
      (std::vector{1, 45, 46, 47, 48, 49, 50, 1, 2, 3, 5, 53, 54, 55, 56, 57, 58, 59}));
  EXPECT_EQ(field_text(c.increment.low_text), "4");
  EXPECT_EQ(field_text(c.increment.high_text), "6");
  EXPECT_EQ(field_text(c.increment_text), "51");
  EXPECT_EQ(field_text(c.format), "52");
  EXPECT_EQ(field_text(c.enumeration_path), "/sixty.txt");

  EXPECT_EQ(file.find_element(43, 1), nullptr);
  const ClFmtItemInf* read = file.find_element(43, 61);
  ASSERT_NE(read, nullptr);
  const FmtItemRec& e = read->record;
  EXPECT_EQ((std::vector{e.kind, e.sign, e.width, e.digits, e.decimals, e.current.low, e.start.low,
                         e.start.high, e.span_low, e.span_high, e.group_start}),
            (std::vector{62, 63, 64, 65, 66, 9, 21, 23, -73, 74, 75}));
  EXPECT_EQ(e.end.year, 65535);
  EXPECT_EQ(e.end.second, 42);
  EXPECT_EQ(field_text(e.text), "70");
  EXPECT_EQ(field_text(e.start_text), "71");
  EXPECT_EQ(field_text(e.end_text), "72");
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
    EXPECT_TRUE(folder.home.names().empty());
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
  std::string lower_case = good;
  lower_case[0] = 't';
  const std::tuple<const char*, std::string, std::int32_t> rows[] = {
      {"magic goes on behind its text", magic_tail, -5},
      {"magic in lower case", lower_case, -5},
      {"next version", header_bytes(1, 0, 0, "TAMBO DATA FORMAT V4L1"), -5},
      {"other layout kind", header_bytes(2, 0, 0), -57},
      {"previous version of other layout kind", header_bytes(2, 0, 0, "TAMBO DATA FORMAT V2L1"),
       -57},
      {"empty file", "", -3},
  };
  for (const auto& [defect, bytes, code] : rows) {
    write_file(folder.path, bytes);
    ClFmtFile file;
    EXPECT_EQ(folder.load(file), code) << defect;
    EXPECT_FALSE(file.is_held()) << defect;
    EXPECT_EQ(file.current_level(), nullptr) << defect;
    EXPECT_TRUE(same_bytes(bytes, read_file(folder.path))) << defect;
    EXPECT_TRUE(folder.is_tidy()) << defect;
  }
}

TEST(SettingsReader, AFolderInPlaceOfTheFileCannotBeOpened) {
  const SettingsFolder folder;
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
  const std::tuple<const char*, std::size_t, std::vector<std::int32_t>, std::int32_t> rows[] = {
      {"level count", 32, {-1, least, most, 100}, -3},
      {"level count that makes items to levels", 32, {3}, -4},
      {"offset of the current level", level_1 + 4, {-1, least, 1, 44, 107}, -4},
      {"offset of the current level behind the end", level_1 + 4, {size, most}, -3},
      {"column count", level_1 + 16, {-1, least, most, 3, 100}, -3},
      {"element count", area_1 + 4, {-1, least, most, 4}, -3},
      {"offset of a raw level", level_2 + 4, {-1, least, 1, 44, 107}, -4},
      {"offset of a raw level behind the end", level_2 + 4, {size, most}, -3},
      {"size of a raw level", level_2 + 12, {-1, least, most, 1269}, -3},
  };
  for (const auto& [claim, offset, values, code] : rows) {
    for (const std::int32_t value : values) {
      std::string bytes = good;
      put_i32(bytes, offset, value);
      write_file(folder.path, bytes);
      ClFmtFile file;
      EXPECT_EQ(folder.load(file), code) << claim << ' ' << value;
      EXPECT_FALSE(file.is_held()) << claim << ' ' << value;
      EXPECT_EQ(file.current_level(), nullptr) << claim << ' ' << value;
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

TEST(SettingsReader, TextsWithoutTerminatorEndWithTheirField) {
  const SettingsFolder folder;
  const std::string endless(300, 'x');
  const ColumnFields column = {
      .increment_text = endless, .format = endless, .enumeration_path = endless};
  const ElementFields element = {.width = 500, .start_text = endless, .end_text = endless};
  write_file(folder.path, header_bytes(1, 0, 1) + level_bytes(1, 76, 1, 1268, 1) +
                              column_bytes(column) + element_bytes(element));
  ClFmtFile file;
  ASSERT_EQ(folder.load(file), 1);
  ASSERT_EQ(file.read_item(1), 1);
  EXPECT_EQ(file.edited().texts.format, std::string(256, 'x'));
  EXPECT_EQ(file.edited().texts.increment, std::string(24, 'x'));
  EXPECT_EQ(file.edited().texts.start, std::string(132, 'x'));
  EXPECT_EQ(file.find_element(1, 1)->first_text(), std::string(132, 'x'));
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
    EXPECT_EQ(folder.load(second), -2);
  }
  EXPECT_EQ(folder.load(second), 0) << "the hold ends with the object";
}

}  // namespace
}  // namespace korvex
