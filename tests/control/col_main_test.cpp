#include "control/col_main.h"

#include <limits>

#include "support/control_bytes.h"
#include "support/environment.h"
#include "support/table.h"
#include "support/temp_folder.h"

namespace korvex {
namespace {

using namespace test;

class ColMainTest : public testing::Test {
 protected:
  ErrorCode load(ClColMain& run, const std::string& bytes,
                 RunMode mode = run_mode::data_file_dialog) const {
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
  EXPECT_EQ(as_numbers(main.records(), main.layout_kind(), main.is_null_default(), main.level()),
            as_numbers(10, 3, 1, 2));
  EXPECT_EQ(main.data_path() + main.settings_path() + main.work_folder(), "/d1/s2/w3");

  ASSERT_EQ(main.items.size(), 1u);
  const ClDGCol& item = *main.items[0];
  EXPECT_EQ(item.name + item.description, cp932("名前text"));
  EXPECT_EQ(as_numbers(item.item_number, item.attribute, item.signed_flag, item.length, item.digits,
                       item.decimals, item.null_allowed),
            as_numbers(-21, 22, 23, 24, 25, 6, 28));
  EXPECT_FALSE(item.is_left_out);
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
  const std::pair<RunMode, std::string> forms[] = {
      {run_mode::settings_only, control_bytes({}, {{}, {}})},
      {run_mode::generator, control_header({}, 2) + std::string(Bytes().i32(7).i32(-8))},
  };
  for (const auto& [mode, good] : forms) {
    const std::size_t item_size = mode == run_mode::generator ? 4 : control_item_size;
    for (std::size_t size = 0; size <= good.size(); ++size) {
      ClColMain truncated;
      const bool is_whole = size == good.size();
      ASSERT_EQ(load(truncated, good.substr(0, size), mode), is_whole ? 0 : -3)
          << number_of(mode) << size;
      const std::size_t whole =
          size < control_header_size ? 0 : (size - control_header_size) / item_size;
      ASSERT_EQ(truncated.items.size(), whole) << number_of(mode) << ' ' << size;
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
  for (const RunMode mode :
       {run_mode::data_file_dialog, run_mode::settings_only, run_mode::generator}) {
    for (const std::int32_t count : {-1, -most - 1, 2, 3000, most}) {
      ClColMain hostile;
      const std::string items =
          mode == run_mode::generator ? std::string(Bytes().i32(1)) : control_item({});
      EXPECT_EQ(load(hostile, control_header({}, count) + items, mode), -3) << count;
    }
  }
}

TEST_F(ColMainTest, ChecksDigitsByTheLayoutKind) {
  // Digits and decimals, for each layout kind whether they are bad, and the decimals as loaded.
  for (const auto& [digits, bad, loaded_decimals] : table<3>(R"(
      5 0   | 0 0 0 | 0
      5 5   | 0 0 0 | 5
      5 6   | 0 1 0 | 0
      20 11 | 0 0 0 | 11
      20 12 | 1 0 0 | 12
      5 12  | 1 1 0 | 0
      -1 -1 | 1 1 0 | -1
      5 -1  | 1 1 0 | -1
      -1 0  | 1 1 0 | 0
      0 0   | 0 0 0 | 0
  )")) {
    for (const std::int32_t kind : {1, 2, 3}) {
      SCOPED_TRACE(digits + " kind " + std::to_string(kind));
      ClColMain checked;
      const ControlItemFields item = {
          .name = "BAD", .digits = numbers(digits)[0], .decimals = numbers(digits)[1]};
      ASSERT_EQ(load(checked, control_bytes({.layout_kind = kind}, {item, {.name = "GOOD"}})), 0);
      const bool is_bad = numbers(bad)[static_cast<std::size_t>(kind - 1)] != 0;
      EXPECT_EQ(checked.load_error(), is_bad ? -75 : 0);
      EXPECT_EQ(checked.offending_names(), is_bad ? "BAD " : "");
      EXPECT_EQ(checked.items.at(0)->decimals, std::stoi(loaded_decimals));
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

TEST_F(ColMainTest, ClassesAreMadeByName) {
  for (const char* name : {"ClColMain", "ClDGCol", "ClFmtFile", "ClFmtCom", "ClFmtLvlInf",
                           "ClFmtColInf", "ClFmtItemInf"}) {
    EXPECT_NE(platform::create_object(name), nullptr) << name;
  }
  EXPECT_EQ(platform::create_object("ClNothing"), nullptr);
}

// The header, and the items in the order in which they were saved.
TEST_F(ColMainTest, WritesATemporaryControlFile) {
  const std::string work = folder.file("work");
  std::filesystem::create_directory(work);
  const ControlHead header = {.records = 77,
                              .host_value = 5,
                              .settings_path = folder.file("settings.fif"),
                              .work_folder = work};
  ASSERT_EQ(load(main, control_bytes(header, {{}})), 0);
  main.settings.set_run_mode(run_mode::data_file_dialog);
  ASSERT_EQ(main.settings.load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file), 0);
  for (const std::int32_t item : {30, 10, 20}) {
    main.settings.edited().texts = {"%5U", "1", "9", "1"};
    ASSERT_EQ(
        main.settings.check_and_store(ItemNumber{item}, {attribute::decimal, Flag::off, 5, 5, 0}),
        0);
  }
  ASSERT_EQ(main.settings.save(quotation::none), 0);
  ASSERT_EQ(main.write_temporary_control_file(), 0);
  const std::string name = main.control_path.substr(work.size() + 1);
  EXPECT_EQ(name.substr(0, 2) + name.substr(17), "DG.TMP") << name;
  EXPECT_TRUE(same_bytes(control_header(header, 3) + std::string(Bytes().i32(30).i32(10).i32(20)),
                         read_file(main.control_path)));
  std::filesystem::remove_all(work);
  EXPECT_EQ(main.write_temporary_control_file(), -2);
}

}  // namespace
}  // namespace korvex
