#include "host/records/record_source.h"

#include "formatlang/attributes.h"

namespace korvex::host {

RecordSource::RecordSource(PreparedLayout& prepared)
    : prepared_(prepared), records_left_(prepared.layout().records) {
  for (PreparedItem& item : prepared.items()) {
    const FmtColRec& settings = item.column->record;
    Field field;
    field.generator =
        std::make_unique<ItemGenerator>(*item.column, prepared.layout().kind, prepared.quotation());
    field.is_quoted = prepared.quotation() && is_quoted(settings.attribute) &&
                      settings.generation_type != generation_type::initial_value;
    if (item.values) field.generator->set_enumeration(std::move(item.values));
    if (ClRepeatData* entry = prepared.repeat_of(item); entry != nullptr) {
      entry->item = field.generator.get();
      field.generator->join_repeat(prepared.repeats().next_inner(*entry));
    }
    fields_.push_back(std::move(field));
  }
}

bool RecordSource::next(std::vector<std::string_view>& values) {
  if (records_left_ == 0 || code_ != 0) return false;
  --records_left_;
  line_.finish_line();
  line_.remove_front(line_.finished().size());
  places_.clear();
  for (const Field& field : fields_) {
    const std::size_t frame = field.is_quoted ? 1 : 0;
    const std::size_t begin = line_.line_size() + frame;
    code_ = field.generator->append(line_, run_);
    if (code_ != 0) return false;
    places_.push_back({begin, line_.line_size() - 1 - frame});
  }
  run_.first_record = false;
  if (prepared_.repeats_are_in_use() && !run_.repeats_finished) {
    run_.repeats_finished = prepared_.repeats().advance();
  }
  // The line may have moved while it grew.
  const char* begin = line_.cursor() - line_.line_size();
  values.clear();
  for (const Place& place : places_) {
    values.emplace_back(begin + place.begin, place.end - place.begin);
  }
  return true;
}

}  // namespace korvex::host
