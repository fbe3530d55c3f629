#include "host/imports/lists.h"

#include <algorithm>

#include "platform/utf8.h"

namespace korvex::host {

namespace {

// As many as a person still reads in a line.
constexpr std::size_t most_values_in_layout = 16;
constexpr std::size_t most_text_in_layout = 400;

}  // namespace

std::string file_name_part(std::string_view name) {
  std::string part;
  while (!name.empty()) {
    const std::size_t size = platform::first_character_size(name);
    const bool is_kept =
        size > 0 && name.front() != '/' && static_cast<unsigned char>(name.front()) >= ' ';
    part += is_kept ? name.substr(0, size) : "_";
    name.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return part;
}

std::string add_list_file(const std::string& layout_file, const std::string& column,
                          std::string content, std::vector<FileDraft>& lists) {
  const std::string stem =
      layout_file.substr(0, layout_file.rfind('.')) + "." + file_name_part(column);
  std::string name = stem + ".txt";
  const auto is_taken = [&](const FileDraft& list) { return list.name == name; };
  for (int i = 2; std::any_of(lists.begin(), lists.end(), is_taken); ++i) {
    name = stem + "." + std::to_string(i) + ".txt";
  }
  lists.push_back({name, std::move(content)});
  return name;
}

std::vector<LayoutKey> list_keys(std::vector<std::string> values, const std::string& layout_file,
                                 const std::string& column, std::vector<FileDraft>& lists) {
  std::size_t size = 0;
  std::string content;
  bool has_lines = true;
  for (const std::string& value : values) {
    size += value.size();
    has_lines = has_lines && value.find('\n') == std::string::npos;
    content += value + "\n";
  }
  const bool is_short = values.size() <= most_values_in_layout && size <= most_text_in_layout;
  if (is_short || !has_lines) {
    return {{"type", toml_text("list")}, {"values", toml_texts(values)}};
  }
  const std::string file = add_list_file(layout_file, column, std::move(content), lists);
  return {{"type", toml_text("list")}, {"file", toml_text(file)}};
}

}  // namespace korvex::host
