#include "platform/message_text.h"

#include "platform/printable_text.h"

namespace korvex::platform {

MessageText MessageText::words(std::string_view words) {
  MessageText text;
  text.utf8_ = words;
  return text;
}

MessageText MessageText::code_page(std::string_view text) {
  return words(printable_from_code_page(text));
}

MessageText MessageText::path(std::string_view text) { return words(printable(text)); }

MessageText& MessageText::operator+=(const MessageText& part) {
  utf8_ += part.utf8_;
  return *this;
}

}  // namespace korvex::platform
