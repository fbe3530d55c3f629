#include "host/sources/field.h"

#include <algorithm>

namespace korvex::sources {

std::optional<std::string_view> Field::text(std::uint64_t record) {
  if (latest_record_ != record) {
    text_.clear();
    has_value_ = make_text(record);
    latest_record_ = record;
  }
  if (!has_value_) return std::nullopt;
  return text_;
}

bool Field::make_text(std::uint64_t record) {
  for (const std::unique_ptr<Emptiness>& emptiness : emptiness_) {
    if (emptiness->is_empty(record)) return false;
  }
  const std::optional<std::uint64_t> index = way_->index(record);
  if (!index) return false;
  source_->append(*index, text_);
  return !text_.empty();
}

TextShape Field::shape() const {
  TextShape shape = source_->shape();
  shape.never_empty = shape.never_empty && emptiness_.empty() && way_->is_endless();
  return shape;
}

// A way may meet any two indices of a period early, so all of their texts must differ.
std::uint64_t Field::different_records() const {
  const std::uint64_t different = source_->different();
  const std::optional<std::uint64_t> period = source_->period();
  if (!emptiness_.empty() || (period && different < *period)) return 1;
  return std::min(different, way_->different_records());
}

}  // namespace korvex::sources
