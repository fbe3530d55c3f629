#include "dialogs/rules/messages.h"

#include "values/error_texts.h"

namespace korvex {

using platform::MessageText;

MessageText Messages::text(ErrorCode code, std::uint64_t number) const {
  std::string text;
  main_.append_error_text(code, text);
  return MessageText::words(number != 0 ? fill_number(text, number) : text);
}

void Messages::show(platform::MessageKind kind, ErrorCode code, const MessageText& suffix,
                    std::uint64_t number) const {
  platform::user_interface().show_message(kind, text(code, number) + suffix);
}

bool Messages::ask(ErrorCode code, const MessageText& suffix) const {
  const platform::Answer answer =
      platform::user_interface().show_message(platform::MessageKind::question, text(code) + suffix);
  return answer == platform::Answer::yes;
}

MessageText name_suffix(const ClDGCol& item) {
  return "\n" + MessageText::code_page(item.name) + " : " +
         MessageText::code_page(item.description);
}

}  // namespace korvex
