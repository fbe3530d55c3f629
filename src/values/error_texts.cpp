#include "values/error_texts.h"

#include <algorithm>

#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

namespace {

constexpr std::string_view enumeration_line_prefix = "%d line of a enum file ";

std::string_view text_of(ErrorCode code) {
  switch (code) {
#define KORVEX_ERROR_TEXT(name, code, message) \
  case error::name:                            \
    return message;
    KORVEX_ERRORS(KORVEX_ERROR_TEXT)
#undef KORVEX_ERROR_TEXT
    default:
      return {};
  }
}

bool names_enumeration_line(ErrorCode code) {
  return code <= error::enumeration_value_too_long &&
         code >= error::enumeration_decimals_not_allowed;
}

std::string_view layout_word(ErrorCode code, LayoutKind layout) {
  if (layout == layout_kind::record_file) return "Item";
  const bool about_table =
      code == error::settings_mismatch || code == error::settings_mismatch_deleted;
  return about_table ? "Table" : "Column";
}

std::string with_word(std::string_view message, std::string_view word) {
  std::string text(message);
  for (auto place = text.find("%s"); place != std::string::npos;
       place = text.find("%s", place + word.size())) {
    text.replace(place, 2, word);
  }
  return text;
}

}  // namespace

std::string error_message(ErrorCode code, LayoutKind layout) {
  return with_word(text_of(code), layout_word(code, layout));
}

void append_error_text(ErrorCode code, LayoutKind layout, std::string& text) {
  if (names_enumeration_line(code)) {
    text = enumeration_line_prefix;
  } else {
    text += std::to_string(error::message_number(code)) + ":";
  }
  text += error_message(code, layout);
}

std::string fill_number(std::string text, std::uint64_t number) {
  const auto place = std::min(text.find("%ld"), text.find("%d"));
  if (place == std::string::npos) return text;
  const std::size_t size = text[place + 1] == 'l' ? 3 : 2;
  return text.replace(place, size, std::to_string(number));
}

}  // namespace korvex
