#include "host/parts/output_form.h"

#include "host/records/stream_team.h"
#include "run/line_team.h"

namespace korvex::host {

namespace {

constexpr std::string_view data_file_name = "data";
constexpr std::string_view in_utf8 = " utf-8";
constexpr std::string_view in_code_page = " cp932";
constexpr std::string_view with_header = " header";
constexpr std::string_view with_table = " table ";

// A table's name may hold anything; in a manifest it stays on its line.
std::string to_one_line(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c == '\\' || c == '\n') line += '\\';
    line += c == '\n' ? 'n' : c;
  }
  return line;
}

std::optional<std::string> from_one_line(std::string_view line) {
  std::string text;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool is_escape = line[i] == '\\';
    if (is_escape && ++i == line.size()) return std::nullopt;
    text += is_escape && line[i] == 'n' ? '\n' : line[i];
  }
  return text;
}

bool skip(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

}  // namespace

std::string text_of(const OutputForm& form) {
  if (form.is_data_file) return std::string(data_file_name);
  std::string text;
  for (const auto& [name, dialect] : dialect_names) {
    if (dialect == form.format.dialect) text = name;
  }
  text += form.format.in_code_page ? in_code_page : in_utf8;
  if (form.format.header) text += with_header;
  if (!form.format.table.empty()) text.append(with_table).append(to_one_line(form.format.table));
  return text;
}

std::optional<OutputForm> parse_output_form(std::string_view text) {
  OutputForm form;
  if (text == data_file_name) return form;
  form.is_data_file = false;
  bool has_dialect = false;
  for (const auto& [name, dialect] : dialect_names) {
    if (has_dialect || !skip(text, name)) continue;
    form.format.dialect = dialect;
    has_dialect = true;
  }
  form.format.in_code_page = skip(text, in_code_page);
  if (!has_dialect || (!form.format.in_code_page && !skip(text, in_utf8))) return std::nullopt;
  form.format.header = skip(text, with_header);
  if (skip(text, with_table)) {
    const auto table = from_one_line(text);
    if (!table) return std::nullopt;
    form.format.table = *table;
    text = {};
  }
  return text.empty() ? std::optional(form) : std::nullopt;
}

std::unique_ptr<RecordStream> stream_of(PreparedLayout& prepared, const OutputForm& form) {
  const StreamMaker make = [form](PreparedLayout& layout) {
    return form.is_data_file ? data_file_stream(layout) : export_stream(layout, form.format);
  };
  const std::size_t threads = generating_threads();
  return threads > 0 ? stream_by_threads(prepared, make, threads) : make(prepared);
}

}  // namespace korvex::host
