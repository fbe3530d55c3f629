#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/parts/part.h"

namespace korvex::host {

// The file that belongs to a complete part. It is written after the part, so that an incomplete
// part has none.
struct Manifest {
  Part part;
  RecordRange records;
  std::uint64_t bytes = 0;
  std::uint64_t checksum = 0;
  std::string form;         // as text_of() says it
  std::string fingerprint;  // of all that the bytes depend on
};

// A short text that identifies the file of a part: another part, or the same part of another
// layout, has another one. Files have it as an attribute if the file system supports that, so that
// the file of one run and the manifest of another are not taken for one part.
std::string mark_of(const Manifest& manifest);

// Lines of a key and a value, with a digest of them all in the last one.
std::string text_of(const Manifest& manifest);

// Nothing unless the text is what text_of() gives, to the last byte.
std::optional<Manifest> parse_manifest(std::string_view text);

// Reads the manifest at a path: nothing when there is none, or it is not whole. `is_there` receives
// which of the two it is.
std::optional<Manifest> read_manifest(const std::string& path, bool* is_there = nullptr);

}  // namespace korvex::host
