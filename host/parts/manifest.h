#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/parts/part.h"

namespace korvex::host {

// What is beside a part that is complete. It is written after the part, so that there is none
// beside one that is not.
struct Manifest {
  Part part;
  RecordRange records;
  std::uint64_t bytes = 0;
  std::uint64_t checksum = 0;
  std::string form;         // as text_of() says it
  std::string fingerprint;  // of all that the bytes depend on
};

// A short text that tells the file of a part from any other, and from the same part of another
// layout. Files bear it where the file system lets them, so that a file and a manifest that two
// runs have put beside each other are not taken for one part.
std::string mark_of(const Manifest& manifest);

// Lines of a key and a value, with a digest of them all in the last one.
std::string text_of(const Manifest& manifest);

// Nothing unless the text is what text_of() gives, to the last byte.
std::optional<Manifest> parse_manifest(std::string_view text);

// Reads the manifest at a path: nothing when there is none, or it is not whole. `is_there` receives
// which of the two it is.
std::optional<Manifest> read_manifest(const std::string& path, bool* is_there = nullptr);

}  // namespace korvex::host
