#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "control/col_main.h"
#include "courses/enum_data_list.h"
#include "platform/file.h"
#include "values/error_codes.h"
#include "values/records.h"
#include "values/result.h"

namespace korvex {

// A line of a value list, from 1.
enum class ListLine : std::uint64_t { none = 0 };

// Checks the value list at `path` against the item's settings. Answers the number of values,
// 1 or more; `line` receives the number of the last line read, from 1, empty lines included. Sets
// the message context of `main`.
//
// The first bad line ends it with that line's code. -111, -114, -115 the file cannot be used, -121
// it cannot be opened, -122 not read, -136 it has no value, -1 memory. Values are appended to
// `values` unless that is null; after a failure they are not to be used. Without the
// lock for `sharing` the result is -115: the file alone, or together with other readers.
Result<std::size_t> check_enumeration(ClColMain& main, const std::string& path,
                                      const FmtColRec& settings, ListLine& line,
                                      ClEnumDataList* values = nullptr,
                                      platform::Sharing sharing = platform::Sharing::exclusive);

// The same for the beginning of a list: reads no further than about `most_bytes`, takes the values
// so far, and says whether these are all.
Result<std::size_t> look_into_enumeration(ClColMain& main, const std::string& path,
                                          const FmtColRec& settings, std::uint64_t most_bytes,
                                          ListLine& line, ClEnumDataList& values, bool& is_whole);

// Where a run reports the bad lines of a list: the path with ".err" appended.
std::string error_file_path(const std::string& path);

// The same as the check for a run that writes a file: every bad line is reported in the list's
// error file, whose path `main` receives. -135 when a line was bad; the report then stays,
// otherwise it is removed. Also -123 and -124 when the report cannot be opened or written. After a
// failure `values` is not to be used.
Result<std::size_t> load_enumeration(ClColMain& main, const std::string& path,
                                     const FmtColRec& settings, ClEnumDataList& values);

// Whether a file can be used, each asked by opening it and closing it again: the code of the
// one cause that the check is for. Every other cause passes.

ErrorCode check_file_exists(const std::string& path);  // -114
// -115: no other process has it open, or with Sharing::shared no process that wants it alone.
ErrorCode check_file_not_in_use(const std::string& path,
                                platform::Sharing sharing = platform::Sharing::exclusive);
ErrorCode check_file_readable(const std::string& path);  // -111
ErrorCode check_file_writable(const std::string& path);  // -116

}  // namespace korvex
