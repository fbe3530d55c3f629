#include "host/layout/layout_paths.h"

#include "platform/path.h"

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

}  // namespace korvex::host
