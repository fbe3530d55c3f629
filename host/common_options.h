#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "host/table_reader.h"

// What several commands take alike.
namespace korvex::host {

inline void add_layout(CLI::App& command, std::string& layout) {
  command.add_option("LAYOUT", layout, "layout file (TOML)")->required();
}

inline void add_records(CLI::App& command, std::optional<std::int32_t>& records) {
  command
      .add_option("--records", records, "number of records, in place of the number in the layout")
      ->check(CLI::Range(0, largest_integer));
}

}  // namespace korvex::host
