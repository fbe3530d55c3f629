#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <sstream>
#include <thread>

#include "host/layout_texts.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/program.h"
#include "support/temp_folder.h"

// The built program as its users run it: its streams, its exit status, its signals.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using namespace test;

void wait_until(const std::function<bool()>& done) {
  for (int i = 0; i < 5000 && !done(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

class Process : public testing::Test {
 protected:
  Process() {
    fs::create_directory(folder.file("run"));
    fs::current_path(folder.file("run"));
  }
  ~Process() override { fs::current_path("/"); }

  int run(const std::vector<std::string>& arguments) { return program.run(arguments); }
  std::string out() const { return program.out(); }
  std::string err() const { return program.err(); }

  TempFolder folder;
  Program program{KORVEX_PROGRAM, folder.path()};
  ScopedVariable config_{"XDG_CONFIG_HOME", folder.file("config")};
};

struct Example {
  const char* name;
  std::int64_t records;
  const char* first_line;
  // What the module foretells: the most values of an item, and that many records of full width.
  const char* data_items;
  const char* predicted_size;
};

class Examples : public Process, public testing::WithParamInterface<Example> {};

TEST_P(Examples, GenerateWhatTheyCount) {
  const Example& example = GetParam();
  const std::string name = example.name;
  const std::string layout = name + ".toml";
  const std::string data_path = "out/" + name + ".csv";
  fs::copy_file(std::string(KORVEX_EXAMPLES) + "/" + layout, layout);
  fs::copy(std::string(KORVEX_EXAMPLES) + "/lists", "lists", fs::copy_options::recursive);
  for (int i = 0; i < 2; ++i) {  // the second time the settings file is there
    ASSERT_EQ(run({"count", layout}), 0) << err();
    EXPECT_EQ(fs::exists("out/" + name + ".fif"), i == 1);
    const std::string counted = out();
    ASSERT_EQ(run({"generate", layout}), 0) << err();
    EXPECT_EQ(err(), "");
    EXPECT_TRUE(out().starts_with(std::to_string(example.records) + " records, ")) << out();
    const std::string data = read_file(data_path);
    EXPECT_EQ(platform::to_utf8(data.substr(0, data.find('\n'))), example.first_line);
    EXPECT_EQ(std::count(data.begin(), data.end(), '\n'), example.records);
    std::ostringstream expected;
    expected << "Data items:          " << example.data_items
             << "\nPredicted size:      " << example.predicted_size << "\n"
             << "DGCheckRepeatCnt:    0 (the settings can be evaluated)\n"
             << "Records to generate: " << example.records
             << "\nExact file size:     " << data.size() << " bytes\n";
    EXPECT_EQ(counted, expected.str());
  }
  for (const char* extension : {".fif", ".log"}) {
    EXPECT_EQ(run({"show", "out/" + name + extension}), 0) << err();
  }
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

TEST_F(Process, AFailureIsReportedOnceAndHasItsStatus) {
  write_file("l.toml", layout_of(number_item("A", "type = \"default\""), "/dev/full"));
  EXPECT_EQ(run({"generate", "l.toml"}), 1);
  EXPECT_EQ(err(), "Failed to generate data.\n99027:Insufficient disk capacity.\n");
  EXPECT_EQ(out(), "");
  EXPECT_TRUE(fs::is_empty("w"));
  EXPECT_EQ(run({"generate"}), 2);
}

TEST_F(Process, LostOutputIsAFailure) {
  write_file("l.toml", layout_of(number_item("A", "type = \"default\"")));
  for (const char* command : {"generate", "count", "check", "preview"}) {
    EXPECT_EQ(Program::wait_for(program.start({command, "l.toml"}, "/dev/full")), 1) << command;
    EXPECT_TRUE(err().ends_with("standard output: cannot be written\n")) << err();
  }
}

TEST_F(Process, AnInterruptCancelsTheRun) {
  write_file("l.toml", layout_of(number_item("A", "type = \"default\""), "d.csv", 2'000'000'000));
  const pid_t child = program.start({"generate", "l.toml", "--output-option", "2"});
  std::error_code missing;
  wait_until([&] { return fs::exists("d.csv") && fs::file_size("d.csv", missing) > 0; });
  ::kill(child, SIGINT);
  EXPECT_EQ(Program::wait_for(child), 130);
  EXPECT_EQ(err(), "99079:Data generation was aborted.\nThe data file was not created.\n");
  EXPECT_FALSE(fs::exists("d.csv"));
  EXPECT_TRUE(fs::is_empty("w"));
}

TEST_F(Process, RepeatsGiveEveryCombination) {
  write_file("prices.txt", "7\n8\n");
  const std::string one_and_two = "type = \"range\", format = \"%1U\", start = 1, end = 2";
  write_file("l.toml", layout_of(listed_item("A", "prices.txt", repeat(1, 1)) +
                                 number_item("B", one_and_two + repeat(2, 1)) +
                                 number_item("C", "type = \"reference\", item = \"B\"")));
  EXPECT_EQ(run({"count", "l.toml"}), 0) << err();
  EXPECT_TRUE(out().starts_with("Data items:          4\nPredicted size:      36 bytes")) << out();
  EXPECT_EQ(run({"generate", "l.toml", "--quiet"}), 0) << err();
  EXPECT_EQ(read_file("d.csv"), "7,1,1,\n7,2,2,\n8,1,1,\n8,2,2,\n7,1,1,\n");

  // More data items than records are asked about when the output is guarded.
  EXPECT_EQ(run({"generate", "l.toml", "--records", "3", "--output-option", "2"}), 0);
  EXPECT_EQ(out(), "nothing generated: d.csv\n");
  EXPECT_TRUE(err().starts_with("99110:")) << err();
  EXPECT_EQ(read_file("d.csv").size(), 5u * 7);  // declined
}

}  // namespace
}  // namespace korvex::host
