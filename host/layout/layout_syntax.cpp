#include "host/layout/layout_syntax.h"

#include <string>

#include "host/text/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::size_t most_errors = 100;
constexpr std::size_t longest_shown_line = 60;
constexpr const char* blanks = " \t\r";

std::string_view trimmed(std::string_view line) {
  const std::size_t begin = std::min(line.find_first_not_of(blanks), line.size());
  const std::size_t end = line.find_last_not_of(blanks);
  return end == std::string_view::npos ? "" : line.substr(begin, end + 1 - begin);
}

std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// A line that stands in for an unreadable one: the table that its header means, or its key with a
// value that no key takes, so that nobody misses the key.
std::string replacement_of(std::string_view line) {
  line = trimmed(line);
  if (line.starts_with('[')) {
    if (line.find("values") != std::string_view::npos) return "[item.values]";
    if (line.find("item") != std::string_view::npos) return "[[item]]";
    if (line.find("layout") != std::string_view::npos) return "[layout]";
    return "";
  }
  const std::size_t key =
      line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-");
  return std::string(line.substr(0, key)) + " = []";
}

std::string described(const toml::parse_error& failure, std::string_view line) {
  std::string text(failure.description());
  std::string_view shown = trimmed(line);
  if (shown.size() > longest_shown_line) shown = shown.substr(0, longest_shown_line);
  text += ", in the line " + printable(shown);
  if (text.find("redefine") != std::string::npos) return text + ", expected each key once";
  if (text.find("xpected") != std::string::npos) return text;
  return text + ", expected a table's header or a key with its value";
}

// Where a line begins a value that it does not end; npos when it does not.
std::size_t unclosed_value(std::string_view line) {
  static constexpr std::pair<std::string_view, std::string_view> brackets[] = {
      {"[", "]"}, {R"(""")", R"(""")"}, {"'''", "'''"}};
  const std::size_t value = line.find_first_not_of(" \t=", line.find('='));
  if (value == std::string_view::npos) return value;
  for (const auto& [begin, end] : brackets) {
    if (!line.substr(value).starts_with(begin)) continue;
    const bool ends = line.find(end, value + begin.size()) != std::string_view::npos;
    return ends ? std::string_view::npos : value;
  }
  return std::string_view::npos;
}

// Where the failure lies: that a value of several lines does not end is noticed far behind it.
toml::source_position place_of(const toml::parse_error& failure,
                               const std::vector<std::string>& lines) {
  const toml::source_position place = failure.source().begin;
  const std::string_view description = failure.description();
  const bool has_several_lines = description.find("array") != std::string_view::npos ||
                                 description.find("end-of-file") != std::string_view::npos;
  for (auto line = has_several_lines ? place.line : 0; line > 0; --line) {
    if (line > lines.size()) continue;
    const std::size_t open = unclosed_value(lines[line - 1]);
    if (open != std::string_view::npos) return {line, static_cast<std::uint32_t>(open + 1)};
  }
  return place;
}

}  // namespace

LayoutSyntax parse_syntax(std::string_view text) {
  LayoutSyntax syntax;
  const std::vector<std::string> written = lines_of(text);
  std::vector<std::string> lines = written;
  // A line is replaced, and if that does not help, emptied.
  for (std::size_t turns = 2 * most_errors; turns > 0; --turns) {
    try {
      syntax.table = toml::parse(joined(lines));
      return syntax;
    } catch (const toml::parse_error& failure) {
      const toml::source_position place = place_of(failure, lines);
      if (place.line == 0 || place.line > lines.size()) {
        syntax.errors.push_back({{place.line, place.column}, std::string(failure.description())});
        break;
      }
      std::string& line = lines[place.line - 1];
      const bool is_new = syntax.replaced_lines.insert(place.line).second;
      if (is_new) {
        syntax.errors.push_back(
            {{place.line, place.column}, described(failure, written[place.line - 1])});
      } else if (line.empty()) {
        break;
      }
      line = is_new ? replacement_of(line) : "";
    }
  }
  syntax.is_incomplete = true;
  return syntax;
}

}  // namespace korvex::host
