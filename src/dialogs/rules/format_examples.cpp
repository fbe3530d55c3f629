#include "dialogs/rules/format_examples.h"

#include <algorithm>

#include "control/user_limits.h"
#include "formatlang/format_text.h"

namespace korvex {

FormatExamples::FormatExamples()
    : entries_(default_format_examples.begin(), default_format_examples.end()) {}

void FormatExamples::load(const platform::SettingsStore& store) {
  for (const std::string_view name : format_example_values) {
    std::string value;
    if (read_store_value(store, name, max_example_piece_size + 1, value) != error::none) return;
    for (const std::string_view format : cut_list(value)) {
      if (!add(format)) return;
    }
  }
}

ErrorCode FormatExamples::save(const platform::SettingsStore& store) const {
  const auto texts = pieces();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const ErrorCode result = write_store_value(store, format_example_values[i], texts[i]);
    if (result != error::none) return result;
  }
  return error::none;
}

bool FormatExamples::contains(std::string_view format) const {
  return std::find(entries_.begin(), entries_.end(), format) != entries_.end();
}

bool FormatExamples::add(std::string_view format) {
  if (!can_add()) return false;
  entries_.emplace_back(format);
  return true;
}

bool FormatExamples::erase(std::int32_t position) {
  if (position < std::ssize(default_format_examples) || position >= std::ssize(entries_)) {
    return false;
  }
  entries_.erase(entries_.begin() + position);
  return true;
}

std::array<std::string, format_example_values.size()> FormatExamples::pieces() const {
  std::array<std::string, format_example_values.size()> texts;
  std::size_t piece = 0;
  for (std::size_t i = default_format_examples.size(); i < entries_.size(); ++i) {
    // The comma after the last example of a piece is dropped, so it takes no room.
    if (texts[piece].size() + entries_[i].size() > max_example_piece_size) ++piece;
    if (piece == texts.size()) break;
    texts[piece].append(entries_[i]).append(",");
  }
  for (std::string& text : texts) {
    if (!text.empty()) text.pop_back();
  }
  return texts;
}

}  // namespace korvex
