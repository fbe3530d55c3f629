#include "host/commands/program.h"

#include <sstream>

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
    return static_cast<int>(run_program(static_cast<int>(words.size()), words.data(),
                                        {.create_data = record_call,
                                         .check_repeat_count = record_check,
                                         .create_file = record_file,
                                         .create_format = record_format,
                                         .replace_data = record_update},
                                        out, messages));
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
  EXPECT_EQ(run({"generate", "--settings-only", layout()}), 0);
  EXPECT_EQ(module_call.calls, 1);
  for (const auto& [answer, status] : {std::pair{-2, 1}, {-79, 130}, {1, 0}}) {
    module_call.answer = answer;
    EXPECT_EQ(run({"generate", layout()}), status) << answer;
    EXPECT_EQ(out.str().empty(), answer < 0);
    EXPECT_TRUE(fs::is_empty(folder.file("w")));
  }
  // The question whether fewer records are enough needs to know how many there would be.
  write_layout("%3U", "repeat = { level = 1, count = 5 }\n");
  for (const auto& [option, items] : {std::pair{"2", 45u}, {"0", 0u}}) {
    EXPECT_EQ(run({"generate", layout(), "--output-option", option}), 0);
    EXPECT_EQ(module_call.repeat_item_count, items);
  }
}

TEST_F(Program, EditingCommandsHandOverTheLayoutWithItsSettings) {
  // The arguments, the function that they lead to, and the first field of what it reads.
  const std::tuple<std::vector<std::string>, const char*, std::int32_t> cases[] = {
      {{"edit", layout()}, "file", 12},
      {{"edit", layout(), "--records", "7"}, "file", 7},
      {{"format", layout()}, "format", 12},
      {{"update", layout()}, "update", 1},
      {{"update", layout(), "--item", "B"}, "update", 2},
      {{"update", layout(), "--item", "名前"}, "update", 1},
  };
  for (const auto& [arguments, function, first_field] : cases) {
    for (const auto& [answer, status] : {std::pair{1, 0}, {2, 130}, {-1, 1}}) {
      module_call = {};
      module_call.answer = answer;
      EXPECT_EQ(run(arguments), status);
      EXPECT_EQ(module_call.function, function);
      EXPECT_EQ(module_call.control_bytes.size(), 1020u + 2 * 136);
      EXPECT_EQ(module_call.control_bytes.substr(0, 4),
                std::string(test::Bytes().i32(first_field)));
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

}  // namespace
}  // namespace korvex::host
