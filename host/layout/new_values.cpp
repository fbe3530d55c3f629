#include "host/layout/new_values.h"

#include <algorithm>

#include "host/layout/layout_writer.h"
#include "host/layout/own_text.h"
#include "host/layout/own_values.h"
#include "host/layout/table_reader.h"
#include "host/ways/fraction.h"

namespace korvex::host {

void NewValues::note_size(std::string_view value) {
  longest = std::max(longest, static_cast<std::int32_t>(character_count(value)));
}

std::string take_list(std::string_view text, NewValues& values) {
  std::string array;
  while (true) {
    const std::size_t comma = text.find(',');
    std::string_view value = text.substr(0, comma);
    value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
    value = value.substr(0, value.find_last_not_of(' ') + 1);
    if (value.empty()) return "values with a comma between each two";
    array.append(array.empty() ? "[" : ", ").append(toml_text(value));
    values.note_size(value);
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  values.source = {{"type", toml_text("list")}, {"values", array + ']'}};
  return {};
}

std::string take_order(std::string_view text, NewValues& values) {
  const auto* found = std::find(order_names.begin(), order_names.end(), text);
  if (found == order_names.end()) return "one of " + list_names(order_names);
  values.order = *found;
  return {};
}

std::string take_share(std::string_view text, NewValues& values) {
  const auto share = ways::parse_share(text);
  if (!share) return "a share from 0 to 1";
  values.empty = share->numerator > 0 ? text : "";
  return {};
}

}  // namespace korvex::host
