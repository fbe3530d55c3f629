#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/layout/table_reader.h"
#include "host/parts/part.h"
#include "platform/printable_text.h"

// What several commands take alike.
namespace korvex::host {

// Takes whole numbers only, and says which.
inline CLI::Validator number_from(std::int32_t lowest) {
  const auto check = [lowest](const std::string& text) -> std::string {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure == std::errc() && stop == end && number >= lowest) return {};
    return '"' + platform::printable(text) + "\" is no number from " + std::to_string(lowest) +
           " to " + std::to_string(largest_integer);
  };
  return {check, "", ""};
}

// Takes one of some words, and turns it into the number of what it stands for.
template <class Value>
CLI::Validator one_of(const std::vector<std::pair<std::string, Value>>& choices) {
  const auto translate = [choices](std::string& word) -> std::string {
    std::string names;
    for (const auto& [name, value] : choices) {
      if (name == word) {
        word = std::to_string(static_cast<int>(value));
        return {};
      }
      names += (names.empty() ? "" : ", ") + name;
    }
    return '"' + platform::printable(word) + "\" is unknown, expected one of " + names;
  };
  return {translate, "", ""};
}

// A command of the program. Its options are added when the command line has it: those of all
// commands together cost more than many a run.
template <class AddOptions>
CLI::App* add_command(CLI::App& app, const char* name, const char* description,
                      AddOptions add_options) {
  CLI::App* command = app.add_subcommand(name, description);
  command->preparse_callback([command, add_options](std::size_t) { add_options(*command); });
  return command;
}

inline void add_layout(CLI::App& command, std::string& layout) {
  command.add_option("LAYOUT", layout, "layout file (TOML)")->required();
}

inline void add_layouts(CLI::App& command, std::string& layout) {
  command.add_option("LAYOUT", layout, "layout file (TOML), or a folder of them")->required();
}

inline void add_records(CLI::App& command, std::optional<std::int32_t>& records) {
  command
      .add_option("--records", records, "number of records, in place of the number in the layout")
      ->check(number_from(0));
}

inline void add_part(CLI::App& command, std::optional<Part>& part, bool& force) {
  const auto check = [](const std::string& text) -> std::string {
    if (parse_part(text)) return {};
    return '"' + platform::printable(text) +
           "\" is no part, expected I/N, two whole numbers with I from 1 to N";
  };
  CLI::Option* const option =
      command
          .add_option_function<std::string>(
              "--part", [&part](const std::string& text) { part = parse_part(text); },
              "the I-th of N equal parts alone, beside the file")
          ->check(CLI::Validator(check, "", ""))
          ->type_name("I/N");
  command.add_flag("--force", force, "make the part also when it is complete")->needs(option);
}

}  // namespace korvex::host
