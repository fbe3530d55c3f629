#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace korvex::host {

struct NewOptions {
  std::string output = "-";
  std::optional<std::string> kind;
  std::optional<std::string> data;
  std::optional<std::int32_t> records;
  // NAME:ATTRIBUTE, with :SIZE and :DECIMALS where the attribute needs them; a + behind the size
  // stands for a signed number.
  std::vector<std::string> items;
};

// Writes a layout to start from. What the options leave open is asked for on `messages` and
// answered on `in`, if somebody is there to answer; otherwise it has a default. A file that is
// there already is left alone. Answers the program's exit status.
int run_new(const NewOptions& options, std::istream* in, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
