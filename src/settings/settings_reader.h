#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "settings/fmt_com.h"
#include "values/error_codes.h"

namespace korvex {

inline constexpr std::string_view current_magic = "TAMBO DATA FORMAT V3L1";
inline constexpr std::string_view previous_magic = "TAMBO DATA FORMAT V2L1";

// The previous version's item settings record: the fields of FmtColRec before the repeat fields,
// and eight bytes more.
inline constexpr std::size_t previous_column_size = 388;

// Whether the header begins with the magic and nothing but zeros after it.
bool has_magic(const FmtHeadRec& header, std::string_view magic);

// Reads records one after the other out of untrusted bytes.
class RecordCursor {
 public:
  RecordCursor(std::string_view bytes, std::size_t offset) : bytes_(bytes), offset_(offset) {}

  // Whether so many records of the size could follow: a claimed count is checked before it is used.
  bool holds(std::int64_t count, std::size_t record_size) const;

  // Copies the next bytes to `record`; false, and nothing copied, when they are not there.
  bool read(void* record, std::size_t size);

  // Passes over bytes that holds() has found there.
  void skip(std::size_t size) { offset_ += size; }

  template <typename Record>
  bool read(Record& record) {
    return read(&record, sizeof record);
  }

 private:
  std::size_t remaining() const { return bytes_.size() - std::min(offset_, bytes_.size()); }

  std::string_view bytes_;
  std::size_t offset_;
};

// The first `size` bytes of an open file, or as many as there are. False when they cannot be read;
// may raise std::bad_alloc.
bool read_front(platform::File& file, std::uint64_t size, std::vector<char>& bytes);

// Fills `com` from a settings file: header, levels, and the items of the level numbered
// `level`, which becomes current with `records` records and is appended when the file lacks it.
// Only as much of the file is read as its levels reach; the areas of other levels are views into
// those bytes, so that no claim of the file, overlapping areas among them, takes more memory than
// the file itself. Codes: -3 truncated, -4 a data area inside the tables, -5 no current settings
// file, -57 of another layout kind. On an error `com` holds no levels. May raise std::bad_alloc.
ErrorCode read_settings(platform::File& file, SettingsLevel level, StoredRecords records,
                        LayoutKind layout_kind, ClFmtCom& com);

}  // namespace korvex
