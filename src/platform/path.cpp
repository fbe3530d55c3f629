#include "platform/path.h"

namespace korvex::platform {

std::string join_path(std::string_view folder, std::string_view name) {
  if (folder.empty()) return std::string(name);
  std::string path(folder);
  if (path.back() != '/') path += '/';
  return path.append(name);
}

std::string_view base_name(std::string_view path) {
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view stem(std::string_view path) {
  const std::string_view base = base_name(path);
  return base.substr(0, base.rfind('.'));
}

bool is_plain_name(std::string_view text) {
  return !text.empty() && text != "." && text != ".." && text.find('/') == std::string_view::npos;
}

std::string folder_of(std::string_view path) {
  const auto slash = path.rfind('/');
  if (slash == std::string_view::npos) return ".";
  return std::string(path.substr(0, slash == 0 ? 1 : slash));
}

}  // namespace korvex::platform
