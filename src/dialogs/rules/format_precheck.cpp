#include "dialogs/rules/format_precheck.h"

#include <algorithm>
#include <string>

#include "values/error_codes.h"
#include "values/number_text.h"

namespace korvex {

namespace {

// Bytes of fixed text plus the size of the first variable part.
constexpr std::int64_t size_limit = 128;

constexpr std::int32_t max_fixed_parts = 3;

struct SplitFormat {
  FormatParts parts;
  std::string fixed_text;
  std::string variable_text;
};

// Separates what is between quotation marks from the rest. Going byte by byte is safe: the
// second byte of a double-byte character is never a blank, a quotation mark or a percent sign.
Result<SplitFormat> split_format(std::string_view format) {
  if (format.empty() || (format.front() != '%' && format.front() != '\'')) {
    return error::empty_format;
  }
  SplitFormat split;
  bool is_open = false;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const char c = format[i];
    if (c == '\'') {
      if (is_open) {
        ++split.parts.fixed;
        const bool is_last = i + 1 == format.size();
        if (!is_last && format[i + 1] != '%' && format[i + 1] != '\'') return error::empty_format;
      }
      is_open = !is_open;
    } else if (is_open) {
      split.fixed_text += c;
    } else {
      if (c == '%') ++split.parts.variable;
      split.variable_text += c;
    }
  }
  if (is_open) return error::empty_format;
  return split;
}

// A number as it counts towards the size: none too large to be added to another.
std::int64_t number_of(std::string_view text) {
  return std::clamp<std::int64_t>(decimal_prefix(text), 0, size_limit + 1);
}

// What the text before the letters of a directive says; nothing says 1.
std::int64_t size_before(std::string_view token, std::size_t letters) {
  return token.size() == letters ? 1 : number_of(token.substr(0, token.size() - letters));
}

// The size of a directive with one letter: a number, or one on each side of a point.
Result<std::int64_t> size_with_point(std::string_view token) {
  const std::string_view digits = token.substr(0, token.size() - 1);
  const std::size_t point = digits.find('.');
  if (digits.empty() || point == std::string_view::npos) return size_before(token, 1);
  const std::string_view decimals = digits.substr(point + 1);
  if (decimals.empty() || decimals.find('.') != std::string_view::npos)
    return error::bad_format_digits;
  return number_of(digits.substr(0, point)) + number_of(decimals);
}

Result<std::int64_t> directive_size(std::string_view token) {
  for (const std::string_view letters : {"YMD", "YMA", "TS"}) {
    if (token.ends_with(letters)) return size_before(token, letters.size());
  }
  if (token.empty()) return error::bad_attribute;
  switch (token.back()) {
    case 'S':
    case 's':
    case 'N':
    case 'D':
    case 'U':
      return size_with_point(token);
    case 'T':
      return size_before(token, 1);
    default:
      return error::bad_attribute;
  }
}

// The first directive that is not empty.
std::string_view first_directive(std::string_view variable_text) {
  const std::size_t begin = variable_text.find_first_not_of('%');
  if (begin == std::string_view::npos) return {};
  return variable_text.substr(begin, variable_text.find('%', begin) - begin);
}

}  // namespace

Result<FormatParts> precheck_format(std::string_view format) {
  std::string dense(format);
  std::erase(dense, ' ');

  const Result<SplitFormat> split = split_format(dense);
  if (!split) return split.code();
  if (split->parts.fixed > max_fixed_parts) return error::too_many_fixed_parts;
  const auto fixed_size = static_cast<std::int64_t>(split->fixed_text.size());
  if (fixed_size > size_limit) return error::bad_format_digits;

  if (!split->variable_text.empty()) {
    const Result<std::int64_t> size = directive_size(first_directive(split->variable_text));
    if (!size) return size.code();
    if (fixed_size + *size > size_limit) return error::bad_format_digits;
  }
  return split->parts;
}

}  // namespace korvex
