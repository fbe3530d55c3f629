#include "settings/col_inf.h"

#include <algorithm>

#include "formatlang/format_text.h"
#include "values/attributes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

using TextField = char (FmtItemRec::*)[element_text_size];

std::vector<const FmtItemRec*> variable_elements(const ClFmtColInf& column) {
  std::vector<const FmtItemRec*> variable;
  for (const auto& element : column.elements) {
    if (element->record.kind != format_kind::fixed) variable.push_back(&element->record);
  }
  return variable;
}

// Whether each variable element opens a new entry. The stored format says so exactly; the group
// marks, which miss directives without a count, serve where format and elements do not agree.
std::vector<bool> entry_starts(const ClFmtColInf& column,
                               const std::vector<const FmtItemRec*>& variable) {
  const auto groups =
      value_groups(value_class_of(column.record.attribute), field_text(column.record.format));
  std::vector<bool> starts;
  for (const std::int64_t group : groups) {
    if (group > static_cast<std::int64_t>(variable.size())) break;
    starts.push_back(true);
    starts.resize(starts.size() + static_cast<std::size_t>(group) - 1, false);
    if (starts.size() > variable.size()) break;
  }
  if (starts.size() == variable.size()) return starts;

  starts.clear();
  for (const FmtItemRec* element : variable) {
    starts.push_back(element->kind != format_kind::national_character ||
                     element->group_start == Flag::on);
  }
  return starts;
}

std::string joined_texts(const ClFmtColInf& column, TextField field) {
  const auto variable = variable_elements(column);
  const auto starts = entry_starts(column, variable);
  std::string joined;
  for (std::size_t i = 0; i < variable.size(); ++i) {
    if (i > 0 && starts[i]) joined += ',';
    joined += field_text(variable[i]->*field);
  }
  return joined;
}

}  // namespace

void ClFmtColInf::set_elements(const std::vector<FmtItemRec>& replacements) {
  platform::ObjectList<ClFmtItemInf> fresh;
  for (const FmtItemRec& element : replacements) {
    fresh.push_back(std::make_unique<ClFmtItemInf>(element));
  }
  elements = std::move(fresh);
  record.element_count = static_cast<std::int32_t>(elements.size());
}

void ClFmtColInf::take_elements(ClFmtColInf& other) {
  elements = std::move(other.elements);
  other.elements.clear();
  record.element_count = static_cast<std::int32_t>(elements.size());
}

std::string ClFmtColInf::joined_start_texts() const {
  return joined_texts(*this, &FmtItemRec::start_text);
}

std::string ClFmtColInf::joined_end_texts() const {
  return joined_texts(*this, &FmtItemRec::end_text);
}

std::string ClFmtItemInf::first_text() const {
  if (record.kind == format_kind::fixed) return std::string(field_text(record.text));
  const std::string_view start = field_text(record.start_text);
  std::size_t bytes = static_cast<std::size_t>(
      std::clamp<std::int32_t>(record.width, 0, static_cast<std::int32_t>(element_text_size)));
  if (record.kind == format_kind::national_character) bytes *= 2;
  return std::string(start.substr(start.size() - std::min(bytes, start.size())));
}

}  // namespace korvex
