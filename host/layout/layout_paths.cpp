#include "host/layout/layout_paths.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "host/layout/table_reader.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {
constexpr std::string_view settings_extension = ".fif";

std::string named_after(std::string_view data_path, std::string_view extension) {
  return std::string(platform::stem(data_path)).append(extension);
}
}  // namespace

std::string layout_folder(std::string_view layout_file) { return platform::folder_of(layout_file); }

std::string path_beside_layout(std::string_view layout_file, std::string_view path) {
  const bool in_working_folder = layout_file.find('/') == std::string_view::npos;
  if (path.starts_with('/') || in_working_folder) return std::string(path);
  return platform::join_path(layout_folder(layout_file), path);
}

std::string default_settings_path(std::string_view data_path) {
  const std::string name = named_after(data_path, settings_extension);
  const std::string_view base = platform::base_name(data_path);
  return std::string(data_path.substr(0, data_path.size() - base.size())) + name;
}

std::string read_path(TableReader& reader, std::string_view key, const std::string& layout_file) {
  const auto text = reader.text(key);
  if (!text) return {};
  const auto reject = [&](const std::string& what) {
    reader.report(reader.place(key), std::string(key) + what);
    return std::string();
  };
  if (text->empty()) return reject(" is empty, expected a path");
  if (text->find('\0') != std::string::npos)
    return reject(" has a zero character, expected a path");
  return path_beside_layout(layout_file, *text);
}

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
