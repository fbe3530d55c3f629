#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "host/parts/plan.h"
#include "host/records/record_format.h"

namespace korvex::host {

struct PlanOptions {
  std::string layout;
  PlanEngine engine = PlanEngine::parallel;
  std::optional<std::int32_t> parts;
  std::optional<std::uint64_t> most_bytes;  // in place of the number of parts
  std::string output;                       // empty: the data file, as generated
  FormatChoices format;
  std::optional<std::int32_t> records;
};

// Prints the script with which an engine makes all parts of a file. `has_format`: the options say a
// format, which needs an output. The program's exit status.
int run_plan(const PlanOptions& options, bool has_format, std::ostream& out,
             std::ostream& messages);

}  // namespace korvex::host
