#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace korvex::host {

// The parts of a file that stand in its folder, out of so many.
struct PartSet {
  std::uint64_t parts = 0;
  std::vector<std::uint64_t> present;  // their numbers, in order, each once
};

// All sets that files with names of parts, or of their manifests, tell of.
std::vector<PartSet> find_part_sets(const std::string& whole);

}  // namespace korvex::host
