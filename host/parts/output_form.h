#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/records/record_stream.h"

namespace korvex::host {

// How the records of a layout become bytes: as the data file that `generate` writes, or as `export`
// with its options does.
struct OutputForm {
  bool is_data_file = true;
  FormatChoices format;
};

// In one line, for manifests: `data`, `csv utf-8 header`, `sql cp932 table TABLE`.
std::string text_of(const OutputForm& form);
std::optional<OutputForm> parse_output_form(std::string_view text);

// With as many threads as the command allows.
std::unique_ptr<RecordStream> stream_of(PreparedLayout& prepared, const OutputForm& form);

}  // namespace korvex::host
