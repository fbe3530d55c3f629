#include "dialogs/rules/value_preview.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "control/item_settings.h"
#include "dialogs/rules/user_numbers.h"
#include "lists/enumeration_check.h"
#include "platform/codepage.h"
#include "run/item_generator.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr Steps first_values = 3;
constexpr SettingsLevel some_level{1};
constexpr StoredRecords no_records{};

// The next value of the item, or the code that would fail a run.
Result<std::string> take_value(ItemGenerator& item) {
  LineBlock field(0);
  const ErrorCode code = item.append(field, RunState{});
  if (code != error::none) return code;
  constexpr std::size_t comma = 1;
  return std::string(field.data(), field.size() - comma);
}

// Until the item ends. A fixed text and a time of day may go on for ever: until they come back.
Steps count_values(const ItemGenerator& item) {
  const std::optional<Steps> cycle = item.cycle();
  if (!cycle || *cycle != endless) return cycle.value_or(endless);
  const ItemFacts facts = item.facts();
  return facts.is_injective() ? *facts.period : endless;
}

// Asks the generator that a run asks; how far it counts costs nothing.
ValuePreview preview_values(ItemGenerator& item) {
  item.add_field();
  ValuePreview preview;
  preview.count = count_values(item);
  for (Steps i = 0; i < std::min(first_values, preview.count); ++i) {
    const Result<std::string> value = take_value(item);
    if (!value) return {.code = value.code()};
    preview.first.push_back(*value);
  }
  if (preview.count == endless || preview.count <= first_values) return preview;
  item.seek_plain(preview.count - 1);
  const Result<std::string> last = take_value(item);
  preview.code = last.code();
  if (last) preview.last = *last;
  return preview;
}

ValuePreview preview_settings(const ClFmtColInf& column, LayoutKind layout_kind) {
  constexpr bool no_quotation = false;
  ItemGenerator item(column, layout_kind, no_quotation);
  return preview_values(item);
}

// Without what it shows.
std::unique_ptr<ClDGCol> copy_of(const ClDGCol& item) {
  auto copy = std::make_unique<ClDGCol>();
  copy->item_number = item.item_number;
  copy->attribute = item.attribute;
  copy->signed_flag = item.signed_flag;
  copy->length = item.length;
  copy->digits = item.digits;
  copy->decimals = item.decimals;
  return copy;
}

ValuePreview preview_list_for(const FmtColRec& settings, const std::string& path) {
  ClColMain apart;  // what the check leaves here is dropped
  ListLine line = ListLine::none;
  auto values = std::make_unique<ClEnumDataList>();
  bool is_whole = true;
  const Result<std::size_t> result =
      look_into_enumeration(apart, path, settings, list_bytes_looked_at, line, *values, is_whole);
  if (!result) return {.code = result.code(), .number = number_of(line)};
  ClFmtColInf column(settings);
  column.record.generation_type = generation_type::enumeration;
  ItemGenerator item(column, layout_kind::record_file, false);
  item.set_enumeration(std::move(values));
  ValuePreview preview = preview_values(item);
  preview.is_more = !is_whole;
  if (preview.is_more) preview.last.clear();
  return preview;
}

}  // namespace

ValuePreview preview_range(const ClDGCol& item, LayoutKind layout_kind, const RangeEntry& entry,
                           const RangeRules& rules) {
  ClColMain trial;
  trial.settings.begin(some_level, no_records, layout_kind);
  trial.items.push_back(copy_of(item));
  trial.select_item(0);
  if (const RangeStored stored = store_range(trial, entry, rules); stored.code != error::none) {
    return {.code = stored.code};
  }
  return preview_settings(*trial.settings.find_column(item.item_number), layout_kind);
}

ValuePreview preview_list(const ClColMain& main, const std::string& path) {
  const ClDGCol& item = *main.current_item();
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  ClFmtLvlInf fresh;
  if (column == nullptr &&
      fresh.set_initial_value(item.item_number, item.attributes()) == error::none) {
    column = fresh.find_column(item.item_number);
  }
  return column != nullptr ? preview_list_for(column->record, path) : ValuePreview{};
}

ValuePreview preview_reference(const ClColMain& main, std::size_t source_index) {
  if (const ErrorCode code = check_copy(main, source_index); code != error::none)
    return {.code = code};
  const ClDGCol& source = *main.items[source_index];
  const ClFmtColInf* column = main.settings.find_column(source.item_number);
  if (column == nullptr) return {};
  switch (column->record.generation_type) {
    case generation_type::initial_value:
      return {};
    case generation_type::enumeration:
      return preview_list_for(column->record,
                              std::string(field_text(column->record.enumeration_path)));
    default:
      return preview_settings(*column, main.layout_kind());
  }
}

std::string preview_text(const ValuePreview& preview, const Messages& messages) {
  if (preview.code != error::none) {
    std::string why = messages.text(preview.code, preview.number).utf8();
    std::replace(why.begin(), why.end(), '\n', ' ');
    return why;
  }
  if (preview.first.empty()) return {};
  std::string text;
  if (preview.count != endless) {
    text = (preview.is_more ? "More than " : "") + grouped(preview.count) +
           (preview.count == 1 && !preview.is_more ? " value: " : " values: ");
  }
  for (const std::string& value : preview.first) {
    if (&value != &preview.first.front()) text += ", ";
    text += platform::shown_in_utf8(value);
  }
  if (!preview.last.empty()) return text + " … " + platform::shown_in_utf8(preview.last);
  return preview.is_more || preview.count == endless ? text + " …" : text;
}

}  // namespace korvex
