#include "formatlang/format_parser.h"

#include <algorithm>

#include "formatlang/format_text.h"
#include "platform/codepage.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr std::int32_t max_fixed_in_character_item = 3;

// How many fixed pieces and directives a format may have, by the item's class.
ErrorCode check_counts(ValueClass item_class, std::int32_t variable_count,
                       std::int32_t fixed_count) {
  switch (item_class) {
    case ValueClass::numeric:
      if (variable_count >= 2) return error::too_many_variable_parts;
      if (fixed_count > 1) return error::too_many_fixed_parts;
      break;
    case ValueClass::character:
      if (fixed_count > max_fixed_in_character_item) return error::too_many_fixed_parts;
      break;
    case ValueClass::national:
      if (fixed_count > 1) return error::too_many_fixed_parts;
      break;
    default:
      if (variable_count >= 2) return error::too_many_variable_parts;
      if (fixed_count >= 1) return error::too_many_fixed_parts;
  }
  return variable_count == 0 && fixed_count == 0 ? error::empty_format : error::none;
}

// The size of a fixed piece, or the code of the rule that it breaks.
Result<std::int64_t> fixed_size(ValueClass item_class, std::string_view text, bool has_directives) {
  if (item_class == ValueClass::numeric) {
    if (text.find_first_not_of("0123456789.+-") != std::string_view::npos) {
      return error::fixed_part_not_numeric;
    }
    if (has_directives && text.find_first_of("+-") != std::string_view::npos) {
      return error::sign_in_fixed_part;
    }
    return static_cast<std::int64_t>(text.size()) - std::count(text.begin(), text.end(), '.');
  }
  if (item_class == ValueClass::national) {
    for (std::size_t i = 0; i < text.size(); i += 2) {
      if (i + 1 == text.size() || !platform::is_legal_double_byte(text[i], text[i + 1])) {
        return error::attribute_format_mismatch;
      }
    }
    return static_cast<std::int64_t>(text.size() / 2);
  }
  return static_cast<std::int64_t>(text.size());
}

class ElementBuilder {
 public:
  ElementBuilder(const ItemAttributes& item, ValueClass item_class, ParsedFormat& parsed)
      : item_(item), item_class_(item_class), parsed_(parsed) {}

  ErrorCode add_fixed(std::string_view text) {
    const Result<std::int64_t> measured = fixed_size(item_class_, text, parsed_.variable_count > 0);
    if (!measured) return measured.code();
    const std::int64_t size = *measured;
    if (size > max_format_size || text.size() >= element_text_size) return error::format_too_long;
    total_ += size;
    if (total_ > max_format_size) return error::format_too_long;
    if (!fixed_fits(size)) return error::bad_format_digits;

    FmtItemRec& element = append(text);
    element.kind = format_kind::fixed;
    element.width = element.digits = static_cast<std::int32_t>(size);
    return error::none;
  }

  ErrorCode add_directive(std::string_view directive, NationalCount national) {
    const std::int64_t count =
        national == NationalCount::split ? split_count(item_class_, directive) : 1;
    if (count == 1) return add_element(directive, Flag::off);
    for (std::int64_t i = 0; i < count; ++i) {
      const ErrorCode result = add_element("N", flag_of(i == 0));
      if (result != error::none) return result;
    }
    return error::none;
  }

 private:
  FmtItemRec& append(std::string_view text) {
    FmtItemRec& element = parsed_.elements.emplace_back();
    element.sequence = element_number(parsed_.elements.size() - 1);
    element.sign = NumberSubKind{number_of(item_.signed_flag)};
    store_field(element.text, text);
    return element;
  }

  ErrorCode add_element(std::string_view directive, Flag group_start) {
    const bool is_first = parsed_.elements.empty();
    FmtItemRec& element = append(directive);
    element.group_start = group_start;
    const Result<std::int32_t> size =
        read_directive(item_, item_class_, directive, is_first, element);
    if (!size) return size.code();
    total_ += *size;
    if (total_ > max_format_size) return error::format_too_long;
    return total_ > item_.digits ? error::bad_format_digits : error::none;
  }

  // The capacity rule for fixed pieces; `total_` already counts this one.
  bool fixed_fits(std::int64_t size) const {
    if (parsed_.elements.empty()) return size <= item_.digits;
    if (item_class_ == ValueClass::character) return total_ <= item_.length;
    if (item_class_ == ValueClass::national) return 2 * total_ <= item_.length;
    return total_ <= item_.digits;
  }

  const ItemAttributes& item_;
  ValueClass item_class_;
  ParsedFormat& parsed_;
  std::int64_t total_ = 0;
};

}  // namespace

Result<ParsedFormat> parse_format(const ItemAttributes& item, ValueClass item_class,
                                  std::string_view format, NationalCount national) {
  // A longer text could not be stored with its terminator.
  if (format.size() >= format_text_size) return error::format_too_long;

  ParsedFormat parsed;
  const std::vector<FormatPiece> pieces = cut_format(format);
  const auto directives = std::count_if(
      pieces.begin(), pieces.end(), [](const FormatPiece& piece) { return piece.is_directive; });
  parsed.variable_count = static_cast<std::int32_t>(directives);
  parsed.fixed_count = static_cast<std::int32_t>(pieces.size()) - parsed.variable_count;
  ErrorCode result = check_counts(item_class, parsed.variable_count, parsed.fixed_count);
  if (result != error::none) return result;

  ElementBuilder builder(item, item_class, parsed);
  for (const FormatPiece& piece : pieces) {
    result = piece.is_directive ? builder.add_directive(piece.text, national)
                                : builder.add_fixed(piece.text);
    if (result != error::none) return result;
  }
  return parsed;
}

}  // namespace korvex
