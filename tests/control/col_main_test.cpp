#include "control/col_main.h"

#include <limits>

#include "support/control_bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex {
namespace {

using namespace test;

class ColMainTest : public testing::Test {
 protected:
  std::int32_t load(ClColMain& run, const std::string& bytes,
                    std::int32_t mode = run_mode::data_file_dialog) const {
    write_file(folder.file("control"), bytes);
    run.control_path = folder.file("control");
    run.set_run_mode(mode);
    return run.load();
  }

  TempFolder folder;
  ScopedVariable configuration{"XDG_CONFIG_HOME", folder.file("config")};
  ClColMain main;
};

TEST_F(ColMainTest, ReadsEachFieldFromItsOffset) {
  std::string bytes(1020, '\0');
  bytes.replace(0, 24,
                hex("0A 00 00 00 03 00 00 00 01 00 00 00 FF FF FF FF 02 00 00 00 01 00 00 00"));
  bytes.replace(24, 3, "/d1");
  bytes.replace(280, 3, "/s2");
  bytes.replace(536, 3, "/w3");
  bytes += control_item({-21, cp932("名前"), "text", 22, 23, 24, 25, 6, 27, 28});
  ASSERT_EQ(load(main, bytes), 0);
  const ControlHeader& header = main.header();
  EXPECT_EQ((std::vector{header.records, header.layout_kind, header.null_default, header.host_value,
                         header.level, header.item_count}),
            (std::vector{10, 3, 1, -1, 2, 1}));
  EXPECT_EQ(main.data_path() + main.settings_path() + main.work_folder(), "/d1/s2/w3");

  ASSERT_EQ(main.items.size(), 1u);
  const ClDGCol& item = *main.items[0];
  EXPECT_EQ(item.name + item.description, cp932("名前text"));
  EXPECT_EQ((std::vector{item.item_number, item.attribute, item.signed_flag, item.length,
                         item.digits, item.decimals, item.null_allowed}),
            (std::vector{-21, 22, 23, 24, 25, 6, 28}));
  EXPECT_EQ(item.state, 0);
  EXPECT_EQ(load(main, bytes.substr(0, 20) + std::string(1000, '\0')), 0) << "no items at all";
}

TEST_F(ColMainTest, TextsWithoutTerminatorEndWithTheirField) {
  const std::string endless(300, 'x');
  ControlHead header;
  header.data_path = header.settings_path = header.work_folder = endless;
  ASSERT_EQ(load(main, control_bytes(header, {{.name = endless, .description = endless}})), 0);
  EXPECT_EQ(main.data_path(), std::string(256, 'x'));
  EXPECT_EQ(main.work_folder(), std::string(256, 'x'));
  EXPECT_EQ(main.items[0]->name, std::string(64, 'x'));
  EXPECT_EQ(main.items[0]->description, std::string(28, 'x'));
}

TEST_F(ColMainTest, ATruncatedFileIsRefusedAtEveryLength) {
  const std::pair<std::int32_t, std::string> forms[] = {
      {run_mode::settings_only, control_bytes({}, {{}, {}})},
      {run_mode::generator, control_header({}, 2) + std::string(Bytes().i32(7).i32(-8))},
  };
  for (const auto& [mode, good] : forms) {
    const std::size_t item_size = mode == run_mode::generator ? 4 : control_item_size;
    for (std::size_t size = 0; size <= good.size(); ++size) {
      ClColMain truncated;
      const bool is_whole = size == good.size();
      ASSERT_EQ(load(truncated, good.substr(0, size), mode), is_whole ? 0 : -3) << mode << size;
      const std::size_t whole =
          size < control_header_size ? 0 : (size - control_header_size) / item_size;
      ASSERT_EQ(truncated.items.size(), whole) << mode << ' ' << size;
      if (is_whole && mode == run_mode::generator) {
        EXPECT_EQ(truncated.items[1]->item_number, -8);
        EXPECT_EQ(truncated.items[1]->attribute, 0);
      }
    }
  }
  main.control_path = folder.file("none");
  EXPECT_EQ(main.load(), -2);
}

TEST_F(ColMainTest, RefusesCountsThatTheFileDoesNotHold) {
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t mode : {1, 2, 3}) {
    for (const std::int32_t count : {-1, -most - 1, 2, 3000, most}) {
      ClColMain hostile;
      const std::string items = mode == 3 ? std::string(Bytes().i32(1)) : control_item({});
      EXPECT_EQ(load(hostile, control_header({}, count) + items, mode), -3) << count;
    }
  }
}

TEST_F(ColMainTest, ChecksDigitsByTheLayoutKind) {
  struct Row {
    std::int32_t digits, decimals;
    bool bad[3];  // by layout kind 1, 2, 3
    std::int32_t loaded_decimals;
  };
  const Row rows[] = {
      {5, 0, {false, false, false}, 0},   {5, 5, {false, false, false}, 5},
      {5, 6, {false, true, false}, 0},    {20, 11, {false, false, false}, 11},
      {20, 12, {true, false, false}, 12}, {5, 12, {true, true, false}, 0},
      {-1, -1, {true, true, false}, -1},  {5, -1, {true, true, false}, -1},
      {-1, 0, {true, true, false}, 0},    {0, 0, {false, false, false}, 0},
  };
  for (const Row& row : rows) {
    for (const std::int32_t kind : {1, 2, 3}) {
      SCOPED_TRACE(testing::Message() << row.digits << '.' << row.decimals << " kind " << kind);
      ClColMain checked;
      const ControlItemFields item = {
          .name = "BAD", .digits = row.digits, .decimals = row.decimals};
      ASSERT_EQ(load(checked, control_bytes({.layout_kind = kind}, {item, {.name = "GOOD"}})), 0);
      const bool bad = row.bad[kind - 1];
      EXPECT_EQ(checked.load_error(), bad ? -75 : 0);
      EXPECT_EQ(checked.offending_names(), bad ? "BAD " : "");
      EXPECT_EQ(checked.items.at(0)->decimals, row.loaded_decimals);
    }
  }
}

// The names are listed as long as the list stays below its limit.
TEST_F(ColMainTest, OffendingNamesEndBelowTheirLimit) {
  const std::pair<std::vector<std::size_t>, std::size_t> rows[] = {
      {{63, 63}, 2}, {{63, 64}, 1}, {{63, 63, 1}, 2}, {{64, 62}, 2}, {{64, 63}, 1}};
  for (const auto& [lengths, listed] : rows) {
    std::vector<ControlItemFields> items;
    std::string expected;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      const std::string name(lengths[i], static_cast<char>('A' + i));
      items.push_back({.name = name, .digits = -1});
      if (i < listed) expected += name + " ";
    }
    ClColMain checked;
    ASSERT_EQ(load(checked, control_bytes({}, items)), 0);
    EXPECT_EQ(checked.offending_names(), expected);
  }
}

TEST_F(ColMainTest, QuotedCharactersCountAsSigned) {
  for (const std::int32_t attribute : {1, 2, 3, 4, 6, 11}) {
    for (const std::int32_t flag : {0, 1}) {
      ClColMain loaded;
      ASSERT_EQ(load(loaded, control_bytes({}, {{.attribute = attribute, .signed_flag = flag}})),
                0);
      EXPECT_EQ(loaded.items[0]->signed_flag, attribute <= 3 ? 1 : flag) << attribute;
    }
  }
}

TEST_F(ColMainTest, ClassesAreMadeByName) {
  for (const char* name : {"ClColMain", "ClDGCol", "ClFmtFile", "ClFmtCom", "ClFmtLvlInf",
                           "ClFmtColInf", "ClFmtItemInf"}) {
    EXPECT_NE(platform::create_object(name), nullptr) << name;
  }
  EXPECT_EQ(platform::create_object("ClNothing"), nullptr);
}

class TemporaryControlFile : public ColMainTest {
 protected:
  // Saves ranges for the items 30, 10 and 20, so that these are the items to generate.
  void save_settings(ClColMain& run) {
    std::filesystem::create_directory(folder.file("work"));
    header.settings_path = folder.file("settings.fif");
    header.work_folder = folder.file("work");
    ASSERT_EQ(load(run, control_bytes(header, {{}})), 0);
    run.settings.set_run_mode(run_mode::data_file_dialog);
    ASSERT_EQ(run.settings.load(1, 10, 1), 0);
    for (const std::int32_t item : {30, 10, 20}) {
      run.settings.edited().texts = {"%5U", "1", "9", "1"};
      ASSERT_EQ(run.settings.check_and_store(item, {4, 0, 5, 5, 0}), 0);
    }
    ASSERT_EQ(run.settings.save(0), 0);
    std::filesystem::remove(folder.file("settings.fif"));
  }

  ControlHead header = {.records = 77, .layout_kind = 1, .host_value = 5};
};

TEST_F(TemporaryControlFile, HoldsTheHeaderAndTheSavedItems) {
  save_settings(main);
  ASSERT_EQ(main.write_temporary_control_file(), 0);
  const std::string name = main.control_path.substr(folder.file("work").size() + 1);
  EXPECT_EQ(name.substr(0, 2) + name.substr(17), "DG.TMP") << name;
  EXPECT_TRUE(same_bytes(control_header(header, 3) + std::string(Bytes().i32(30).i32(10).i32(20)),
                         read_file(main.control_path)));
  std::filesystem::remove_all(folder.file("work"));
  EXPECT_EQ(main.write_temporary_control_file(), -2);
}

}  // namespace
}  // namespace korvex
