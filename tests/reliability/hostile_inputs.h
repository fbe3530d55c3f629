#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace korvex::test {

inline constexpr std::size_t hostile_size = 1024 * 1024;

enum class InputKind { control_file, settings_file, value_list, layout_file };

// A hostile file and the honest ones around it.
struct HostileInput {
  const char* name;
  InputKind kind;

  // Writes run.ctl, long.ctl, out.fif and list.txt, or layout.toml, into the folder.
  void (*write)(const std::string& folder);
};

inline void PrintTo(const HostileInput& input, std::ostream* out) { *out << input.name; }

const std::vector<HostileInput>& hostile_inputs();

}  // namespace korvex::test
