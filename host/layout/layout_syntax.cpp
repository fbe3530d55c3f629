#include "host/layout/layout_syntax.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

#include "host/layout/key_parts.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t most_errors = 100;
constexpr std::size_t longest_shown_line = 60;
constexpr std::size_t most_tried_bytes = 16 * 1024 * 1024;
constexpr const char* blanks = " \t\r";
constexpr const char* key_characters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";

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

std::string joined(std::span<const std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

bool is_header(std::string_view line) { return trimmed(line).starts_with('['); }

// A line that stands in for an unreadable one: the table that its header means, or its key with a
// value that no key takes, so that nobody misses the key.
std::string replacement_of(std::string_view line) {
  line = trimmed(line);
  if (is_header(line)) {
    if (line.find("values") != std::string_view::npos) return "[item.values]";
    if (line.find("item") != std::string_view::npos) return "[[item]]";
    if (line.find("layout") != std::string_view::npos) return "[layout]";
    return "";
  }
  const std::size_t key = line.find_first_not_of(key_characters);
  return std::string(line.substr(0, key)) + " = []";
}

// Why a text does not read, and where that was noticed.
struct SyntaxFailure {
  std::string text;
  toml::source_position place;
};

// Nothing when the text reads, as `table`.
std::optional<SyntaxFailure> parse(std::string_view text, toml::table& table) {
  if (const auto key = find_long_key(text)) {
    return SyntaxFailure{"a key of " + std::to_string(key->parts) + " parts, expected at most " +
                             std::to_string(most_key_parts),
                         {key->place.line, key->place.column}};
  }
  try {
    table = toml::parse(text);
    return std::nullopt;
  } catch (const toml::parse_error& failure) {
    return SyntaxFailure{platform::printable(failure.description()), failure.source().begin};
  }
}

std::string described(const SyntaxFailure& failure, std::string_view line) {
  std::string text = failure.text;
  text +=
      ", in the line " + platform::printable(platform::cut_text(trimmed(line), longest_shown_line));
  if (text.find("redefine") != std::string::npos) return text + ", expected each key once";
  if (text.find("xpected") != std::string::npos) return text;
  return text + ", expected a table's header or a key with its value";
}

// Repairs a text line by line until it reads.
class Repair {
 public:
  explicit Repair(std::string_view text) : written_(lines_of(text)), lines_(written_) {}

  LayoutSyntax run() {
    // A line is replaced, and if that does not help, replaced by one that says nothing.
    for (std::size_t turns = 2 * most_errors; turns > 0; --turns) {
      const auto failure = parse(joined(lines_), syntax_.table);
      if (!failure) return std::move(syntax_);
      if (!mend(*failure)) break;
    }
    syntax_.is_incomplete = true;
    return std::move(syntax_);
  }

 private:
  // False when nothing can be done about it.
  bool mend(const SyntaxFailure& failure) {
    const toml::source_position place = failure.place;
    const auto line = static_cast<std::size_t>(place.line);
    const std::size_t begin = line_of_open_value(failure);
    const bool is_at_end = line == 0 || line > lines_.size() || trimmed(lines_[line - 1]).empty();
    if (begin != 0 && (is_at_end || begins_statement(lines_[line - 1]))) {
      return mend_open_value(failure, begin, is_at_end ? begin : line - 1);
    }
    if (line == 0 || line > lines_.size()) {
      report(failure, place, "");
      return false;
    }
    if (!syntax_.replaced_lines.contains(place.line)) {
      report(failure, place, written_[line - 1]);
      replace(line, replacement_of(lines_[line - 1]));
      return begin == 0;  // inside a value nothing stands in for a part
    }
    if (is_silent(lines_[line - 1])) return false;
    replace(line, silent(line));
    return true;
  }

  // A value goes on into the statement behind it: the line where it begins is at fault, and those
  // up to `last` are parts of it.
  bool mend_open_value(const SyntaxFailure& failure, std::size_t begin, std::size_t last) {
    const std::string& line = written_[begin - 1];
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::size_t value = std::min(line.find_first_not_of(" \t=", equals), line.size());
    if (syntax_.replaced_lines.contains(static_cast<std::uint32_t>(begin))) return false;
    report(failure, {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(value + 1)},
           line);
    replace(begin, replacement_of(line));
    for (std::size_t part = begin + 1; part <= last; ++part) replace(part, "");
    return true;
  }

  // The line where a value begins that is still open where the failure was noticed; 0 for none. It
  // is the one behind the longest text in front that reads by itself: looked for in growing steps
  // back, and then between the last two of them.
  std::size_t line_of_open_value(const SyntaxFailure& failure) {
    if (failure.text.find("redefine") != std::string::npos) return 0;
    const auto line = std::min<std::size_t>(failure.place.line, lines_.size() + 1);
    if (line <= 1 || reads_up_to(line - 1)) return 0;
    std::size_t open = line - 1;
    std::size_t step = 1;
    while (open > step && !reads_up_to(open - step)) {
      open -= step;
      step *= 2;
    }
    std::size_t reading = open > step ? open - step : 0;
    while (open - reading > 1) {
      const std::size_t middle = reading + (open - reading) / 2;
      (reads_up_to(middle) ? reading : open) = middle;
    }
    return tried_bytes_ < most_tried_bytes ? open : 0;
  }

  // Whether the first lines read by themselves. Not found out any more when much has been tried.
  bool reads_up_to(std::size_t count) {
    if (tried_bytes_ >= most_tried_bytes) return true;
    const std::string text = joined(std::span(lines_).first(count));
    tried_bytes_ += text.size();
    toml::table ignored;
    return !parse(text, ignored);
  }

  static bool begins_statement(std::string_view line) {
    line = trimmed(line);
    const std::size_t name = std::min(line.find_first_not_of("[ \t"), line.size());
    const std::string_view header = line.substr(name);
    if (name > 0 && (header.starts_with("item") || header.starts_with("layout"))) return true;
    const std::string_view key = trimmed(line.substr(0, std::min(line.find('='), line.size())));
    return key.size() < line.size() && !key.empty() &&
           key.find_first_not_of(std::string(key_characters) + ".\"' \t") == std::string_view::npos;
  }

  // A table of its own, where a header cannot stand, so that its keys go nowhere else.
  std::string silent(std::size_t line) const {
    return is_header(written_[line - 1]) ? "[unreadable_" + std::to_string(line) + "]" : "";
  }
  static bool is_silent(const std::string& line) {
    return line.empty() || line.starts_with("[unreadable_");
  }

  void replace(std::size_t line, std::string by) {
    syntax_.replaced_lines.insert(static_cast<std::uint32_t>(line));
    lines_[line - 1] = std::move(by);
  }

  void report(const SyntaxFailure& failure, const toml::source_position& place,
              std::string_view line) {
    const std::string text = line.empty() ? failure.text : described(failure, line);
    syntax_.errors.push_back({{place.line, place.column}, text});
  }

  const std::vector<std::string> written_;
  std::vector<std::string> lines_;
  LayoutSyntax syntax_;
  std::size_t tried_bytes_ = 0;
};

}  // namespace

LayoutSyntax parse_syntax(std::string_view text) { return Repair(text).run(); }

}  // namespace korvex::host
