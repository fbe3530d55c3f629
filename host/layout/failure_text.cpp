#include "host/layout/failure_text.h"

#include "control/error_texts.h"
#include "entry/failure_report.h"
#include "platform/codepage.h"

namespace korvex::host {

std::string failure_text(std::int32_t code, const ClColMain& main, std::int32_t bad_line) {
  std::string text = describe_failure(code, main).text;
  // The number belongs into the message; the path in front of it may hold a placeholder, too.
  const std::string& context = main.message_context;
  if (bad_line != 0 && text.starts_with(context)) {
    text = context + fill_number(text.substr(context.size()), static_cast<std::uint64_t>(bad_line));
  }
  return platform::message_to_utf8(text);
}

}  // namespace korvex::host
