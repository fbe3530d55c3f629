#include <algorithm>
#include <filesystem>
#include <map>

#include "host/parts/part.h"
#include "host/parts/part_state.h"
#include "host/process/signals.h"
#include "platform/path.h"

namespace korvex::host {

std::vector<PartSet> find_part_sets(const std::string& whole) {
  const std::string_view name = platform::base_name(whole);
  const std::string manifest = manifest_path("");
  std::map<std::uint64_t, std::vector<std::uint64_t>> found;
  std::error_code failure;
  std::filesystem::directory_iterator entry(platform::folder_of(whole), failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    check_interruption();
    std::string file = entry->path().filename().string();
    if (!file.starts_with(name)) continue;
    const bool is_manifest = file.ends_with(manifest);
    if (is_manifest) file.resize(file.size() - manifest.size());
    const auto part = parse_part_path(file);
    if (!part || part->whole != name) continue;
    // A manifest tells how many parts there are to be, not that its part is there.
    std::vector<std::uint64_t>& present = found[part->part.parts];
    if (!is_manifest) present.push_back(part->part.number);
  }
  std::vector<PartSet> sets;
  for (auto& [parts, present] : found) {
    std::sort(present.begin(), present.end());
    sets.push_back({parts, std::move(present)});
  }
  return sets;
}

}  // namespace korvex::host
