#include "generate/record_writer.h"

#include "format/error_codes.h"
#include "format/file_failure.h"
#include "format/records.h"

namespace korvex {

RecordWriter::RecordWriter(platform::File& file, std::int32_t layout_kind,
                           std::int32_t output_option)
    : file_(file),
      drops_last_comma_(layout_kind == layout_kind::third),
      is_limited_(output_option == guarded_output) {}

std::int32_t RecordWriter::write(RecordLine& line) {
  if (drops_last_comma_ && line.size() > 0 && line.back() == ',') {
    line.back() = '\n';
  } else {
    line.require(1);
    line.append('\n');
  }
  total_bytes_ += line.size();
  if (is_limited_ && total_bytes_ >= output_limit_bytes) return error::output_limit;
  const platform::FileCause cause = file_.write(line.data(), line.size());
  return cause == platform::FileCause::none ? 0 : write_failure(cause);
}

}  // namespace korvex
