#include "settings/item_inf.h"

#include <algorithm>

#include "values/record_text.h"

namespace korvex {

std::string ClFmtItemInf::first_text() const {
  if (record.kind == format_kind::fixed) return std::string(field_text(record.text));
  const std::string_view start = field_text(record.start_text);
  std::size_t bytes = static_cast<std::size_t>(
      std::clamp<std::int32_t>(record.width, 0, static_cast<std::int32_t>(element_text_size)));
  if (record.kind == format_kind::national_character) bytes *= 2;
  return std::string(start.substr(start.size() - std::min(bytes, start.size())));
}

}  // namespace korvex
