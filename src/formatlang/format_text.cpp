#include "formatlang/format_text.h"

#include <algorithm>

#include "values/attributes.h"
#include "values/number_text.h"

namespace korvex {

namespace {

// Calls `visit` with every piece of `text` between separators that is not empty.
template <typename Visit>
void for_each_piece(std::string_view text, char separator, Visit visit) {
  while (!text.empty()) {
    const auto end = std::min(text.find(separator), text.size());
    if (end > 0) visit(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void cut_directives(std::string_view piece, std::vector<FormatPiece>& pieces) {
  while (!piece.empty()) {
    const auto end = std::min(piece.find('%', 1), piece.size());
    pieces.push_back({true, piece.substr(1, end - 1)});
    piece.remove_prefix(end);
  }
}

}  // namespace

std::vector<FormatPiece> cut_format(std::string_view format) {
  std::vector<FormatPiece> pieces;
  for_each_piece(format, '\'', [&](std::string_view piece) {
    if (piece.front() == '%') {
      cut_directives(piece, pieces);
    } else {
      pieces.push_back({false, piece});
    }
  });
  return pieces;
}

std::vector<std::string_view> cut_list(std::string_view list) {
  std::vector<std::string_view> values;
  for_each_piece(list, ',', [&](std::string_view value) { values.push_back(value); });
  return values;
}

std::int64_t split_count(ValueClass item_class, std::string_view directive) {
  const bool splits = item_class == ValueClass::character || item_class == ValueClass::national;
  if (!splits || directive.size() < 2 || directive.back() != 'N') return 1;
  return std::max<std::int64_t>(decimal_prefix(directive.substr(0, directive.size() - 1)), 1);
}

std::vector<std::int64_t> value_groups(ValueClass item_class, std::string_view format) {
  std::vector<std::int64_t> groups;
  for (const FormatPiece& piece : cut_format(format)) {
    if (piece.is_directive) groups.push_back(split_count(item_class, piece.text));
  }
  return groups;
}

}  // namespace korvex
