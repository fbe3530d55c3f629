#include "host/program.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "host/layout_texts.h"
#include "support/control_bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using test::read_file;

// What the module was asked, and what it answers.
struct ModuleCall {
  int calls = 0;
  std::string function;  // of those with a window
  std::string control_path, control_bytes;
  std::int32_t output_option = -1;
  std::uint64_t repeat_item_count = 0;
  std::string interface;
  std::string data_path, data;
  std::int32_t answer = 0;
};
ModuleCall module_call;

std::int32_t record_check(const char* path) {
  ++module_call.calls;
  module_call.control_path = path;
  module_call.control_bytes = read_file(path);
  return module_call.answer;
}

std::int32_t record_call(const char* path, std::int32_t output_option, void* parent,
                         std::uint64_t repeat_item_count) {
  module_call.output_option = output_option;
  const char* interface = std::getenv("KORVEX_UI");
  module_call.interface = interface == nullptr ? "" : interface;
  if (!module_call.data_path.empty()) test::write_file(module_call.data_path, module_call.data);
  EXPECT_EQ(parent, nullptr);
  module_call.repeat_item_count = repeat_item_count;
  return record_check(path);
}

std::int32_t record_dialog(const char* function, const char* path) {
  module_call.function = function;
  if (!module_call.data_path.empty()) test::write_file(module_call.data_path, module_call.data);
  return record_check(path);
}

std::int32_t record_file(const char* path, void*, std::int32_t) {
  return record_dialog("file", path);
}

std::int32_t record_format(const char* path, void*, std::int32_t) {
  return record_dialog("format", path);
}

std::int32_t record_update(const char* path, void*) { return record_dialog("update", path); }

class Program : public testing::Test {
 protected:
  Program() : interface_("KORVEX_UI", std::nullopt) {
    module_call = {};
    module_call.data_path = folder.file("out/l.csv");
    module_call.data = "1,\n2,\n";
    write_layout("%3U");
  }

  void write_layout(const std::string& format, const std::string& rest = "") {
    test::write_file(layout(), R"([layout]
kind = "table"
records = 12
level = 4
null_default = true
data = "out/l.csv"
work = "w"
[[item]]
number = 20
name = "名前"
attribute = "decimal"
digits = 5
[item.values]
type = "range"
format = ")" + format + R"("
start = 1
end = 9
)" + rest + R"([[item]]
number = 10
name = "B"
attribute = "date"
)");
  }

  std::string layout() const { return folder.file("l.toml"); }

  int run(std::vector<std::string> arguments) {
    std::vector<const char*> words = {"korvex"};
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    out.str("");
    messages.str("");
    return run_program(static_cast<int>(words.size()), words.data(),
                       {.create_data = record_call,
                        .check_repeat_count = record_check,
                        .create_file = record_file,
                        .create_format = record_format,
                        .replace_data = record_update},
                       out, messages);
  }

  test::TempFolder folder;
  test::ScopedVariable interface_;
  std::ostringstream out;
  std::ostringstream messages;
};

TEST_F(Program, GenerateHandsOverAShortControlFileAndRemovesIt) {
  EXPECT_EQ(run({"generate", layout()}), 0);
  std::string expected = test::control_header({.records = 12,
                                               .layout_kind = 2,
                                               .null_default = 1,
                                               .level = 4,
                                               .data_path = folder.file("out/l.csv"),
                                               .settings_path = folder.file("out/l.fif"),
                                               .work_folder = folder.file("w")},
                                              2);
  std::fill(expected.end() - 228, expected.end(), '\0');
  expected += test::Bytes().i32(20).i32(10);
  EXPECT_TRUE(test::same_bytes(expected, module_call.control_bytes));
  EXPECT_TRUE(module_call.control_path.starts_with(folder.file("w/DG")))
      << module_call.control_path;
  EXPECT_EQ(module_call.output_option, 0);
  EXPECT_EQ(module_call.interface, "console");
  EXPECT_TRUE(fs::is_empty(folder.file("w")));
  const std::string line = out.str();
  EXPECT_TRUE(line.starts_with("12 records, 6 bytes, 0.0")) << line;
  EXPECT_TRUE(line.ends_with(" s: " + folder.file("out/l.csv") + "\n")) << line;
  EXPECT_EQ(messages.str(), layout() +
                                ":18: item B: has no values and no settings, the records "
                                "leave it out\n");
}

TEST_F(Program, GenerateOptions) {
  EXPECT_EQ(run({"generate", layout(), "--records", "3", "--output-option", "2", "--window"}), 0);
  EXPECT_EQ(module_call.control_bytes.substr(0, 4), test::hex("03 00 00 00"));
  EXPECT_EQ(module_call.output_option, 2);
  EXPECT_EQ(module_call.interface, "desktop");
  // With the limit on, the lines that are there count.
  EXPECT_TRUE(out.str().starts_with("2 records, 6 bytes, ")) << out.str();

  EXPECT_EQ(run({"generate", "--quiet", layout()}), 0);
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(module_call.calls, 2);

  EXPECT_EQ(run({"generate", "--settings-only", layout()}), 0);
  EXPECT_EQ(module_call.calls, 2);
  EXPECT_EQ(out.str(), "1 item with settings: " + folder.file("out/l.fif") + "\n");
}

TEST_F(Program, GenerateTurnsCodesIntoAnExitStatus) {
  for (const auto& [answer, status] : {std::pair{-2, 1}, {-79, 130}, {1, 0}}) {
    module_call.answer = answer;
    EXPECT_EQ(run({"generate", layout()}), status) << answer;
    EXPECT_EQ(out.str().empty(), answer < 0);
    EXPECT_TRUE(fs::is_empty(folder.file("w")));
  }
}

// The module's question whether fewer records are enough needs to know how many there would be.
TEST_F(Program, GenerateTellsTheModuleWhatRepeatsGive) {
  write_layout("%3U", "repeat = { level = 1, count = 5 }\n");
  EXPECT_EQ(run({"generate", layout(), "--output-option", "2"}), 0);
  EXPECT_EQ(module_call.repeat_item_count, 45u);
  EXPECT_EQ(run({"generate", layout()}), 0);
  EXPECT_EQ(module_call.repeat_item_count, 0u);
}

TEST_F(Program, CountPrintsTheVerdictOfTheModule) {
  // The date column without settings counts as NULL: a width, but no values.
  const std::string prediction =
      "Data items:          9\nPredicted size:      117 bytes (data items x item lengths)\n";
  EXPECT_EQ(run({"count", layout(), "--records", "3"}), 0);
  EXPECT_EQ(out.str(), prediction +
                           "DGCheckRepeatCnt:    0 (the settings can be evaluated)\n"
                           "Records to generate: 3\nExact file size:     15 bytes\n");
  EXPECT_EQ(module_call.control_bytes.size(), 1020u + 2 * 136);  // items and not just numbers

  module_call.answer = -1;
  EXPECT_EQ(run({"count", layout()}), 1);
  EXPECT_EQ(out.str(), "DGCheckRepeatCnt:    -1 (the settings cannot be evaluated)\n");
  EXPECT_EQ(module_call.calls, 2);
  EXPECT_EQ(messages.str(), "");
}

TEST_F(Program, EditingCommandsHandOverTheLayoutWithItsSettings) {
  struct Case {
    std::vector<std::string> arguments;
    const char* function;
    std::int32_t first_field;
  };
  const Case cases[] = {
      {{"edit", layout()}, "file", 12},
      {{"edit", layout(), "--records", "7"}, "file", 7},
      {{"format", layout()}, "format", 12},
      {{"update", layout()}, "update", 1},
      {{"update", layout(), "--item", "B"}, "update", 2},
      {{"update", layout(), "--item", "名前"}, "update", 1},
  };
  for (const Case& c : cases) {
    for (const auto& [answer, status] : {std::pair{1, 0}, {2, 130}, {-1, 1}}) {
      module_call = {};
      module_call.answer = answer;
      EXPECT_EQ(run(c.arguments), status);
      EXPECT_EQ(module_call.function, c.function);
      EXPECT_EQ(module_call.control_bytes.size(), 1020u + 2 * 136);
      EXPECT_EQ(module_call.control_bytes.substr(0, 4),
                std::string(test::Bytes().i32(c.first_field)));
      EXPECT_EQ(out.str(), answer == 1 ? "settings: " + folder.file("out/l.fif") + "\n" : "");
      EXPECT_TRUE(fs::is_empty(folder.file("w")));
      EXPECT_FALSE(read_file(folder.file("out/l.fif")).empty());
    }
  }
  // OK has generated.
  module_call = {};
  module_call.data_path = folder.file("out/l.csv");
  module_call.data = "1,\n";
  module_call.answer = 1;
  EXPECT_EQ(run({"edit", layout()}), 0);
  EXPECT_NE(out.str().find("l.fif\n12 records, 3 bytes, "), std::string::npos) << out.str();
  EXPECT_TRUE(out.str().ends_with(" s: " + module_call.data_path + "\n")) << out.str();
  module_call = {};
  EXPECT_EQ(run({"update", layout(), "--item", "C"}), 2);
  write_layout("%9U");
  fs::remove(folder.file("out/l.fif"));
  EXPECT_EQ(run({"edit", layout()}), 1);
  EXPECT_EQ(module_call.calls, 0);
}

// Every file below a folder with its content.
std::map<std::string, std::string> files_below(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files[entry.path().string()] = read_file(entry.path().string());
  }
  return files;
}

// The failures of a count, and that it leaves the folder as it is: what stands beside a list is the
// user's as much as the list.
TEST_F(Program, CountSaysWhatIsWrongAndChangesNothing) {
  const test::ScopedVariable config("XDG_CONFIG_HOME", folder.file("config"));
  const test::ScopedVariable key("KORVEX_HOST_KEY", "limited");
  fs::create_directories(folder.file("config/limited"));
  const std::string odd_name = "50%d %s.txt";
  test::write_file(folder.file(odd_name), "12\n\n1x\n+4\n");
  test::write_file(folder.file(odd_name + ".err"), "an older report");
  test::write_file(layout(), test::layout_of(test::number_item("A", "type = \"default\"")));
  ASSERT_EQ(run({"generate", layout(), "--settings-only"}), 0);
  const auto repeats = [](int first, int second) {
    return test::repeated_item("A", first) + test::repeated_item("B", second);
  };
  const std::string misfit = "[[item]]\nname = \"A\"\nattribute = 4\ndigits = 4\n";
  const std::tuple<std::string, const char*, std::string> cases[] = {
      // What the message says of the line is no business of the path.
      {test::listed_item("A", odd_name), "0", folder.file(odd_name) + "\n3 line of a enum file"},
      {repeats(2, 3), "0", "Failed to generate data.\n99108:"},
      {repeats(1, 2), "1", "repeats is 1.\n"},
      {misfit, "0", ": 99070:There is a difference between Item information and"},
  };
  for (const auto& [items, limit, message] : cases) {
    test::write_file(folder.file("config/limited/Korvex.conf"),
                     std::string("CheckFileSizeMax=1\nRepeatLevelNumMax=") + limit + "\n");
    test::write_file(layout(), test::layout_of(items));
    const auto before = files_below(folder.path());
    EXPECT_EQ(run({"count", layout()}), 1);
    EXPECT_NE(messages.str().find(message), std::string::npos) << messages.str();
    EXPECT_EQ(files_below(folder.path()), before);
  }
  // Generating with settings that no longer fit deletes them.
  EXPECT_EQ(run({"generate", layout()}), 1);
  EXPECT_NE(messages.str().find("d.fif: 99070:"), std::string::npos) << messages.str();
  EXPECT_FALSE(fs::exists(folder.file("d.fif")));
  EXPECT_EQ(module_call.calls, 3);
}

TEST_F(Program, WhatIsWrongIsNamed) {
  // An item with impossible digits is used; the user is told.
  write_layout("%3U",
               "[[item]]\nnumber = 30\nname = \"C\"\nattribute = 4\ndigits = 3\n"
               "decimals = 4\nvalues = { type = \"default\" }\n");
  for (const char* command : {"count", "generate"}) {
    EXPECT_EQ(run({command, layout()}), 0);
    EXPECT_TRUE(messages.str().starts_with(layout() + ":18: item C: 99075:")) << messages.str();
  }
  test::write_file(folder.file("out/l.fif"), "short");
  EXPECT_EQ(run({"generate", layout()}), 1);
  EXPECT_TRUE(messages.str().ends_with(folder.file("out/l.fif") +
                                       ": 99003:Failed to read the control file.\n"))
      << messages.str();
  EXPECT_EQ(read_file(folder.file("out/l.fif")), "short");
  fs::remove_all(folder.file("out"));
  module_call.calls = 0;

  write_layout("%9U");
  EXPECT_EQ(run({"generate", layout()}), 1);
  const std::string expected = layout() + ":15:10: item 名前: format is \"%9U\": 99052:There";
  EXPECT_TRUE(messages.str().starts_with(expected)) << messages.str();
  write_layout("%3U",
               "[[item]]\nnumber = 30\nname = \"C\"\nattribute = 4\ndigits = 3\n"
               "values = { type = \"reference\", item = \"X\" }\n");
  EXPECT_EQ(run({"generate", layout()}), 1);
  EXPECT_TRUE(messages.str().starts_with(layout() + ":23:39: item C: item is \"X\": 99074:"))
      << messages.str();
  EXPECT_EQ(module_call.calls, 0);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"l.toml", "out", "w"}));
  EXPECT_TRUE(fs::is_empty(folder.file("out")));
  EXPECT_TRUE(fs::is_empty(folder.file("w")));
}

// A list that is not there is found before anything is written; settings that are kept have theirs.
TEST_F(Program, AMissingListIsAnErrorOfTheLayout) {
  test::write_file(layout(), test::layout_of(test::listed_item("A", "none.txt")));
  const std::vector<std::vector<std::string>> commands = {
      {"generate"}, {"count"}, {"check"}, {"preview"}, {"export", "-o", folder.file("o.csv")}};
  for (std::vector<std::string> words : commands) {
    words.push_back(layout());
    EXPECT_EQ(run(words), 2) << words[0];
    EXPECT_EQ(messages.str(), layout() + ":11:41: item A: file leads to " +
                                  folder.file("none.txt") +
                                  ", which does not exist, expected a value list\n");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"l.toml"});
  }
  EXPECT_EQ(run({"generate", "--keep-settings", layout()}), 0) << messages.str();
  EXPECT_EQ(module_call.calls, 1);
}

TEST_F(Program, AListInUtf8IsWarnedOfOnce) {
  test::write_file(folder.file("list.txt"), "名前\n");
  test::write_file(layout(), test::layout_of(test::listed_item("A", "list.txt") +
                                             test::listed_item("B", "list.txt")));
  EXPECT_EQ(run({"generate", layout()}), 0);
  EXPECT_EQ(messages.str(), layout() + ":7: item A: " + folder.file("list.txt") +
                                " looks like UTF-8; lists are read as code page 932 (iconv -f "
                                "UTF-8 -t CP932 " +
                                folder.file("list.txt") + ")\n");
  test::write_file(folder.file("list.txt"), test::cp932("名前\n"));
  EXPECT_EQ(run({"generate", layout()}), 0);
  EXPECT_EQ(messages.str(), "");
}

TEST_F(Program, AWrongLayoutIsReportedWithAllItsPlaces) {
  test::write_file(layout(),
                   "[layout]\nkind = 5\ncolor = 1\n[[item]]\nname = \"A\"\nattribute = 28\n");
  EXPECT_EQ(run({"generate", layout(), "--records", "1"}), 2);
  const std::string text = messages.str();
  for (const char* place : {":1:1: [layout] has no data", ":2:8: kind is 5", ":3:1: unknown key"}) {
    EXPECT_NE(text.find(layout() + place), std::string::npos) << text;
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"l.toml"});

  EXPECT_EQ(run({"generate", folder.file("none.toml")}), 2);
  EXPECT_EQ(messages.str(),
            folder.file("none.toml") + ": cannot be read: No such file or directory\n");
}

// Names, values, paths and words of the command line, in what is said and in what fails.
TEST_F(Program, NothingFromOutsideActsOnATerminal) {
  const std::string evil = "a\x1B]0;x\x07\n\xC2\x9B\xFF";
  const auto place = [&](const std::string& name) { return folder.file(evil + "/" + name); };
  fs::create_directories(folder.file(evil));
  const auto write = [&](const std::string& name, const std::string& rest) {
    test::write_file(place(name),
                     "[layout]\nkind = \"table\"\nrecords = 3\ndata = \"d.csv\"\n" + rest);
  };
  const std::string item = "[[item]]\nname = \"\\u001B\"\nattribute = \"character\"\nlength = 9\n";
  write("good.toml",
        item + "values = { type = \"range\", format = \"'\\u001B'%1S\", start = \"A\" }\n");
  write("format.toml", item + "values = { type = \"range\", format = \"%\\u001B\" }\n");
  write("none.toml", item);
  write("key.toml", "\"\\u001B\" = 1\n" + item);
  write("twice.toml", "[\"\\u001B\"]\n[\"\\u001B\"]\n");
  write("list.toml", item + "values = { type = \"enumeration\", file = \"\\u001B\" }\n");
  write("bytes.toml", "kind \x1B\n");
  const std::string good = place("good.toml");
  const std::vector<std::vector<std::string>> commands = {
      {"generate", good},
      {"generate", "--settings-only", good},
      {"count", good},
      {"check", good},
      {"check", "--unique", evil, good},
      {"preview", good},
      {"edit", good},
      {"update", "--item", evil, good},
      {"export", good, "-o", place("x.jsonl"), "--format", "jsonl"},
      {"export", good, "-o", good},
      {"export", good, "-o", place("no/x")},
      {"show", place("d.fif")},
      {"show", place("absent")},
      {"new", "-o", good},
      {"new", "--item", evil},
      {"generate", place("absent.toml")},
      {"generate", place("none.toml")},
      {"generate", place("format.toml")},
      {"check", place("key.toml")},
      {"check", place("twice.toml")},
      {"check", place("list.toml")},
      {"check", place("bytes.toml")},
      {"check", "--" + evil},
      {"check", good, evil},
      {evil},
      {"import", "sqlite:" + place("no.db"), evil},
      {"import", evil, evil},
      {"load", good, "sqlite:" + place("no.db"), evil},
  };
  for (const auto& command : commands) {
    run(command);
    const std::string said = out.str() + messages.str();
    const auto is_raw = [](unsigned char byte) {
      return byte < 0x20 ? byte != '\n' : byte == 0x7F;
    };
    EXPECT_TRUE(std::none_of(said.begin(), said.end(), is_raw)) << testing::PrintToString(command);
    EXPECT_EQ(said.find("\n\xC2"), std::string::npos) << said;
    EXPECT_EQ(said.find("\xC2\x9B"), std::string::npos) << said;
    EXPECT_EQ(said.find('\xFF'), std::string::npos) << said;
    EXPECT_FALSE(said.empty()) << testing::PrintToString(command);
  }
}

TEST_F(Program, Usage) {
  // What is written, in full or in part: the answer, or why not.
  const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
      {{"--version"}, 0, "korvex 0.1.0\n"},
      {{"--help"}, 0, "generate"},
      {{"generate", "--help"}, 0, "--output-option"},
      {{"count", "--help"}, 0, "--records"},
      {{"show", "--help"}, 0, "FILE"},
      {{}, 2, "required"},
      {{"generate"}, 2, "LAYOUT"},
      {{"generate", "l.toml", "--records", "-1"}, 2, "--records"},
      {{"generate", "l.toml", "--records", "2147483648"}, 2, "--records"},
      {{"generate", "l.toml", "--colour"}, 2, "--colour"},
      {{"count"}, 2, "LAYOUT"},
      {{"count", "l.toml", "--quiet"}, 2, "--quiet"},
      {{"generat", "l.toml"}, 2, "no command \"generat\", expected one of generate, "},
      {{"lod", "l.toml"}, 2, "no command \"lod\", expected one of load, "},
      {{"generate", "l.toml", "--records", "five"},
       2,
       "\"five\" is no number from 0 to 2147483647\n"},
      {{"preview", "l.toml", "-n", "5x"}, 2, "\"5x\" is no number from 0 to"},
      {{"import", "d", "t", "--records", "0"}, 2, "\"0\" is no number from 1 to"},
      {{"export", "l.toml", "-o", "-", "--format", "json"},
       2,
       "\"json\" is unknown, expected one of csv, tsv, jsonl, sql\n"},
      {{"export", "--help"}, 0, "--format FORMAT             csv, tsv, jsonl or sql"},
      {{"show", "/dev/null"}, 1, "/dev/null: this is not a regular file"},
  };
  for (const auto& [arguments, status, text] : cases) {
    EXPECT_EQ(run(arguments), status) << testing::PrintToString(arguments);
    const std::string written = status == 0 ? out.str() : messages.str();
    EXPECT_NE(written.find(text), std::string::npos) << written;
    EXPECT_TRUE(status == 0 ? messages.str().empty() : out.str().empty());
  }
  EXPECT_EQ(module_call.calls, 0);
}

}  // namespace
}  // namespace korvex::host
