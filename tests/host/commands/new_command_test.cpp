#include "host/commands/new_command.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/commands/preview_command.h"
#include "host/exit_status.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

class NewCommand : public testing::Test {
 protected:
  int run(const NewOptions& options, const char* answers = nullptr) {
    std::istringstream in(answers == nullptr ? "" : answers);
    out.str("");
    messages.str("");
    return run_new(options, answers == nullptr ? nullptr : &in, out, messages);
  }

  std::string preview() {
    std::ostringstream table;
    EXPECT_EQ(run_preview({layout(), 1}, table, messages), exit_status::done) << messages.str();
    return table.str().substr(table.str().find('\n') + 1);
  }

  std::string layout() const { return folder.file("l.toml"); }

  test::TempFolder folder;
  test::ScopedVariable config_{"XDG_CONFIG_HOME", folder.file("config")};
  std::ostringstream out;
  std::ostringstream messages;
};

// Every attribute with a name, at both ends of what may be asked for, gives records at once.
TEST_F(NewCommand, EveryItemIsReadyToGenerate) {
  for (const char* kind : {"record", "table", "iso"}) {
    std::filesystem::remove(layout());
    NewOptions options = {layout(), kind, "d.csv", 5, {}};
    for (const char* item :
         {"A:character:1", "B:character:32767", "C:plain-character:3", "D:national:70",
          "E:decimal:18", "F:decimal:18+:18", "G:decimal:7+:2", "H:number:1", "I:number:10:10",
          "J:integer", "K:small-integer", "L:date", "M:time", "N:timestamp", "名前\"\\:date"}) {
      options.items.push_back(item);
    }
    ASSERT_EQ(run(options), exit_status::done) << messages.str();
    EXPECT_EQ(run_preview({layout(), 5}, out, messages), exit_status::done) << messages.str();
  }
}

TEST_F(NewCommand, AsksForWhatIsLeftOpen) {
  const NewOptions options = {layout(), "table", {}, {}, {}};
  ASSERT_EQ(run(options, "\nmany\n12\n\nID\nint\ninteger\nNAME\n\n4\nSUM\ndecimal\n5+\n9\n2\n\n"),
            exit_status::done)
      << messages.str();
  EXPECT_EQ(preview(), "+0000000001  AAAA  +000.01\n");
  const std::string asked = messages.str();
  EXPECT_NE(asked.find("Records [1000]: expected a number from 0 to 2147483647\n"),
            std::string::npos)
      << asked;
  EXPECT_NE(asked.find("Decimals among them [0]: expected decimals from 0 to 5"),
            std::string::npos);
  EXPECT_NE(test::read_file(layout()).find("records     = 12\n"), std::string::npos);
}

TEST_F(NewCommand, RefusesWithoutWriting) {
  const std::vector<NewOptions> wrong = {
      {layout(), "file", {}, {}, {"A:date"}},   {layout(), {}, {}, {}, {"A"}},
      {layout(), {}, {}, {}, {"A:decimal"}},    {layout(), {}, {}, {}, {"A:decimal:19"}},
      {layout(), {}, {}, {}, {"A:date:8"}},     {layout(), {}, {}, {}, {"A:decimal:3:4"}},
      {layout(), {}, {}, {}, {":date"}},        {layout(), {}, {}, {}, {}},
      {layout(), {}, "l.toml", {}, {"A:date"}},
  };
  for (const NewOptions& options : wrong) {
    EXPECT_EQ(run(options), exit_status::wrong_usage);
    EXPECT_NE(messages.str().find("expected"), std::string::npos) << messages.str();
    EXPECT_FALSE(std::filesystem::exists(layout()));
  }
  // Somebody who goes away in the middle.
  EXPECT_EQ(run({layout(), {}, {}, {}, {}}, "table\n\n5\nID\n"), exit_status::wrong_usage);
  EXPECT_FALSE(std::filesystem::exists(layout()));

  test::write_file(layout(), "mine");
  EXPECT_EQ(run({layout(), {}, {}, {}, {"A:date"}}), exit_status::wrong_usage);
  EXPECT_EQ(test::read_file(layout()), "mine");
}

}  // namespace
}  // namespace korvex::host
