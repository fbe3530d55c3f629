#include "host/text/code_page_text.h"

#include <algorithm>

#include "platform/codepage.h"
#include "platform/utf8.h"

namespace korvex::host {

std::optional<std::string> exact_code_page_text(std::string_view utf8, std::size_t* bad_offset) {
  std::size_t lacking = utf8.size();
  std::optional<std::string> text = platform::from_utf8(utf8, &lacking);
  const std::string_view known = utf8.substr(0, lacking);
  const std::string again = platform::to_utf8(text ? *text : *platform::from_utf8(known));
  if (text && again == utf8) return text;
  const auto stays = std::mismatch(known.begin(), known.end(), again.begin(), again.end()).first;
  auto offset = static_cast<std::size_t>(stays - known.begin());
  while (offset > 0 && offset < known.size() && platform::is_continuation(known[offset])) --offset;
  if (bad_offset != nullptr) *bad_offset = offset;
  return std::nullopt;
}

}  // namespace korvex::host
