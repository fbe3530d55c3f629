#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/layout/table_reader.h"
#include "host/parts/part.h"
#include "host/process/generating_threads.h"
#include "host/records/record_format.h"
#include "platform/printable_text.h"

// What several commands take alike.
namespace korvex::host {

// Takes whole numbers only, and says which.
inline CLI::Validator number_from(std::int64_t lowest, std::int64_t highest = largest_integer) {
  const auto check = [lowest, highest](const std::string& text) -> std::string {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure == std::errc() && stop == end && number >= lowest && number <= highest) return {};
    return '"' + platform::printable(text) + "\" is no number from " + std::to_string(lowest) +
           " to " + std::to_string(highest);
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

inline void add_layout(CLI::App& command, std::string& layout) {
  command.add_option("LAYOUT", layout, "layout file (TOML)")->required();
}

inline void add_layouts(CLI::App& command, std::string& layout) {
  command.add_option("LAYOUT", layout, "layout file (TOML), or a folder of them")->required();
}

inline void add_record_count(CLI::App& command, const std::string& name,
                             std::optional<RecordCount>& records, const std::string& description) {
  command
      .add_option_function<std::uint64_t>(
          name, [&records](std::uint64_t number) { records = RecordCount(number); }, description)
      ->check(number_from(0, static_cast<std::int64_t>(RecordCount::most)))
      ->type_name("INT");
}

inline void add_records(CLI::App& command, std::optional<RecordCount>& records) {
  add_record_count(command, "--records", records,
                   "number of records, in place of the number in the layout");
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
              "only the I-th of N equal parts, in the folder of the file")
          ->check(CLI::Validator(check, "", ""))
          ->type_name("I/N");
  command.add_flag("--force", force, "make the part also when it is complete")->needs(option);
}

// Adds the options that say how records are written.
void add_format(CLI::App& command, FormatChoices& format);

// Whether one of them was given.
bool has_format(const CLI::App& command);

// Whether the choices go together; says so otherwise.
bool is_possible(const FormatChoices& format, std::ostream& messages);

// The console, unless the user asks for the desktop: by the option, or by KORVEX_UI.
inline void choose_interface(bool window) {
  const char* chosen = std::getenv("KORVEX_UI");
  const bool is_chosen = chosen != nullptr && !std::string_view(chosen).empty();
  if (window || !is_chosen) ::setenv("KORVEX_UI", window ? "desktop" : "console", 1);
}

inline void add_jobs(CLI::App& command, std::optional<std::size_t>& jobs) {
  const auto check = [](const std::string& text) -> std::string {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure == std::errc() && stop == end && number >= 1 && number <= most_jobs) return {};
    return '"' + platform::printable(text) + "\" is no number from 1 to " +
           std::to_string(most_jobs);
  };
  command
      .add_option("--jobs", jobs,
                  "threads that make the records (default: one for each processor, at most " +
                      std::to_string(most_usual_jobs) + ")")
      ->check(CLI::Validator(check, "", ""))
      ->type_name("J");
}

}  // namespace korvex::host
