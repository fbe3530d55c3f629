#include "settings/lvl_inf.h"

#include <algorithm>
#include <new>

#include "formatlang/range_check.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

void store_attributes(const ItemAttributes& item, FmtColRec& record) {
  record.attribute = item.attribute;
  record.signed_flag = item.signed_flag;
  record.length = item.length;
  record.digits = item.digits;
  record.decimals = item.decimals;
}

// The one element that stands for an item without generated values.
FmtItemRec initial_value_element(const ItemAttributes& item) {
  FmtItemRec element = {};
  element.sequence = ElementNumber::first;
  element.kind = format_kind::none;
  element.sign = NumberSubKind{number_of(item.signed_flag)};
  element.width = item.length;
  element.digits = static_cast<std::int32_t>(std::int64_t{item.digits} - item.decimals);
  element.decimals = item.decimals;
  return element;
}

template <typename Operation>
auto guard_memory(Operation operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

}  // namespace

ClFmtColInf* ClFmtLvlInf::find_column(ItemNumber item_number) const {
  const auto place = places_.find(item_number);
  return place == places_.end() ? nullptr : columns[place->second].get();
}

ClFmtColInf& ClFmtLvlInf::append(std::unique_ptr<ClFmtColInf> column) {
  columns.push_back(std::move(column));
  try {
    places_.try_emplace(columns.back()->record.item_number, columns.size() - 1);
  } catch (...) {
    columns.pop_back();
    throw;
  }
  return *columns.back();
}

bool ClFmtLvlInf::has_settings() const {
  return std::any_of(columns.begin(), columns.end(),
                     [](const auto& column) { return !column->elements.empty(); });
}

ClFmtColInf& ClFmtLvlInf::find_or_append(ItemNumber item_number) {
  if (ClFmtColInf* column = find_column(item_number)) return *column;
  auto fresh = std::make_unique<ClFmtColInf>();
  fresh->record.item_number = item_number;
  return append(std::move(fresh));
}

ErrorCode ClFmtLvlInf::set_initial_value(ItemNumber item_number, const ItemAttributes& item) {
  return guard_memory([&] {
    ClFmtColInf prepared;
    prepared.set_elements({initial_value_element(item)});
    ClFmtColInf& column = find_or_append(item_number);
    column.take_elements(prepared);
    FmtColRec& settings = column.record;
    settings.item_number = item_number;
    settings.exceeded_action = exceeded_action::initialize;
    settings.generation_type = generation_type::initial_value;
    settings.referenced_item = ItemNumber::none;
    settings.lead_element = ElementNumber::first;
    store_attributes(item, settings);
    store_field(settings.increment_text, "1");
    settings.increment = {};
    settings.increment.sign = Sign::plus;
    settings.increment.low = 1;
    return error::none;
  });
}

Result<std::int32_t> ClFmtLvlInf::check_and_store(ItemNumber item_number,
                                                  const ItemAttributes& item,
                                                  const RangeTexts& texts,
                                                  const RangeChoices& choices) {
  return guard_memory([&]() -> Result<std::int32_t> {
    const ClFmtColInf* old = find_column(item_number);
    auto fresh = std::make_unique<ClFmtColInf>(old != nullptr ? old->record : FmtColRec{});
    const Result<CheckedRange> range = check_range(item, texts, fresh->record.increment);
    if (!range) return range.code();

    FmtColRec& settings = fresh->record;
    fresh->set_elements(range->elements);
    settings.item_number = item_number;
    settings.lead_element = range->lead_element;
    settings.exceeded_action = choices.exceeded_action;
    settings.custom_format = choices.custom_format;
    settings.generation_type = generation_type::range;
    settings.referenced_item = ItemNumber::none;
    store_attributes(item, settings);
    settings.digits = range->digits;
    settings.increment = range->increment;
    store_field(settings.increment_text, texts.increment);
    store_field(settings.format, texts.format);
    if (old != nullptr) {
      columns[places_.at(item_number)] = std::move(fresh);
    } else {
      append(std::move(fresh));
    }
    return range->variable_count;
  });
}

ErrorCode ClFmtLvlInf::copy_settings(ItemNumber target, ItemNumber source,
                                     const ItemAttributes& item) {
  return guard_memory([&] {
    const ClFmtColInf* from = find_column(source);
    if (from == nullptr || from->elements.empty()) return error::format_not_set;
    std::vector<FmtItemRec> elements;
    for (const auto& element : from->elements) elements.push_back(element->record);
    ClFmtColInf prepared(from->record);
    prepared.set_elements(elements);
    const FmtColRec& model = prepared.record;

    const bool is_new = find_column(target) == nullptr;
    ClFmtColInf& column = find_or_append(target);
    column.take_elements(prepared);
    FmtColRec& settings = column.record;
    if (is_new) store_attributes(item, settings);
    settings.exceeded_action = model.exceeded_action;
    settings.generation_type = model.generation_type;
    settings.lead_element = model.lead_element;
    settings.custom_format = model.custom_format;
    settings.increment = model.increment;
    store_field(settings.increment_text, field_text(model.increment_text));
    store_field(settings.format, field_text(model.format));
    store_field(settings.enumeration_path, field_text(model.enumeration_path));
    return error::none;
  });
}

ErrorCode ClFmtLvlInf::delete_settings(ItemNumber item_number) {
  ClFmtColInf* column = find_column(item_number);
  if (column == nullptr || column->elements.empty()) return error::format_not_set;
  column->set_elements({});
  column->record.generation_type = generation_type::none;
  return error::none;
}

}  // namespace korvex
