#include <sys/wait.h>

#include <cstdlib>
#include <functional>

#include "korvex/korvex.h"
#include "support/generation_setup.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

using platform::MessageKind;

constexpr std::int32_t guarded = 2;

TEST(ExportsTest, FunctionsThatAreMissingSaySo) {
  const std::pair<std::string, std::function<std::int32_t(const char*)>> functions[] = {
      {"DGCreateFile", [](const char* path) { return DGCreateFile(path, nullptr, 0); }},
      {"DGCreateFormat", [](const char* path) { return DGCreateFormat(path, nullptr, 1); }},
      {"DGReplaceData", [](const char* path) { return DGReplaceData(path, nullptr); }},
  };
  for (const auto& [name, call] : functions) {
    GenerationSetup setup;
    setup.write_control();
    EXPECT_EQ(call(setup.control().c_str()), -1);
    EXPECT_EQ(call(nullptr), -1);
    ASSERT_EQ(setup.interface.messages.size(), 2U) << name;
    EXPECT_NE(setup.interface.messages[0].text.find(name), std::string::npos);
    EXPECT_TRUE(setup.outputs().empty());
  }
}

// One message for each failed run, whose code is returned.
TEST(ExportsTest, CreateDataReportsAFailure) {
  using Setup = GenerationSetup;
  const std::string failed = "Failed to generate data.\n";
  const std::tuple<std::int32_t, std::function<void(Setup&)>, std::string> cases[] = {
      {-2, [](Setup& s) { std::filesystem::remove(s.control()); },
       failed + "99002:Failed to open the control file."},
      {-28, [](Setup& s) { std::filesystem::remove(s.settings()); },
       failed + "99028:Failed to create the data file."},
      {-6, [](Setup& s) { s.write_control({.layout_kind = 3, .items = {2}}); },
       failed + "99006:The format is not set to Column.\nPlease set the format.\nTo close the data "
                "generation screen, click Cancel."},
      {-79, [](Setup& s) { s.interface.cancel_at_poll = 2; },
       "99079:Data generation was aborted.\nThe data file was not created."},
  };
  for (const auto& [code, spoil, message] : cases) {
    SCOPED_TRACE(code);
    Setup setup;
    setup.save_settings({{}}, code == -6 ? 3 : 1);
    setup.write_control();
    spoil(setup);
    EXPECT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, 0), code);
    ASSERT_EQ(setup.interface.messages.size(), 1U);
    EXPECT_EQ(setup.interface.messages[0].text, message);
    EXPECT_EQ(setup.interface.messages[0].kind, MessageKind::warning);
    EXPECT_TRUE(setup.outputs().empty());
  }
}

TEST(ExportsTest, CreateDataTakesNoPathForAnEmptyOne) {
  GenerationSetup setup;
  EXPECT_EQ(DGCreateData(nullptr, 0, nullptr, 0), -2);
  EXPECT_EQ(setup.interface.messages.size(), 1U);
}

// Lines of 1 MiB, made of one wide item very often, which no disk has to hold.
TEST(ExportsTest, TheOutputLimitEndsARunThatCountsAsDone) {
  constexpr std::uint64_t field_size = 128;
  constexpr std::uint64_t fields = 8191;
  constexpr std::uint64_t line_size = field_size * fields + 1;
  constexpr std::uint64_t limit = 2'147'483'647;
  GenerationSetup setup;
  const RangeTexts wide = {"'" + std::string(field_size - 1, 'x') + "'", "", "", ""};
  setup.save_settings({{.item = {6, 0, 127, 127, 0}, .texts = wide}});
  setup.write_control({.records = 0});
  ASSERT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, 0),
            0);  // makes the limits' file
  setup.write_control({.records = 2'000'000'000, .items = std::vector<std::int32_t>(fields, 1)});
  write_file(setup.log(), "old log");
  const WriteCalls calls(0);
  EXPECT_EQ(DGCreateData(setup.control().c_str(), guarded, nullptr, 0), 0);
  EXPECT_EQ(calls.bytes(), (limit - 1) / line_size * line_size);
  ASSERT_EQ(setup.interface.messages.size(), 1U);
  EXPECT_EQ(setup.interface.messages[0].text,
            "The size of the data exceeds the size that Varkel can operate accurately."
            "99076:Cannot create data output which exceeds 2GB.\nThe first 2GB of output data was "
            "created.");
  EXPECT_EQ(setup.outputs(), (Names{"out.csv", "out.log"}));
  EXPECT_EQ(read_file(setup.log()), "old log");
}

// Runs the C program against the shared library; its output tells what each function returned.
std::string run_c_host(const GenerationSetup& setup) {
  const ScopedVariable console("KORVEX_UI", "console");
  const std::string command = std::string(KORVEX_C_HOST " ") + setup.control() + " >" +
                              setup.folder.file("stdout") + " 2>" + setup.folder.file("stderr");
  const int status = std::system(command.c_str());
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  return read_file(setup.folder.file("stdout"));
}

TEST(CHostTest, CallsAllFiveFunctions) {
  const GenerationSetup setup;
  const std::string without_data =
      "DGCreateFile -1\nDGCreateFormat -1\nDGReplaceData -1\nDGCheckRepeatCnt -1\n";
  EXPECT_EQ(run_c_host(setup), without_data + "DGCreateData -2\n");
  EXPECT_NE(read_file(setup.folder.file("stderr")).find("99002:Failed to open the control file."),
            std::string::npos);

  setup.save_settings();
  setup.write_control();
  EXPECT_EQ(run_c_host(setup), without_data + "DGCreateData 0\n");
  EXPECT_EQ(read_file(setup.data()), "001,\n002,\n003,\n");
  EXPECT_EQ(read_file(setup.log()), log_bytes(3, 1, {1}));
}

}  // namespace
}  // namespace korvex::test
