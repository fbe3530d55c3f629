#include "run/repeat_count.h"

#include <algorithm>
#include <cstdlib>

#include "control/reconcile.h"
#include "courses/steps.h"
#include "lists/enumeration_check.h"
#include "platform/user_interface.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

bool is_date_or_time(FormatKind kind) {
  return kind == format_kind::date || kind == format_kind::date_unchecked ||
         kind == format_kind::time || kind == format_kind::timestamp;
}

// How many values lie between start and end of the lead element, both included.
std::int64_t value_span(const FmtItemRec& lead) {
  if (lead.kind == format_kind::fixed) return 1;
  if (is_date_or_time(lead.kind)) return std::int64_t{lead.span_low} + 1;
  return lead.span_high * half_base + lead.span_low + 1;
}

// Negative where a timestamp's time of day ends before it starts: the day does not count.
std::int64_t range_count(const ClFmtColInf& column) {
  const std::int64_t lead = number_of(column.record.lead_element);
  if (lead < 1 || lead > static_cast<std::int64_t>(column.elements.size())) return 1;
  const std::int64_t span = value_span(column.elements[static_cast<std::size_t>(lead - 1)]->record);
  const FmtValRec& increment = column.record.increment;
  const std::int64_t step = std::abs(increment.high * half_base + increment.low);
  if (step == 0) return 1;
  return span / step + (span % step != 0 ? 1 : 0);
}

// A negative range count becomes a number that is too large for everything.
std::uint64_t value_count(ClColMain& main, const ClFmtColInf& column,
                          const EnumerationCounter& counter) {
  const FmtColRec& settings = column.record;
  switch (settings.generation_type) {
    case generation_type::initial_value:
      return 1;
    case generation_type::enumeration:
      return counter(main, settings).value_or(0);
    default:
      return static_cast<std::uint64_t>(range_count(column));
  }
}

// What the first pass finds: the widths and numbers of the items that take part.
struct ItemTotals {
  std::int64_t width = 0;
  std::int64_t with_settings = 0;
  std::int64_t repeated = 0;
};

ItemTotals total_items(ClColMain& main) {
  ItemTotals totals;
  for (const auto& item : main.items) {
    if (item->display().generation_type == generation_type::none) {
      item->is_left_out = true;
      continue;
    }
    const ClFmtColInf* column = main.settings.find_column(item->item_number);
    if (column == nullptr) continue;
    ++totals.with_settings;
    if (is_on(column->record.repeat_flag)) ++totals.repeated;
    totals.width += column->record.length != 0 ? column->record.length : column->record.digits;
  }
  return totals;
}

}  // namespace

Result<std::size_t> count_enumeration(ClColMain& main, const FmtColRec& settings) {
  ListLine line = ListLine::none;
  return check_enumeration(main, std::string(field_text(settings.enumeration_path)), settings,
                           line);
}

Result<RepeatCount> count_data_items(ClColMain& main, bool repeats_only,
                                     const EnumerationCounter& counter) {
  const ItemTotals totals = total_items(main);
  if (totals.with_settings == 0 || (repeats_only && totals.repeated == 0)) {
    return error::no_format_for_item;
  }

  const std::uint64_t size_limit = main.limits().file_size_max;
  // Below 0 in crafted settings only.
  const auto width = static_cast<std::uint64_t>(totals.width);
  std::uint64_t longest = 0;  // of the plain items
  std::uint64_t repeats = 1;  // product of the repeated ones
  std::int64_t handled = 0;
  for (const auto& item : main.items) {
    if (handled >= totals.with_settings) break;
    if (item->is_left_out) continue;
    if (const ClFmtColInf* column = main.settings.find_column(item->item_number)) {
      const std::uint64_t values = value_count(main, *column, counter);
      if (is_on(column->record.repeat_flag)) {
        const auto count_of_item = static_cast<std::uint64_t>(column->record.repeat_count);
        repeats = product(repeats, product(count_of_item, values));
      } else {
        longest = std::max(longest, values);
      }
    }
    ++handled;
    const bool grows = repeats_only ? longest < repeats : true;
    const std::uint64_t records = repeats_only ? repeats : std::max(longest, repeats);
    if (grows && product(records, width) > size_limit) break;
  }

  RepeatCount count;
  count.data_items = repeats_only && repeats > 1 ? repeats : std::max(longest, repeats);
  const std::uint64_t bytes = product(count.data_items, width);
  count.predicted_bytes = bytes > size_limit ? too_large : bytes;
  return count;
}

std::optional<RepeatCount> count_control_file(ClColMain& main, bool repeats_only) {
  if (main.load() != error::none) return std::nullopt;
  main.mismatch = false;
  const Result<std::size_t> with_settings = reconcile(main);
  if (!with_settings || *with_settings == 0 || main.mismatch) return std::nullopt;
  return count_data_items(main, repeats_only).value_or(RepeatCount{});
}

bool ClRepeatCalcMain::run() {
  const auto cursor = platform::user_interface().show_wait_cursor();
  data_items = 0;
  const std::optional<RepeatCount> count = count_control_file(main, true);
  if (count && count->predicted_bytes != too_large) data_items = count->data_items;
  return count.has_value();
}

}  // namespace korvex
