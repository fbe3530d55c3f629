#include "host/records/layout_timeline.h"

#include <algorithm>

#include "formatlang/attributes.h"

namespace korvex::host {

namespace {

constexpr std::uint64_t comma_size = 1;
constexpr std::uint64_t quotation_size = 2;

FieldTimeline field_of(const PreparedItem& item, const PreparedLayout& prepared) {
  const FmtColRec& settings = item.column->record;
  FieldTimeline field;
  field.sequence =
      item.values != nullptr
          ? list_sequence(*item.values, settings.exceeded_action != exceeded_action::repeat)
          : item_sequence(*item.column, prepared.layout().kind);
  const bool is_initial = settings.generation_type == generation_type::initial_value;
  field.frame_bytes = comma_size;
  if (prepared.quotation() && is_quoted(settings.attribute) && !is_initial) {
    field.frame_bytes += quotation_size;
  }
  if (prepared.repeat_of(item) != nullptr) {
    field.is_repeated = true;
    field.level = settings.repeat_level;
    field.rounds = static_cast<std::uint64_t>(std::max(settings.repeat_count, 1));
  }
  return field;
}

}  // namespace

LayoutTimeline::LayoutTimeline(PreparedLayout& prepared)
    : records_(static_cast<std::uint64_t>(prepared.layout().records)),
      // A line feed of its own, but for the kind whose lines end in it in place of the last comma.
      line_end_bytes_(prepared.layout().kind == layout_kind::third ? 0 : 1) {
  for (const PreparedItem& item : prepared.items()) fields_.push_back(field_of(item, prepared));
  for (FieldTimeline& field : fields_) {
    if (field.is_repeated) repeats_.push_back(&field);
  }
  std::sort(repeats_.begin(), repeats_.end(),
            [](const auto* left, const auto* right) { return left->level < right->level; });
  if (nest_repeats(repeats_)) return;
  for (FieldTimeline* field : repeats_) field->sequence.reset();
}

std::optional<std::uint64_t> LayoutTimeline::file_size() const {
  std::uint64_t bytes = records_ * line_end_bytes_;
  for (const FieldTimeline& field : fields_) {
    const auto own = field.bytes(records_);
    if (!own) return std::nullopt;
    bytes += *own;
  }
  return bytes;
}

}  // namespace korvex::host
