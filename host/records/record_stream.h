#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/records/prepared_layout.h"
#include "host/records/record_format.h"
#include "host/records/record_number.h"

namespace korvex::host {

// What a byte of the records belongs to.
struct RecordPlace {
  RecordNumber record;
  std::string item;  // as a terminal shows it; empty for what is between the items
};

// The records of a layout as the bytes that a file of them has: any range of them, whose bytes in a
// row are those of the whole. What comes before the first record belongs to the first, what comes
// after the last to the last.
class RecordStream {
 public:
  virtual ~RecordStream() = default;

  // Goes to the first record of a range of the layout's, at whose end the stream ends. `has_head`:
  // with what comes before the first record, although that may not be in the range.
  virtual void go_to(RecordRange range, bool has_head) = 0;

  // The next bytes, of whole records; they are valid until the next call. Empty at the end, and
  // after a failure. Throws Interrupted.
  virtual std::string_view next() = 0;

  // How many records the stream has given since go_to().
  virtual RecordCount records() const = 0;

  // Why it ended early, for the user; empty if it did not.
  virtual const std::string& failure() const = 0;

  // What the byte at an offset of the last bytes belongs to. The stream is then elsewhere.
  virtual RecordPlace place_of(std::size_t offset) = 0;

  // The bytes of a range without what comes before its first record; nothing where only making them
  // can tell.
  virtual std::optional<ByteCount> size(RecordRange) const { return std::nullopt; }
};

// Hands the bytes of a range to `take`, piece by piece, as long as `is_wanted` answers true.
template <typename IsWanted, typename Take>
void take_bytes(RecordStream& stream, RecordRange range, bool has_head, const IsWanted& is_wanted,
                const Take& take) {
  stream.go_to(range, has_head);
  for (std::string_view bytes; is_wanted() && !(bytes = stream.next()).empty();) take(bytes);
}

// As `generate` writes them. The layout must outlive the stream, and nobody else takes its records.
std::unique_ptr<RecordStream> data_file_stream(PreparedLayout& prepared);

// As `export` writes them.
std::unique_ptr<RecordStream> export_stream(PreparedLayout& prepared, const FormatChoices& choices);

}  // namespace korvex::host
