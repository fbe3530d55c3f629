#include "host/layout/layout_syntax.h"

#include <algorithm>
#include <string>

#include "host/layout/source_place.h"
#include "platform/printable_text.h"
#include "platform/text_lines.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t longest_shown_line = 60;

// Empty after the last line.
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

namespace {

constexpr const char* blanks = " \t";

bool ends_key(char byte) {
  switch (byte) {
    case '=':
    case ',':
    case '[':
    case ']':
    case '{':
    case '}':
    case '\n':
      return true;
    default:
      return false;
  }
}

// Where the string ends that begins at `place`, in one of the four ways to quote it.
std::size_t end_of_string(std::string_view text, std::size_t place) {
  const char quote = text[place];
  const std::string_view three = quote == '"' ? R"(""")" : "'''";
  const bool has_lines = text.substr(place).starts_with(three);
  for (std::size_t i = place + (has_lines ? three.size() : 1); i < text.size(); ++i) {
    if (quote == '"' && text[i] == '\\') {
      ++i;
    } else if (!has_lines && (text[i] == quote || text[i] == '\n')) {
      return i + (text[i] == quote ? 1 : 0);
    } else if (has_lines && text.substr(i).starts_with(three)) {
      // Up to two more quotation marks still belong to the string.
      const std::size_t end = i + three.size();
      const std::size_t after = std::min(text.find_first_not_of(quote, end), text.size());
      return std::min(after, end + 2);
    }
  }
  return text.size();
}

SourcePlace place_of_key(std::string_view text, std::size_t begin) {
  return place_at(text, std::min(text.find_first_not_of(blanks, begin), text.size()));
}

}  // namespace

std::optional<LongKey> find_long_key(std::string_view text) {
  std::size_t begin = 0;
  std::size_t parts = 1;
  for (std::size_t i = 0; i <= text.size();) {
    const bool is_end = i == text.size() || ends_key(text[i]);
    if (is_end && parts > most_key_parts) return LongKey{place_of_key(text, begin), parts};
    if (is_end) {
      begin = ++i;
      parts = 1;
    } else if (text[i] == '"' || text[i] == '\'') {
      i = end_of_string(text, i);
    } else if (text[i] == '#') {
      i = std::min(text.find('\n', i), text.size());
    } else {
      parts += text[i] == '.' ? 1 : 0;
      ++i;
    }
  }
  return std::nullopt;
}

}  // namespace korvex::host
