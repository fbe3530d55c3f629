#include "host/commands/show.h"

#include <sstream>

#include "platform/file.h"
#include "support/generation_setup.h"
#include "support/settings_bytes.h"

namespace korvex::host {
namespace {

using test::Bytes;
using test::cp932;

struct Shown {
  std::string failure;
  std::string text;
};

Shown show_bytes(const std::string& bytes) {
  const test::TempFolder folder;
  test::write_file(folder.file("f"), bytes);
  std::ostringstream out;
  const std::string failure = show_file(folder.file("f"), out);
  return {failure, out.str()};
}

std::string header(std::int32_t item_count) {
  return test::control_header({50, 2, 1, 9, 4, "d.csv", "d.fif", "work"}, item_count);
}

std::string item(std::int32_t number, const std::string& name) {
  return test::control_item({number, name, "words", 32, 1, 15, 14, 3, 0, 1});
}

const std::string log_of_three = test::log_bytes(1000, 1, {100, 101, 102});

void expect_lines(const std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    EXPECT_NE(text.find(line), std::string::npos) << line << "\nis missing from\n" << text;
  }
}

TEST(Show, ControlFiles) {
  const Shown long_form = show_bytes(header(2) + item(7, cp932("名前")) + item(8, "B\x1B[2J"));
  EXPECT_EQ(long_form.failure, "");
  expect_lines(long_form.text,
               {"long form", "records       50", "2 (table)", "level         4", "d.fif",
                "item 7: 名前\n", "words", "item 8: B\\x1B[2J",
                "32 (timestamp), signed, length 15, digits 14, decimals 3, nullable"});

  const std::string numbers = Bytes().i32(7).i32(-8);
  const Shown short_form = show_bytes(header(2) + numbers);
  EXPECT_EQ(short_form.failure, "");
  expect_lines(short_form.text, {"short form", "item numbers  7 -8\n"});
}

TEST(Show, LogFile) {
  const Shown shown = show_bytes(log_of_three);
  EXPECT_EQ(shown.failure, "");
  expect_lines(shown.text, {"log file", "records       1000", "item numbers  100 101 102\n"});
}

TEST(Show, SettingsFilesOfBothVersions) {
  const test::ColumnFields column = {.item_number = 5,
                                     .length = 3,
                                     .format = cp932("第%U"),
                                     .repeat_flag = 1,
                                     .repeat_level = 2,
                                     .repeat_count = 6,
                                     .enumeration_path = "towns.txt"};
  const auto level = test::level_bytes(1, 76, 20, 1, 1, 1);
  const Shown current = show_bytes(test::header_bytes(1, 1, 1) + level +
                                   test::column_bytes(column) + test::element_bytes({}));
  EXPECT_EQ(current.failure, "");
  expect_lines(current.text,
               {"current version", "1 (record file)", "1 (double)", "with repeats",
                "item 5: type 2", "length 3", "\"第%U\"", "level 2, 6 times", "towns.txt",
                "901 (unsigned number)", "start \"1\", end \"9\"", "span 0:8"});

  const Shown previous = show_bytes(test::header_bytes(1, 0, 1, "TAMBO DATA FORMAT V2L1") + level +
                                    test::previous_column_bytes(column) + test::element_bytes({}));
  EXPECT_EQ(previous.failure, "");
  expect_lines(previous.text, {"previous version", "item 5: type 2", "start \"1\", end \"9\""});
  EXPECT_EQ(previous.text.find("towns.txt"), std::string::npos);
}

TEST(Show, BrokenSettingsFilesSayWhatIsWrong) {
  const std::string good = test::settings_bytes({2, 1});
  using Change = std::pair<std::size_t, std::int32_t>;
  const auto with = [&](const std::vector<Change>& changes) {
    std::string bytes = good;
    for (const auto& [offset, value] : changes) test::put_i32(bytes, offset, value);
    return bytes;
  };
  constexpr std::size_t level = test::header_size;
  constexpr std::size_t second = level + test::level_size;
  constexpr std::size_t item = test::header_size + 2 * test::level_size;
  const std::vector<std::pair<std::string, std::string>> cases = {
      {good.substr(0, 30), "ends inside its header"},
      {with({{32, 2'000'000'000}}), "ends inside its level table"},
      {with({{32, -1}}), "ends inside its level table"},
      {with({{level + 4, -5}}), "in front of the file"},
      {with({{level + 4, 2'000'000'000}}), "ends inside an item's settings"},
      {with({{level + 16, 2'000'000'000}}), "ends inside"},
      {with({{level + 16, -1}}), "negative"},
      {with({{item + 4, 2'000'000'000}}), "ends inside the elements of item 101"},
      {with({{item + 4, -1}}), "ends inside the elements of item 101"},
      {with({{second + 4, item}}), ""},  // level 2 shows an item of level 1
      {with({{second + 4, item}, {second + 16, 2}}), "overlap"},
      {good.substr(0, good.size() - 1), "ends inside the elements of item 201"},
  };
  for (const auto& [bytes, failure] : cases) {
    const Shown shown = show_bytes(bytes);
    EXPECT_NE(shown.failure.find(failure), std::string::npos) << failure << ": " << shown.failure;
    EXPECT_EQ(shown.failure.empty(), failure.empty()) << shown.failure;
  }
}

TEST(Show, RefusesOtherFiles) {
  const std::vector<std::string> others = {
      "",
      "a,b,c\n",
      header(1),
      header(-1),
      header(2'000'000'000) + item(1, "A"),
      header(1) + item(1, "A") + "x",
      log_of_three + "x",
      log_of_three.substr(0, 20),
      std::string(test::header_bytes(1, 0, 0, "TAMBO DATA FORMAT V9L9")),
  };
  for (const std::string& bytes : others) {
    const Shown shown = show_bytes(bytes);
    EXPECT_EQ(shown.text, "");
    EXPECT_NE(shown.failure.find("no control file"), std::string::npos) << shown.failure;
  }
}

TEST(Show, SaysWhyAFileCannotBeOpened) {
  const test::TempFolder folder;
  std::ostringstream out;
  EXPECT_NE(show_file(folder.file("missing"), out).find("no such file"), std::string::npos);
  EXPECT_NE(show_file("/dev/null", out).find("not a regular file"), std::string::npos);
  test::write_file(folder.file("held"), log_of_three);
  platform::File holder;
  ASSERT_EQ(holder.open_for_reading(folder.file("held"), platform::Sharing::exclusive),
            platform::FileCause::none);
  EXPECT_NE(show_file(folder.file("held"), out).find("holds the file"), std::string::npos);
}

}  // namespace
}  // namespace korvex::host
