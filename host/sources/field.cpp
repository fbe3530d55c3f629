#include "host/sources/field.h"

#include <algorithm>

#include "host/sources/saturating.h"

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
  shape.never_empty = shape.never_empty && emptiness_.empty() && way_->records() == endless;
  return shape;
}

std::uint64_t Field::most_values() const {
  const std::uint64_t texts = std::min(source_->most_texts(), way_->indices());
  return sum(texts, shape().never_empty ? 0 : 1);
}

// Nothing follows from a text that may be missing: so it may be in several records.
void Field::tell(Knowledge& knowledge) const {
  way_->tell(knowledge);
  if (emptiness_.empty()) source_->tell(knowledge, thing(), way_->thing(), way_->records());
}

}  // namespace korvex::sources
