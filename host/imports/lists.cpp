#include "host/imports/lists.h"

#include <algorithm>

#include "host/text/code_page_text.h"
#include "lists/enumeration_value.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

// As many as a person still reads in a line.
constexpr std::size_t most_values_in_layout = 16;
constexpr std::size_t most_text_in_layout = 400;
// A longer line would be read as several.
constexpr std::size_t longest_line = 32'768;

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

std::vector<ColumnValues> table_values(const TextRows& rows, const std::vector<std::string>& names,
                                       const std::string& layout_file, const std::string& column,
                                       std::vector<FileDraft>& lists) {
  std::size_t longest = 1;
  std::string content;
  const auto add_line = [&](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) content += (&text == &texts.front() ? "" : "\t") + text;
    content += "\n";
  };
  if (names.size() > 1) add_line(names);
  for (const auto& row : rows) {
    for (const std::string& text : row) longest = std::max(longest, text.size());
    add_line(row);
  }
  const std::string file = add_list_file(layout_file, column, std::move(content), lists);
  std::vector<ColumnValues> values(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    values[i].attributes = text_attributes(longest);
    values[i].keys = {{"type", toml_text("list")}, {"file", toml_text(file)}};
    if (names.size() > 1) values[i].keys.push_back({"column", toml_text(names[i])});
  }
  return values;
}

std::optional<std::string> list_line(std::string_view text, bool is_encoded) {
  // A tab separates the columns of a table.
  const std::string_view refused = is_encoded ? std::string_view("\0\r\n", 3) : "\t\r\n";
  const bool is_line = !text.empty() && text.find_first_of(refused) == std::string_view::npos &&
                       text.find('\0') == std::string_view::npos;
  if (!is_line) return std::nullopt;
  if (!is_encoded) return std::string(text);
  auto line = exact_code_page_text(text);
  if (line && line->size() > longest_line) return std::nullopt;
  return line;
}

std::vector<LayoutKey> enumeration_keys(const std::vector<std::string>& lines,
                                        const ColumnSchema& column, const std::string& layout_file,
                                        std::vector<FileDraft>& lists, ItemAttributes& item) {
  std::string content;
  std::size_t longest = static_cast<std::size_t>(
      column.type == ColumnType::text && column.length > 0 ? column.length : 1);
  // Where the two are numbers, they are numbers for other programs, too.
  const bool is_flag = column.type == ColumnType::boolean && column.choices.front() == "0";
  const auto number = is_flag ? std::optional(ItemAttributes{attribute::decimal, Flag::on, 2, 1, 0})
                              : number_attributes(column);
  bool fits_number = number.has_value();
  const EnumerationRule rule(number.value_or(text_attributes(1)));
  for (const std::string& line : lines) {
    longest = std::max(longest, line.size());
    fits_number = fits_number && rule.check(line) == error::none;
    content += line + "\n";
  }
  item = fits_number ? *number : text_attributes(longest);
  const std::string file = add_list_file(layout_file, column.name, std::move(content), lists);
  return {{"type", toml_text("enumeration")}, {"file", toml_text(file)}};
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
