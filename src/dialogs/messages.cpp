#include "dialogs/messages.h"

#include "control/error_texts.h"

namespace korvex {

std::string Messages::text(std::int32_t code, std::uint64_t number) const {
  std::string text;
  main_.append_error_text(code, text);
  return number != 0 ? fill_number(text, number) : text;
}

void Messages::show(platform::MessageKind kind, std::int32_t code, std::string_view suffix,
                    std::uint64_t number) const {
  platform::user_interface().show_message(kind, text(code, number).append(suffix));
}

bool Messages::ask(std::int32_t code, std::string_view suffix) const {
  const platform::Answer answer = platform::user_interface().show_message(
      platform::MessageKind::question, text(code).append(suffix));
  return answer == platform::Answer::yes;
}

std::string name_suffix(const ClDGCol& item) { return "\n" + item.name + " : " + item.description; }

}  // namespace korvex
