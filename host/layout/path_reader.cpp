#include "host/layout/path_reader.h"

#include "host/layout/layout_paths.h"

namespace korvex::host {

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

}  // namespace korvex::host
