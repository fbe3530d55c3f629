#include "host/layout/value_errors.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <unordered_map>

#include "control/item_settings.h"
#include "formatlang/default_settings.h"
#include "host/layout/failure_text.h"
#include "platform/printable_text.h"
#include "settings/lvl_inf.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace {

constexpr std::array format_codes = {
    error::bad_attribute_characters,   error::format_too_long,
    error::too_many_fixed_parts,       error::too_many_variable_parts,
    error::decimals_in_character_item, error::empty_format,
    error::signed_format_for_unsigned, error::signed_part_not_first,
    error::sign_in_fixed_part,         error::bad_format_digits,
    error::variable_part_too_long,     error::fixed_part_not_numeric,
};
constexpr std::array start_codes = {error::start_count_mismatch, error::bad_start_sign,
                                    error::start_not_set, error::start_out_of_range};
constexpr std::array end_codes = {error::end_count_mismatch, error::bad_end_sign,
                                  error::end_not_set, error::end_out_of_range};
constexpr std::array increment_codes = {error::bad_increment, error::increment_not_set};

template <std::size_t Count>
bool is_among(ErrorCode code, const std::array<ErrorCode, Count>& codes) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// One text of a range: its key, what it says and where.
struct RangeText {
  const char* key;
  const std::string& text;
  SourcePlace place;

  std::string described() const {
    return std::string(key) + " is \"" + platform::printable_from_code_page(text) + "\"";
  }
};

std::string what_stands_there(const ItemValues& values, ErrorCode code, SourcePlace& place) {
  const RangeText format = {"format", values.texts.format, values.places.format};
  const RangeText start = {"start", values.texts.start, values.places.start};
  const RangeText end = {"end", values.texts.end, values.places.end};
  const RangeText increment = {"increment", values.texts.increment, values.places.increment};
  const RangeText* guilty = nullptr;
  if (is_among(code, format_codes)) guilty = &format;
  if (is_among(code, start_codes)) guilty = &start;
  if (is_among(code, end_codes)) guilty = &end;
  if (is_among(code, increment_codes)) guilty = &increment;
  if (guilty != nullptr) {
    if (guilty->place.line > 0) place = guilty->place;
    return guilty->described() + ": ";
  }
  // The texts do not go together.
  std::string all;
  for (const RangeText* each : {&format, &start, &end, &increment}) {
    if (each->place.line > 0) all += (all.empty() ? "" : ", ") + each->described();
  }
  return all + ": ";
}

ErrorCode range_code(const LayoutItem& item) {
  ClFmtLvlInf level;
  RangeTexts texts = item.values->texts;
  if (texts.end.empty()) texts.end = largest_value_text(item.attributes);
  return level.check_and_store(item.number, item.attributes, texts, item.values->choices).code();
}

// What is wrong with references, as far as the layout alone tells.
class ReferenceCheck {
 public:
  ReferenceCheck(const Layout& layout, const std::vector<bool>& is_clean)
      : layout_(layout), is_clean_(is_clean) {
    for (std::size_t i = 0; i < layout.items.size(); ++i) {
      has_unnamed_ = has_unnamed_ || layout.items[i].name.empty();
      places_.try_emplace(layout.items[i].name, i);
    }
  }

  ErrorCode code_of(const LayoutItem& item) const {
    const auto place = places_.find(item.values->item_name);
    // An item whose own name is wrong may be the one that is meant.
    if (place == places_.end()) return has_unnamed_ ? error::none : error::no_such_reference;
    const LayoutItem& source = layout_.items[place->second];
    if (source.number == item.number) return error::same_reference_target;
    if (!is_clean_[place->second] || !has_own_settings(source)) return error::none;
    return check_reference(source.attributes, item.attributes);
  }

 private:
  static bool has_own_settings(const LayoutItem& item) {
    return item.values && item.values->source != ValueSource::initial &&
           item.values->source != ValueSource::reference && item.values->source != ValueSource::own;
  }

  const Layout& layout_;
  const std::vector<bool>& is_clean_;
  std::unordered_map<std::string_view, std::size_t> places_;  // by name; the first of several
  bool has_unnamed_ = false;
};

}  // namespace

LayoutError value_error(const Layout& layout, const LayoutItem& item, ErrorCode code) {
  LayoutError error = {item.values ? item.values->place : item.place,
                       "item " + platform::printable(item.name) + ": "};
  if (code == korvex::error::repeat_level_taken) {
    if (item.values && item.values->repeat) error.place = item.values->repeat->place;
    error.text += numbered_message(code, layout);
    return error;
  }
  if (item.values->source == ValueSource::range) {
    error.text += what_stands_there(*item.values, code, error.place);
  }
  if (item.values->source == ValueSource::reference) {
    error.place = item.values->origin;
    error.text += "item is \"" + platform::printable(item.values->item_name) + "\": ";
  }
  error.text += numbered_message(code, layout);
  return error;
}

void append_missing_lists(const Layout& layout, std::vector<LayoutError>& errors) {
  for (const LayoutItem& item : layout.items) {
    if (!item.values || item.values->file.empty()) continue;
    std::error_code failure;
    if (std::filesystem::exists(item.values->file, failure) || failure) continue;
    errors.push_back({item.values->origin, "item " + platform::printable(item.name) +
                                               ": file names " +
                                               platform::printable(item.values->file) +
                                               ", which does not exist, expected a value list"});
  }
}

void append_value_errors(const Layout& layout, const std::vector<bool>& is_clean,
                         std::vector<LayoutError>& errors) {
  const ReferenceCheck references(layout, is_clean);
  for (std::size_t i = 0; i < layout.items.size(); ++i) {
    const LayoutItem& item = layout.items[i];
    if (!is_clean[i] || !item.values) continue;
    ErrorCode code = error::none;
    if (item.values->source == ValueSource::range) code = range_code(item);
    if (item.values->source == ValueSource::reference) code = references.code_of(item);
    if (code != error::none) errors.push_back(value_error(layout, item, code));
  }
}

}  // namespace korvex::host
