#pragma once

#include <string>

#include "host/databases/database.h"

namespace korvex::host {

// Appends a row in the text form that COPY reads: fields between tabs, NULL as \N, and escapes for
// the characters that would mean something else.
void append_copy_row(const RowFields& fields, std::string& out);

// Where a failed COPY says that it was. The words differ with the server's language, the order of
// table, line and column does not.
struct CopyPlace {
  std::int64_t line = 0;  // from 1; 0 when the text names none
  std::string column;     // empty when it names none
};

// `table` is the table's bare name, `columns` are those of the COPY.
CopyPlace find_copy_place(std::string_view context, std::string_view table,
                          const std::vector<std::string>& columns);

// Where the columns of the key that `detail` speaks of (see below) are among those of the COPY;
// none when one of them does not.
std::vector<std::size_t> key_places(std::string_view detail,
                                    const std::vector<std::string>& columns);

// The columns that the key of a partitioned table looks at, by the server's sentence about a row
// that goes to no partition ("Partition key of the failing row contains (a) = (1)."); none for
// another.
std::vector<std::size_t> partition_places(std::string_view detail,
                                          const std::vector<std::string>& columns);

// A value of a key as it was sent, and its column.
struct KeyPart {
  std::string_view value;
  const ColumnSchema& column;
};

// Whether `detail`, the server's sentence about a violated key ("Key (a, b)=(1, 2) ..."), speaks of
// this one. The server writes a value by its column's type, and not as it was sent.
bool names_key(std::string_view detail, const std::vector<KeyPart>& key);

}  // namespace korvex::host
