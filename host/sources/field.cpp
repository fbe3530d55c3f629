#include "host/sources/field.h"

#include <algorithm>
#include <numeric>

#include "host/sources/lookups.h"
#include "host/sources/saturating.h"
#include "host/sources/uniqueness.h"

namespace korvex::sources {

void Field::make_text(std::uint64_t record) {
  latest_record_ = endless;  // as long as there is no text
  text_.clear();
  if (!is_left_empty(record)) {
    const std::uint64_t index = way_->index(record);
    if (index != no_index) source_->append(index, text_);
  }
  latest_record_ = record;
}

bool Field::may_have(std::string_view text) {
  bool is_found = false;
  const Shown shown = show_texts([&](std::string_view other) {
    is_found = other == text;
    return !is_found;
  });
  return !text.empty() && (is_found || shown != Shown::all);
}

bool Field::is_left_empty(std::uint64_t record) {
  return std::any_of(emptiness_.begin(), emptiness_.end(),
                     [record](const auto& emptiness) { return emptiness->is_empty(record); });
}

void Field::expect(std::uint64_t first, std::size_t count) {
  if (expected_ == nullptr) expected_ = std::make_unique<Expected>();
  expected_->first = first;
  expected_->count = count;
  expected_->is_made = false;
}

void Field::make_expected() {
  const auto records = std::span(expected_->records).first(expected_->count);
  std::iota(records.begin(), records.end(), expected_->first);
  expected_->texts.clear();
  try {
    append_all(records, expected_->texts);
  } catch (const BadValue&) {
    // Of a record without a text here: it is met when that one is made by itself.
  }
  expected_->is_made = true;
}

// Those with a value go to the source together, as far as they stand in a row.
void Field::append_all(std::span<const std::uint64_t> records, TextBlock& out) {
  indices_.assign(records.begin(), records.end());
  way_->take(indices_);
  const std::span<const std::uint64_t> indices = indices_;
  if (emptiness_.empty() && way_->gives_all()) return source_->append_all(indices, out);
  const auto is_empty = [&](std::size_t i) {
    return indices[i] == no_index || is_left_empty(records[i]);
  };
  std::size_t begin = 0;
  while (begin < records.size()) {
    std::size_t end = begin;
    while (end < records.size() && !is_empty(end)) ++end;
    const std::size_t size_before = out.size();
    if (end > begin) source_->append_all(indices.subspan(begin, end - begin), out);
    if (out.size() - size_before < end - begin || out.is_full()) return;
    if (end < records.size()) out.add_empty();
    begin = end + 1;
  }
}

const TextShape& Field::shape() const {
  if (!shape_) shape_ = find_shape();
  return *shape_;
}

TextShape Field::find_shape() const {
  TextShape shape = source_->shape();
  const bool leaves_none =
      way_->gives_all() &&
      std::all_of(emptiness_.begin(), emptiness_.end(), [](const auto& emptiness) {
        return emptiness->gaps() == 0 && emptiness->end() == endless;
      });
  shape.never_empty = shape.never_empty && leaves_none;
  for (const auto& emptiness : emptiness_) shape.lookups = sum(shape.lookups, emptiness->lookups());
  shape.always_made = shape.always_made && shape.lookups <= Lookup::most;
  if (shape.size) shape.most = smaller(shape.most, {*shape.size, *shape.size});
  if (shape.extremes) {
    shape.extremes->are_reached = shape.extremes->are_reached && leaves_none;
  } else if (shape.size && shape.only_digits) {
    shape.extremes = {.least = std::string(*shape.size, '0'),
                      .most = std::string(*shape.size, '9')};
  }
  return shape;
}

void Field::keep_within(const TextSize& most, const std::optional<Extremes>& extremes) {
  TextShape shape = this->shape();
  shape.always_made = true;
  shape.most = smaller(shape.most, most);
  if (!shape.extremes) shape.extremes = extremes;
  shape_ = std::move(shape);
}

const TextFacts& Field::text_facts() const {
  if (!text_facts_) text_facts_ = predict();
  return *text_facts_;
}

// Of the source's texts, as the way takes them.
TextFacts Field::predict_on_way() const {
  const std::uint64_t period = *source_->period();
  const Count indices = way_->indices();
  TextFacts field = source_->text_facts();
  if (indices.least < period) {
    // Which of the texts are taken is unknown, unless they all differ.
    const bool differ = source_->uniqueness().different >= period && source_->shape().never_empty;
    field.values = {differ ? indices.least : 0, std::min(field.values.most, indices.most)};
  }
  field.end = way_->end();
  field.gaps = endless;
  field.least_empty = way_->gaps();
  field.all_after = way_->all_after();
  field.cycle = way_->cycle();
  field.follows = way_.get();
  return field;
}

TextFacts Field::predict() const {
  TextFacts field = source_->period() ? predict_on_way() : source_->text_facts();
  if (source_->shape().never_empty) field.gaps = way_->gaps();
  for (const std::unique_ptr<Emptiness>& emptiness : emptiness_) {
    field.end = std::min(field.end, emptiness->end());
    field.gaps = sum(field.gaps, emptiness->gaps());
    field.least_empty = std::max(field.least_empty, emptiness->least_empty());
    const std::optional<Cycle> cycle = emptiness->cycle();
    field.cycle =
        cycle && field.cycle ? std::optional(common_cycle(*cycle, *field.cycle)) : std::nullopt;
    field.follows = nullptr;
  }
  const bool has_empty = field.gaps > 0 || field.end != endless;
  // Emptiness may hide values.
  if (!emptiness_.empty() && has_empty) {
    field.values.least = 0;
    field.all_after = endless;
  }
  return field;
}

// Whether records with the same text have the same index. Those without a text have none of the
// indices, or are one record.
bool Field::tells_index() const {
  const TextFacts& field = text_facts();
  return emptiness_.empty() ||
         (field.gaps <= 1 && field.end == endless && source_->shape().never_empty);
}

void Field::tell(Dependencies& dependencies) const {
  if (tells_index()) tell_of_values(dependencies);
}

void Field::tell_of_values(Dependencies& dependencies) const {
  if (!dependencies.is_new(thing())) return;
  if (!source_->period()) {
    source_->tell(dependencies, thing());
    return;
  }
  way_->tell(dependencies);
  // Where a text may be empty for an index, the records without an index look like that.
  const bool is_end_seen = source_->shape().never_empty || way_->gives_all();
  const std::uint64_t told = is_end_seen ? endless : way_->gaps() > 0 ? 0 : way_->end();
  const std::uint64_t different = source_->uniqueness().different;
  if (different >= *source_->period()) {
    dependencies.add({thing()}, way_->thing(), told);
    return;
  }
  if (way_->is_in_order()) dependencies.add({thing()}, the_record, different);
  source_->tell_of_row(dependencies, {.text = thing(), .row = way_->thing(), .records = told});
}

Uniqueness Field::uniqueness_with(const std::vector<const Field*>& fields,
                                  std::uint64_t records) const {
  const auto found = uniqueness_with_.find(fields);
  if (found != uniqueness_with_.end()) return found->second;
  return uniqueness_with_.emplace(fields, uniqueness_of(fields, records)).first->second;
}

std::uint64_t Field::first_repeated() const {
  const bool is_in_order = emptiness_.empty() && way_->is_in_order();
  const std::uint64_t repeated = is_in_order ? source_->uniqueness().repeated : endless;
  // Beyond its indices the way decides what comes.
  return repeated < source_->period().value_or(endless) ? repeated : endless;
}

std::string Field::course_of_texts(std::uint64_t records) const {
  return source_->period() ? way_->course() : source_->course(records);
}

std::string Field::course(std::uint64_t records) const {
  const std::string course = course_of_texts(records);
  const Count empty = text_facts().empty(records);
  if (empty.most == 0) return course;
  if (empty.least == 0) return course + "; may be empty in some records";
  return course + "; empty in " + (empty.is_exact() ? "" : "at least ") +
         std::to_string(empty.least) + " of " + counted_records(records);
}

std::string Field::doubt() const {
  if (!tells_index()) return "is empty in some records";
  const bool has_doubt = !source_->period() || source_->uniqueness().different < *source_->period();
  return has_doubt ? std::string(source_->doubt()) : way_->doubt();
}

}  // namespace korvex::sources
