#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "memory_files.h"
#include "run/record_writer.h"
#include "support/scripted_interface.h"
#include "values/error_codes.h"
#include "values/records.h"

// What the fuzzers share: a world without files of the machine, and generating in it.
namespace korvex::fuzz {

// In the working folder, which is there whatever else the machine has.
inline constexpr const char* control_path = "run.ctl";
inline constexpr const char* settings_path = "out.fif";
inline constexpr const char* data_path = "out.csv";
inline constexpr const char* list_path = "list.txt";
inline constexpr const char* work_folder = ".";

// Says what does not hold and ends the process, which the fuzzer takes for a finding.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// Memory in place of the machine's files, and a user interface that nobody looks at. At its end
// every file is closed.
class World {
 public:
  World() = default;
  ~World() { require(files.open_descriptors() == 0, "every file is closed"); }
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  MemoryFiles files;
  test::ScriptedInterface interface;

 private:
  platform::UserInterfaceOverride override_{interface};
};

// What a generation run is asked for.
struct RunRequest {
  std::int32_t records = 0;
  LayoutKind layout_kind = layout_kind::record_file;
  SettingsLevel level{1};
  std::vector<ItemNumber> items = {ItemNumber{1}};
  OutputOption output_option = OutputOption::plain;
  int cancel_at_poll = 0;
};

// The items of a control file as its bytes: numbers alone, or records.
template <typename Item>
std::string_view bytes_of(const std::vector<Item>& items) {
  return {reinterpret_cast<const char*>(items.data()), items.size() * sizeof(Item)};
}

// Writes the control file of a run, with so many items after its header.
void put_control_file(World& world, const RunRequest& request, std::size_t count,
                      std::string_view items);

// Generates from the settings file of the world. A run that succeeds has written as many bytes as
// measuring it predicts, one that fails has left no data file; nothing else is left.
// Answers the run's code.
ErrorCode generate(World& world, const RunRequest& request);

}  // namespace korvex::fuzz
