#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/parts/manifest.h"

namespace korvex::host {

// What manifest, size and mark say of a part. Its bytes are read only where it has changed after
// its manifest was written.
struct PartState {
  std::string fault = {};                 // what it is instead of complete, as "missing"
  std::optional<Manifest> manifest = {};  // nothing when it can't be read
  bool is_proven = false;                 // mark or bytes say that the manifest is the file's own
};

PartState state_of_part(const std::string& path, const Manifest& expected);

// Whether a part need not be made: its mark shows that it is complete, or its bytes do.
bool is_complete(const std::string& path, const Manifest& expected);

// Whether the bytes of a file are those that its manifest describes.
bool has_bytes_of(const std::string& path, const Manifest& manifest);

// The parts of a file that are in its folder, out of so many.
struct PartSet {
  std::uint64_t parts = 0;
  std::vector<std::uint64_t> present;  // their numbers, in order, each once
};

// All sets of which there are parts or manifests, by the names of the files.
std::vector<PartSet> find_part_sets(const std::string& whole);

}  // namespace korvex::host
