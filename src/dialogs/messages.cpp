#include "dialogs/messages.h"

#include "control/error_texts.h"

namespace korvex {

void Messages::show(platform::MessageKind kind, std::int32_t code, std::string_view suffix,
                    std::uint64_t number) const {
  std::string text;
  main_.append_error_text(code, text);
  if (number != 0) text = fill_number(text, number);
  platform::user_interface().show_message(kind, text.append(suffix));
}

bool Messages::ask(std::int32_t code, std::string_view suffix) const {
  std::string text;
  main_.append_error_text(code, text);
  const platform::Answer answer =
      platform::user_interface().show_message(platform::MessageKind::question, text.append(suffix));
  return answer == platform::Answer::yes;
}

std::string name_suffix(const ClDGCol& item) { return "\n" + item.name + " : " + item.description; }

}  // namespace korvex
