#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "host/records/record_format.h"

namespace korvex::host {

struct VerifyOptions {
  std::string layout;
  std::vector<std::string> files;  // none: the layout's data file
  std::optional<std::int32_t> records;
  FormatChoices format;
  bool content = false;
  std::int32_t places = 0;
  std::int32_t parts = 0;
  bool keep_settings = false;
};

// Says of files whether they hold the records of a layout: what is complete on `out`, what is not
// and why on `messages`. `has_format`: in the format of the options, else in that of the manifests
// beside the files, or as generated. The program's exit status, failed for what is not complete.
int run_verify(const VerifyOptions& options, bool has_format, std::ostream& out,
               std::ostream& messages);

}  // namespace korvex::host
