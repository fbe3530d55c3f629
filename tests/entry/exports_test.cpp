#include <functional>

#include "korvex/korvex.h"
#include "support/generation_setup.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

using platform::MessageKind;

constexpr std::int32_t guarded = 2;

// No module lies beside this program.
TEST(ExportsTest, WithoutItsModuleAWindowIsAnOrdinaryFailure) {
  const std::pair<std::string, std::function<std::int32_t(const char*)>> functions[] = {
      {"DGCreateFile", [](const char* path) { return DGCreateFile(path, nullptr, 0); }},
      {"DGCreateFormat", [](const char* path) { return DGCreateFormat(path, nullptr, 1); }},
      {"DGReplaceData", [](const char* path) { return DGReplaceData(path, nullptr); }},
  };
  for (const auto& [name, call] : functions) {
    GenerationSetup setup;
    setup.write_control();
    testing::internal::CaptureStderr();
    EXPECT_EQ(call(setup.control().c_str()), -1);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(told.starts_with(name + " cannot show its window: ")) << told;
    EXPECT_TRUE(setup.interface.messages.empty());
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

}  // namespace
}  // namespace korvex::test
