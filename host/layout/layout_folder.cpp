#include "host/layout/layout_folder.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "platform/printable_text.h"

namespace korvex::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* layout_extension = ".toml";

}  // namespace

bool is_folder(const std::string& path) {
  std::error_code failure;
  return fs::is_directory(path, failure);
}

std::optional<std::vector<std::string>> layouts_at(const std::string& path,
                                                   std::ostream& messages) {
  if (!is_folder(path)) return std::vector{path};
  std::vector<std::string> files;
  std::error_code failure;
  for (fs::directory_iterator entry(path, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const fs::path& file = entry->path();
    // A hidden file is an editor's.
    if (file.extension() != layout_extension || file.filename().native().front() == '.') continue;
    if (!is_folder(file)) files.push_back(file);
  }
  if (failure) {
    messages << platform::printable(path) << ": cannot be read: " << failure.message() << std::endl;
    return std::nullopt;
  }
  if (files.empty()) {
    messages << platform::printable(path) << ": is a folder without layouts, expected files whose "
             << "names end in " << layout_extension << std::endl;
    return std::nullopt;
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace korvex::host
