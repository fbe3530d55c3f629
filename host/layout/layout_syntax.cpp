#include "host/layout/layout_syntax.h"

#include <string>

#include "host/layout/key_parts.h"
#include "platform/printable_text.h"
#include "platform/text_lines.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t longest_shown_line = 60;

// Empty behind the last line.
std::string_view line_at(std::string_view text, std::uint32_t number) {
  for (std::uint32_t i = 1; i < number; ++i) platform::take_line(text);
  return platform::trimmed(platform::take_line(text), " \t\r");
}

// The place alone says little to somebody who never saw the grammar.
LayoutError syntax_error(std::string_view text, SourcePlace place, std::string what) {
  const std::string_view line = line_at(text, place.line);
  if (line.empty()) return {place, std::move(what)};
  what += ", in the line " + platform::printable(platform::cut_text(line, longest_shown_line));
  if (what.find("redefine") != std::string::npos) {
    what += ", expected each key once";
  } else if (what.find("end-of-file") != std::string::npos) {
    what += ", expected its end";
  } else if (what.find("xpected") == std::string::npos) {
    what += ", expected a table's header or a key with its value";
  }
  return {place, std::move(what)};
}

}  // namespace

std::optional<LayoutError> parse_syntax(std::string_view text, toml::table& table) {
  if (const auto key = find_long_key(text)) {
    return syntax_error(text, key->place,
                        "a key of " + std::to_string(key->parts) + " parts, expected at most " +
                            std::to_string(most_key_parts));
  }
  try {
    table = toml::parse(text);
    return std::nullopt;
  } catch (const toml::parse_error& failure) {
    const toml::source_position place = failure.source().begin;
    return syntax_error(text, {place.line, place.column},
                        platform::printable(failure.description()));
  }
}

}  // namespace korvex::host
