#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>
#include <thread>

#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

// The built program as its users run it.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using test::read_file;

class Process : public testing::Test {
 protected:
  Process() : config_("XDG_CONFIG_HOME", folder.file("config")) {
    fs::create_directory(folder.file("run"));
    fs::current_path(folder.file("run"));
  }
  ~Process() override { fs::current_path("/"); }

  pid_t start(const std::vector<std::string>& arguments) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    std::vector<char*> words = {const_cast<char*>(KORVEX_PROGRAM)};
    for (const std::string& argument : arguments)
      words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    if (::freopen("/dev/null", "r", stdin) == nullptr ||
        ::freopen(folder.file("out").c_str(), "w", stdout) == nullptr ||
        ::freopen(folder.file("err").c_str(), "w", stderr) == nullptr) {
      ::_exit(126);
    }
    ::execv(words[0], words.data());
    ::_exit(127);
  }

  static int wait_for(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  int run(const std::vector<std::string>& arguments) { return wait_for(start(arguments)); }

  std::string out() const { return read_file(folder.file("out")); }
  std::string err() const { return read_file(folder.file("err")); }

  static void write_layout(const std::string& header, const std::string& format) {
    test::write_file("l.toml", "[layout]\nkind = \"record\"\n" + header + R"(
[[item]]
name = "A"
attribute = "decimal"
digits = 9
[item.values]
type = "range"
format = ")" + format + R"("
start = 1
end = 999999999
)");
  }

  test::TempFolder folder;
  test::ScopedVariable config_;
};

// Every file below a folder with its content.
std::map<std::string, std::string> files_below(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files[entry.path().string()] = read_file(entry.path().string());
  }
  return files;
}

struct Example {
  const char* name;
  std::int64_t records;
  const char* first_line;
  // What the module foretells: the most values of an item, and that many records of full width.
  const char* data_items;
  const char* predicted_size;
};

class Examples : public Process, public testing::WithParamInterface<Example> {
 protected:
  static void copy_example(const std::string& name) {
    fs::copy_file(std::string(KORVEX_EXAMPLES) + "/" + name + ".toml", name + ".toml");
    fs::copy(std::string(KORVEX_EXAMPLES) + "/lists", "lists", fs::copy_options::recursive);
  }
};

TEST_P(Examples, Generate) {
  const std::string name = GetParam().name;
  copy_example(name);
  for (int i = 0; i < 2; ++i) {  // the second time the settings file is there
    EXPECT_EQ(run({"generate", name + ".toml"}), 0);
    EXPECT_EQ(err(), "");
    EXPECT_TRUE(out().starts_with(std::to_string(GetParam().records) + " records, ")) << out();
    const std::string data = read_file("out/" + name + ".csv");
    EXPECT_EQ(platform::to_utf8(data.substr(0, data.find('\n'))), GetParam().first_line);
    EXPECT_EQ(std::count(data.begin(), data.end(), '\n'), GetParam().records);
  }
  for (const char* extension : {".fif", ".log"}) {
    EXPECT_EQ(run({"show", "out/" + name + extension}), 0) << err();
  }
}

TEST_P(Examples, Count) {
  const std::string name = GetParam().name;
  copy_example(name);
  const auto before = files_below(".");
  ASSERT_EQ(run({"count", name + ".toml"}), 0) << err();
  EXPECT_EQ(err(), "");
  const std::string counted = out();
  EXPECT_EQ(files_below("."), before);

  ASSERT_EQ(run({"generate", name + ".toml", "--quiet"}), 0) << err();
  std::ostringstream expected;
  expected << "Data items:          " << GetParam().data_items
           << "\nPredicted size:      " << GetParam().predicted_size << "\n"
           << "DGCheckRepeatCnt:    0 (the settings can be evaluated)\n"
           << "Records to generate: " << GetParam().records
           << "\nExact file size:     " << fs::file_size("out/" + name + ".csv") << " bytes\n";
  EXPECT_EQ(counted, expected.str());

  // With the settings file there, and another number of records.
  const auto generated = files_below(".");
  ASSERT_EQ(run({"count", name + ".toml", "--records", "7"}), 0) << err();
  EXPECT_EQ(files_below("."), generated);
  const std::string last_line = out().substr(out().find("Exact"));
  ASSERT_EQ(run({"generate", name + ".toml", "--quiet", "--records", "7"}), 0) << err();
  EXPECT_EQ(last_line, "Exact file size:     " +
                           std::to_string(fs::file_size("out/" + name + ".csv")) + " bytes\n");
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, Examples,
    testing::Values(
        Example{"customers", 1000,
                "10000001,CUST-aaaaa,AA,あああ,-00099.95,000,19700101,090000,20240101 000000,,",
                "89999999", "9809999891 bytes (data items x item lengths)"},
        Example{"orders", 500,
                "+000001,\"AA-0001\",0000019.90,9,\"2024/02/29\",\"2024/01/01 08:00:00\",,",
                "999999", "73999926 bytes (data items x item lengths)"},
        Example{"iso", 365, "wx-aaa,99-01-01,+024.5,0000000001", "9999999999",
                "too large (above CheckFileSizeMax)"},
        Example{"fullwidth", 200, "\"あいうえ\",\"カナアアア\",\"第ア-0001\",\"2024/04/01\",",
                "9999", "399960 bytes (data items x item lengths)"},
        Example{"prices", 12, "100010,\"Espresso cup\",4.50,10,\"19700101\",", "680019",
                "32640912 bytes (data items x item lengths)"},
        Example{"calendar", 84, "2024/02/12,SHOP-01,A10,SHOP-01,001,", "84",
                "2352 bytes (data items x item lengths)"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Process, AWrongFormatLeavesEverythingAsItWas) {
  write_layout("records = 3\ndata = \"d.csv\"", "%9U");
  ASSERT_EQ(run({"generate", "l.toml", "--quiet"}), 0) << err();
  EXPECT_EQ(out(), "");
  const std::string data = read_file("d.csv");
  const std::string settings = read_file("d.fif");
  EXPECT_EQ(data, "000000001,\n000000002,\n000000003,\n");

  write_layout("records = 3\ndata = \"d.csv\"", "%10U");
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_TRUE(err().starts_with("l.toml:11:10: item A: format is \"%10U\": 99052:")) << err();
  EXPECT_EQ(read_file("d.csv"), data);
  EXPECT_EQ(read_file("d.fif"), settings);
}

TEST_F(Process, AFailureOfTheModuleIsReportedOnce) {
  write_layout("records = 3\ndata = \"/dev/full\"\nsettings = \"d.fif\"\nwork = \"w\"", "%9U");
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_EQ(err(), "Failed to generate data.\n99027:Insufficient disk capacity.\n");
  EXPECT_EQ(out(), "");
  EXPECT_TRUE(fs::is_empty("w"));
}

TEST_F(Process, AWrongLayoutEndsWithItsOwnStatus) {
  write_layout("records = -3\ndata = \"d.csv\"", "%9U");
  EXPECT_EQ(run({"generate", "l.toml"}), 2);
  EXPECT_TRUE(err().starts_with("l.toml:3:11: records is -3, expected ")) << err();
  EXPECT_EQ(run({"generate"}), 2);
}

TEST_F(Process, AnInterruptCancelsTheRun) {
  write_layout("records = 2000000000\ndata = \"d.csv\"\nwork = \"w\"", "%9U");
  const pid_t child = start({"generate", "l.toml", "--output-option", "2"});
  std::error_code missing;
  for (int i = 0; i < 5000 && (!fs::exists("d.csv") || fs::file_size("d.csv", missing) == 0); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ::kill(child, SIGINT);
  EXPECT_EQ(wait_for(child), 130);
  EXPECT_EQ(err(), "99079:Data generation was aborted.\nThe data file was not created.\n");
  EXPECT_FALSE(fs::exists("d.csv"));
  EXPECT_TRUE(fs::is_empty("w"));
}

class Lists : public Process {
 protected:
  Lists() { test::write_file("d.csv", "old data"); }

  static std::string item(const std::string& name, const std::string& values,
                          const std::string& nullable = "true") {
    return "[[item]]\nname = \"" + name + "\"\nattribute = 4\ndigits = 3\nnullable = " + nullable +
           "\nvalues = { " + values + " }\n";
  }

  static void write_items(const std::string& items) {
    test::write_file("l.toml",
                     "[layout]\nkind = \"record\"\nrecords = 5\ndata = \"d.csv\"\n" + items);
  }

  std::string list_path() const { return folder.file("run") + "/prices.txt"; }
};

const std::string enumerated = "type = \"enumeration\", file = \"prices.txt\"";

TEST_F(Lists, BadLinesWriteAReportAndNoData) {
  test::write_file("prices.txt", "12\n\n1x\n+4\n123\n1234\n");
  write_items(item("A", enumerated));
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_EQ(out(), "");
  EXPECT_EQ(err(), list_path() +
                       "\n99135:An error occurred while the Enumeration file data was checked.\n"
                       "Correct the erroneous data, then retry.\nError file " +
                       list_path() + ".err was created. \nView the file?\n");
  EXPECT_EQ(read_file("prices.txt.err"),
            "3 line of a enum file The numeric value data Item includes a non-numeric value.\n"
            "4 line of a enum file The numeric value Item which should be unsigned, includes a "
            "sign.\n"
            "6 line of a enum file Data longer than Item has been defined.\n");
  EXPECT_EQ(read_file("d.csv"), "old data");
  EXPECT_FALSE(fs::exists("d.log"));

  const test::ScopedVariable answer("KORVEX_ANSWER", "yes");
  const test::ScopedVariable editor("KORVEX_EDITOR", "rm");
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  for (int i = 0; i < 5000 && fs::exists("prices.txt.err"); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_FALSE(fs::exists("prices.txt.err"));  // the editor was given just that
}

TEST_F(Lists, AMissingListIsNamed) {
  write_items(item("A", enumerated));
  for (const char* command : {"generate", "count"}) {
    EXPECT_EQ(run({command, "l.toml"}), 1);
    EXPECT_EQ(err(), list_path() + "\n99114:The target file does not exist.\n");
  }
  EXPECT_EQ(read_file("d.csv"), "old data");
}

// What the message says of the line is no business of the path.
TEST_F(Lists, CountNamesTheFirstBadLine) {
  const std::string name = "50%d %s.txt";
  test::write_file(name, "12\n\n1x\n+4\n");
  write_items(item("A", "type = \"enumeration\", file = \"" + name + "\""));
  EXPECT_EQ(run({"count", "l.toml"}), 1);
  EXPECT_EQ(err(), folder.file("run") + "/" + name +
                       "\n3 line of a enum file The numeric value data Item includes a non-numeric "
                       "value.\n");
}

// What stands beside a list is the user's as much as the list.
TEST_F(Lists, CountLeavesTheReportOfAnEarlierRunAlone) {
  write_items(item("A", enumerated));
  for (const char* lines : {"1\n2\n", "1\nx\n"}) {
    test::write_file("prices.txt", lines);
    for (const bool has_report : {false, true}) {
      fs::remove("prices.txt.err");
      if (has_report) test::write_file("prices.txt.err", "an older report");
      const auto before = files_below(".");
      run({"count", "l.toml"});
      EXPECT_EQ(files_below("."), before) << lines;
    }
  }
}

TEST_F(Lists, RepeatsGiveEveryCombination) {
  test::write_file("prices.txt", "7\n8\n");
  write_items(item("A", enumerated + ", repeat = { level = 1, count = 1 }") +
              item("B",
                   "type = \"range\", format = \"%1U\", start = 1, end = 2, repeat = { level = "
                   "2, count = 1 }") +
              item("C", "type = \"reference\", item = \"B\""));
  EXPECT_EQ(run({"count", "l.toml"}), 0) << err();
  EXPECT_TRUE(out().starts_with("Data items:          4\nPredicted size:      36 bytes")) << out();
  EXPECT_EQ(run({"generate", "l.toml", "--quiet"}), 0) << err();
  EXPECT_EQ(read_file("d.csv"), "7,1,1,\n7,2,2,\n8,1,1,\n8,2,2,\n7,1,1,\n");

  // More data items than records are asked about when the output is guarded.
  EXPECT_EQ(run({"generate", "l.toml", "--records", "3", "--output-option", "2"}), 0);
  EXPECT_EQ(out(), "nothing generated: d.csv\n");
  EXPECT_TRUE(
      err().starts_with("99110:The number of data items that will be generated through "
                        "repeat is larger than the specified number.4 data items will be "
                        "generated.\n"))
      << err();
  EXPECT_EQ(read_file("d.csv").size(), 5u * 7);  // declined
}

TEST_F(Lists, RefusedRepeatsAreReportedInFull) {
  const auto repeated = [](const char* name, int level) {
    return item(
        name, "type = \"default\", repeat = { level = " + std::to_string(level) + ", count = 1 }");
  };
  write_items(repeated("A", 2) + repeated("B", 3));
  const std::string no_first =
      "99108:The starting Item of the repeat is not specified.\n1 must be specified as the level "
      "of the starting Item of the repeat.\n";
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_EQ(err(), "Failed to generate data.\n" + no_first);
  EXPECT_EQ(run({"count", "l.toml"}), 1);
  EXPECT_TRUE(err().ends_with(no_first)) << err();

  write_items(repeated("A", 1) + repeated("B", 1));
  const std::string taken =
      "99104:Repeat is already specified for the same level. Specify another level.\n : \n";
  for (const char* command : {"generate", "count"}) {
    EXPECT_EQ(run({command, "l.toml"}), 1);
    EXPECT_EQ(err(), taken) << command;
  }

  const test::ScopedVariable key("KORVEX_HOST_KEY", "limited");
  fs::create_directories(folder.file("config/limited"));
  test::write_file(folder.file("config/limited/Korvex.conf"), "RepeatLevelNumMax=1\n");
  write_items(repeated("A", 1) + repeated("B", 2));
  for (const char* command : {"generate", "count"}) {
    EXPECT_EQ(run({command, "l.toml"}), 1);
    EXPECT_EQ(err(),
              "99109:The specified number of repeats is larger than the upper limit.\nThe maximum "
              "value that can be specified as the number of repeats is 1.\n")
        << command;
  }
  EXPECT_EQ(read_file("d.csv"), "old data");
}

TEST_F(Lists, SettingsThatNoLongerFitAreDeleted) {
  write_items(item("A", "type = \"default\""));
  ASSERT_EQ(run({"generate", "l.toml", "--quiet"}), 0) << err();
  const std::string data = read_file("d.csv");
  write_items("[[item]]\nname = \"A\"\nattribute = 4\ndigits = 4\n");
  const std::string message =
      "99070:There is a difference between Item information and the format information.\n";
  const auto before = files_below(".");
  EXPECT_EQ(run({"count", "l.toml"}), 1);
  EXPECT_TRUE(err().ends_with(": " + message)) << err();
  EXPECT_EQ(files_below("."), before);

  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_EQ(err(), "d.fif: " + message);
  EXPECT_EQ(read_file("d.csv"), data);
  EXPECT_TRUE(fs::exists("d.log"));
  EXPECT_FALSE(fs::exists("d.fif"));
}

}  // namespace
}  // namespace korvex::host
