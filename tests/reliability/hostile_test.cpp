// Input files of a megabyte that are made to cost as much time or memory as they can.
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>

#include "format/settings_upgrade.h"
#include "generate/generate_data_file.h"
#include "generate/repeat_count.h"
#include "host/commands/show.h"
#include "host/layout/layout_messages.h"
#include "host/layout/layout_reader.h"
#include "host/layout/settings_editor.h"
#include "reliability/hostile_inputs.h"
#include "support/generation_setup.h"

namespace korvex::test {
namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

// What a file may take: a second, and so much memory more than it holds. Machines under load are
// slow, so a test asks for ten seconds only; the sanitizers keep memory of their own.
constexpr double most_seconds = 10;
constexpr double most_memory = 64 * mebibyte;
#ifdef __SANITIZE_ADDRESS__
constexpr bool memory_counts = false;
#else
constexpr bool memory_counts = true;
#endif

// The largest memory that this process has had so far, in bytes.
double peak_memory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) * 1024;
  }
  return 0;
}

double current_memory() {
  std::ifstream sizes("/proc/self/statm");
  double total = 0;
  double resident = 0;
  sizes >> total >> resident;
  return resident * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

struct Cost {
  double seconds = 0;
  double bytes = 0;
};

// What the work costs in a process of its own; more than can be had when it crashes.
Cost cost_of(const std::function<void()>& work) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return {most_seconds, most_memory};
  const pid_t child = ::fork();
  if (child == 0) {
    // What this process has freed counts as free here; the mark of the largest memory starts anew.
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
    const double before = current_memory();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    const Cost cost = {time.count(), std::max(peak_memory() - before, 0.0)};
    ::_exit(::write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  Cost cost;
  const bool is_told = WIFEXITED(status) && WEXITSTATUS(status) == 0 &&
                       ::read(ends[0], &cost, sizeof cost) == sizeof cost;
  ::close(ends[0]);
  ::close(ends[1]);
  return is_told ? cost : Cost{1e9, 1e18};
}

class HostileTest : public testing::TestWithParam<HostileInput> {
 protected:
  void use() const {
    switch (input.kind) {
      case InputKind::control_file:
        return use_control_file();
      case InputKind::settings_file:
        return use_settings_file();
      case InputKind::value_list:
        return use_value_list();
      case InputKind::layout_file:
        return use_layout_file();
    }
  }

  void use_control_file() const {
    show(setup.control());
    for (const std::int32_t mode :
         {run_mode::data_file_dialog, run_mode::settings_only, run_mode::generator}) {
      ClColMain main;
      main.control_path = setup.control();
      main.set_run_mode(mode);
      main.load();
    }
    count();
    generate();
  }

  void use_settings_file() const {
    show(setup.settings());
    count();
    generate();
    ClFmtFile file;
    file.set_paths(setup.settings(), setup.folder.path());
    if (file.load(1, 1, 1) > 0) file.save(0);
  }

  void use_value_list() const {
    count();
    generate();
  }

  void use_layout_file() const {
    host::LayoutReading reading = host::read_layout(setup.folder.file("layout.toml"), {});
    std::ostringstream messages;
    if (print_layout_errors(reading, messages)) return;
    const host::SettingsResult result = host::write_settings_of(reading.layout);
    print_failures(result, reading.layout, messages);
    print_left_out(result.left_out, reading.layout, messages);
  }

  static void show(const std::string& path) {
    std::ofstream nowhere("/dev/null");
    host::show_file(path, nowhere);
  }

  void count() const {
    ClRepeatCalcMain calculation;
    calculation.main.control_path = setup.folder.file("long.ctl");
    calculation.main.set_run_mode(run_mode::settings_only);
    calculation.run();
  }

  void generate() const {
    ClGenerateDataFile generator;
    generator.main.control_path = setup.control();
    generator.run();
  }

  const HostileInput& input = GetParam();
  GenerationSetup setup;
};

TEST_P(HostileTest, EndsSoonInLittleMemory) {
  input.write(setup.folder.path());
  const Cost cost = cost_of([this] { use(); });
  std::printf("%s: %.3f s, %.1f MiB\n", input.name, cost.seconds, cost.bytes / mebibyte);
  EXPECT_LT(cost.seconds, most_seconds);
  if (memory_counts) {
    EXPECT_LT(cost.bytes, most_memory + hostile_size);
  }
}

INSTANTIATE_TEST_SUITE_P(Inputs, HostileTest, testing::ValuesIn(hostile_inputs()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace korvex::test
