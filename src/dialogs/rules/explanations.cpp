#include "dialogs/rules/explanations.h"

#include <algorithm>
#include <array>

#include "values/number_text.h"

namespace korvex {

namespace {

std::string_view class_name(Attribute attribute) {
  switch (value_class_of(attribute)) {
    case ValueClass::numeric:
      return "number";
    case ValueClass::character:
      return "character";
    case ValueClass::national:
      return "national character";
    case ValueClass::date:
      return "date";
    case ValueClass::time:
      return "time";
    case ValueClass::timestamp:
      return "timestamp";
    default:
      return "takes no format";
  }
}

std::string_view yes_or_no(bool is_so) { return is_so ? "yes" : "no"; }

std::string repeated(std::string_view text, std::int64_t count) {
  std::string whole;
  for (; count > 0; --count) whole += text;
  return whole;
}

// The longest example that a tooltip shows.
constexpr std::int64_t max_example_characters = 64;

// A directive's size: a number, or one on each side of a point.
struct Size {
  std::int64_t whole = 1;
  std::int64_t decimals = 0;
};

Size read_size(std::string_view text) {
  const auto number = [](std::string_view part) {
    return std::clamp<std::int64_t>(decimal_prefix(part), 0, max_example_characters);
  };
  const std::size_t point = text.find('.');
  if (text.empty()) return {};
  if (point == std::string_view::npos) return {number(text), 0};
  return {number(text.substr(0, point)), number(text.substr(point + 1))};
}

std::string example_number(const Size& size) {
  if (size.decimals == 0) return repeated("0", size.whole - 1) + "1";
  return repeated("0", std::max<std::int64_t>(size.whole, 1)) + "." +
         repeated("0", size.decimals - 1) + "1";
}

std::string example_day(const Size& size) { return size.whole == 4 ? "20240131" : "240131"; }

struct Directive {
  std::string_view letters;
  std::string_view meaning;
  std::string (*example)(const Size& size);
};

// Where one ends like another, the longer letters come first.
constexpr std::array directives = {
    Directive{"YMD", "a date of the calendar", example_day},
    Directive{"YMA", "a date, with 31 days in every month", example_day},
    Directive{"TS", "a date and a time",
              [](const Size&) { return std::string("20240131 235959"); }},
    Directive{"T", "a time of day", [](const Size&) { return std::string("235959"); }},
    Directive{"U", "a number without a sign", example_number},
    Directive{"D", "a number with its sign",
              [](const Size& size) { return "+" + example_number(size); }},
    Directive{"S", "upper-case letters",
              [](const Size& size) { return repeated("A", size.whole); }},
    Directive{"s", "lower-case letters",
              [](const Size& size) { return repeated("a", size.whole); }},
    Directive{"N", "full-width characters",
              [](const Size& size) { return repeated("あ", size.whole); }},
};

// A user's example may hold what is no directive: nothing is said of it.
std::string explain_directive(std::string_view text) {
  for (const Directive& directive : directives) {
    if (!text.ends_with(directive.letters)) continue;
    const Size size = read_size(text.substr(0, text.size() - directive.letters.size()));
    return "%" + std::string(text) + ": " + std::string(directive.meaning) + ", for example " +
           directive.example(size);
  }
  return {};
}

}  // namespace

std::string explain_item(const ClDGCol& item) {
  std::string text = "Attribute: " + std::to_string(number_of(item.attribute)) + " (";
  text.append(class_name(item.attribute)).append(")\n");
  text += "Length: " + std::to_string(item.length) + " bytes\n";
  text += "Digits: " + std::to_string(item.digits);
  if (item.decimals != 0) text += ", decimals: " + std::to_string(item.decimals);
  text.append("\nSigned: ").append(yes_or_no(is_on(item.signed_flag)));
  text.append("\nMay be NULL: ").append(yes_or_no(is_on(item.null_allowed)));
  return text;
}

std::string explain_format(std::string_view format) {
  std::string dense(format);  // spaces mean nothing outside fixed text
  std::erase(dense, ' ');
  std::string lines;
  bool is_fixed = false;
  for (std::size_t i = 0; i < dense.size(); ++i) {
    if (dense[i] == '\'') is_fixed = !is_fixed;
    if (is_fixed || dense[i] != '%') continue;
    const std::size_t end = std::min(dense.find_first_of("%'", i + 1), dense.size());
    const std::string line = explain_directive(std::string_view(dense).substr(i + 1, end - i - 1));
    if (line.empty() || lines.find(line) != std::string::npos) continue;
    if (!lines.empty()) lines += '\n';
    lines += line;
  }
  return lines.empty() ? "fixed text: every value is the same" : lines;
}

}  // namespace korvex
