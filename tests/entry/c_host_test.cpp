#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "dialogs/dialog_setup.h"

namespace korvex::test {
namespace {

// The functions that open a window.
const Names window_functions = {"DGCreateFile", "DGCreateFormat", "DGReplaceData"};

// Runs the C program against the shared library, with or without a display.
class CHostTest : public testing::Test {
 protected:
  // What the function returned; the program must end by itself.
  std::string run(const std::string& function) {
    const std::string command = "timeout 60 " KORVEX_C_HOST " " + function + " " + setup.control() +
                                " >" + out_ + " 2>" + err_;
    const int status = std::system(command.c_str());
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    messages = read_file(err_);
    return read_file(out_);
  }

  // Puts another module, or none, beside a copy of the library and has that used.
  void use_module(const char* module) {
    const std::filesystem::path folder = library_folder_.path();
    std::filesystem::copy_file(KORVEX_LIBRARY, folder / KORVEX_LIBRARY_NAME,
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(folder / "libkorvex-dialogs.so");
    if (module != nullptr) std::filesystem::copy_file(module, folder / "libkorvex-dialogs.so");
    ::setenv("LD_LIBRARY_PATH", library_folder_.path().c_str(), 1);
  }

  // Every function with a window says in one line why there is none.
  void expect_no_window(const std::string& reason) {
    for (const std::string& function : window_functions) {
      EXPECT_EQ(run(function), "-1\n");
      EXPECT_TRUE(messages.starts_with(function + " cannot show its window: ")) << messages;
      EXPECT_NE(messages.find(reason), std::string::npos) << messages;
      EXPECT_EQ(std::count(messages.begin(), messages.end(), '\n'), 1) << messages;
    }
  }

  DialogSetup setup;
  std::string messages;

 private:
  TempFolder library_folder_;
  std::string out_ = library_folder_.file("out");
  std::string err_ = library_folder_.file("err");
  ScopedVariable x11_{"DISPLAY", std::nullopt};
  ScopedVariable wayland_{"WAYLAND_DISPLAY", std::nullopt};
  ScopedVariable platform_{"QT_QPA_PLATFORM", std::nullopt};
  ScopedVariable runtime_{"XDG_RUNTIME_DIR", library_folder_.path()};
  ScopedVariable interface_{"KORVEX_UI", std::nullopt};
  ScopedVariable libraries_{"LD_LIBRARY_PATH", std::nullopt};
};

TEST_F(CHostTest, WithoutTheModuleThereIsNoWindow) {
  use_module(nullptr);
  expect_no_window("libkorvex-dialogs.so");
}

#ifdef KORVEX_OK_PRESSER

TEST_F(CHostTest, WithoutADisplayThereIsNoWindow) {
  expect_no_window("no display is set (DISPLAY)");
  const ScopedVariable unreachable("DISPLAY", ":32767");
  expect_no_window("display :32767 cannot be reached");
  const ScopedVariable unknown("QT_QPA_PLATFORM", "no-such-platform");
  expect_no_window("no-such-platform");
}

TEST_F(CHostTest, AModuleOfAnotherVersionShowsNoWindow) {
  use_module(KORVEX_OK_PRESSER);
  const ScopedVariable version("KORVEX_OTHER_ABI", "1");
  const ScopedVariable display("QT_QPA_PLATFORM", "offscreen");
  expect_no_window("belongs to another version");
}

TEST_F(CHostTest, MessagesFallBackToTheConsole) {
  const ScopedVariable wanted("KORVEX_UI", "desktop");
  EXPECT_EQ(run("DGCreateData"), "-2\n");
  EXPECT_EQ(messages,
            "The desktop cannot be used: no display is set (DISPLAY)\n"
            "Failed to generate data.\n99002:Failed to open the control file.\n");
}

TEST_F(CHostTest, AllFiveFunctionsRunOnOneSettingsFile) {
  use_module(KORVEX_OK_PRESSER);
  const ScopedVariable display("QT_QPA_PLATFORM", "offscreen");
  setup.write({{}, {.number = 2, .name = "B"}}, {.records = 2});
  EXPECT_EQ(run("DGCreateFormat"), "1\n");
  EXPECT_EQ(setup.outputs(), Names{});
  EXPECT_EQ(run("DGCreateFile"), "1\n");
  EXPECT_EQ(read_file(setup.data()), "01,01,\n02,02,\n");
  EXPECT_EQ(run("DGReplaceData"), "1\n");  // the second item, to the initial value
  EXPECT_EQ(run("DGCheckRepeatCnt"), "0\n");
  setup.write_control({.records = 1, .items = {1, 2}});
  EXPECT_EQ(run("DGCreateData"), "0\n");
  EXPECT_EQ(read_file(setup.data()), "01,,\n");
  EXPECT_EQ(run("DGCreateFile"), "2\n") << "this control file is a short one";
}

#endif

}  // namespace
}  // namespace korvex::test
