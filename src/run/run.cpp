#include "run/run.h"

#include <algorithm>
#include <new>

#include "platform/user_interface.h"
#include "run/progress.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

constexpr std::uint64_t comma_size = 1;
constexpr std::uint64_t quotation_size = 2;

}  // namespace

Result<bool> Run::load(ClColMain& main, const ListLoader& load_list) {
  try {
    main.set_run_mode(run_mode::generator);
    if (const ErrorCode code = main.load(); code != error::none) return code;
    if (number_of(main.records()) < 0) return error::cannot_operate;
    main.settings.set_paths(main.settings_path(), main.work_folder());
    const Result<std::size_t> levels =
        main.settings.load(main.level(), main.records(), main.layout_kind());
    if (!levels) return levels.code();
    if (*levels == 0) return false;
    main.settings.set_run_mode(run_mode::generator);
    const bool quotation = main.settings.quotation() == quotation::double_mark;
    const ErrorCode code = prepare(main, {main.layout_kind(), quotation}, load_list);
    if (code != error::none) return code;
    return true;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode Run::prepare(ClColMain& main, LineForm form, const ListLoader& load_list) {
  return prepare_with(main, form, [&](const ClFmtColInf& column) -> SharedList {
    auto values = std::make_shared<ClEnumDataList>();
    if (const ErrorCode result = load_list(column.record, *values); result != error::none) {
      return result;
    }
    return SharedList(std::move(values));
  });
}

ErrorCode Run::prepare_like(const Run& other) {
  return prepare_with(*other.main_, other.form_, [&](const ClFmtColInf& column) -> SharedList {
    return other.generators_.at(&column)->enumeration();
  });
}

ErrorCode Run::prepare_with(ClColMain& main, LineForm form, const ListGiver& give_list) {
  main_ = &main;
  form_ = form;
  ErrorCode result = prepare_repeats();
  if (result == error::none) result = prepare_items(give_list);
  if (result != error::none) return result;
  if (repeats_are_in_use()) records_.set_repeats(repeats_);
  blocks_.emplace(records_, form_.layout_kind);
  return error::none;
}

ErrorCode Run::prepare_repeats() {
  if (main_->settings.current_level()->record.repeat_flag == 0) return error::none;
  return repeats_.build(*main_);
}

ErrorCode Run::prepare_items(const ListGiver& give_list) {
  for (const auto& item : main_->items) {
    const ClFmtColInf* column = main_->settings.find_column(item->item_number);
    if (column == nullptr) {
      item->is_left_out = true;
      continue;
    }
    const ErrorCode result = prepare_item(*column, give_list);
    if (result != error::none) return result;
  }
  return fields().empty() ? error::no_format_for_item : error::none;
}

ErrorCode Run::prepare_item(const ClFmtColInf& column, const ListGiver& give_list) {
  const FmtColRec& settings = column.record;
  ItemGenerator& generator = item_generator(column);
  records_.add_field(generator);
  if (settings.generation_type == generation_type::enumeration) {
    // An item that is in several fields has its values already; it only takes them otherwise.
    if (generator.has_enumeration()) {
      generator.add_list_field();
    } else {
      SharedList values = give_list(column);
      if (!values) return values.code();
      generator.set_enumeration(std::move(*values));
    }
  }
  if (repeats_are_in_use() && is_on(settings.repeat_flag)) {
    ClRepeatData* entry = repeats_.find_level(settings.repeat_level);
    if (entry == nullptr) return error::repeat_entry_missing;
    entry->item = &generator;
    generator.join_repeat(repeats_.next_inner(*entry));
  }
  return error::none;
}

ItemGenerator& Run::item_generator(const ClFmtColInf& column) {
  std::unique_ptr<ItemGenerator>& generator = generators_[&column];
  if (!generator) {
    generator = std::make_unique<ItemGenerator>(column, form_.layout_kind, form_.quotation);
  }
  return *generator;
}

ErrorCode Run::append(LineBlock& lines, std::int64_t most) {
  if (records_.is_lost()) return error::cancelled;
  if (blocks_->assemble(lines, most) > 0) {
    begins_ = blocks_->line_begins();
    return error::none;
  }
  const std::size_t begin = lines.size();
  if (const ErrorCode result = records_.assemble(lines); result != error::none) {
    lines.move_cursor(lines.data() + begin);
    return result;
  }
  // A line feed ends the record; in an iso layout it takes the place of the last comma.
  if (form_.layout_kind == layout_kind::iso) {
    lines.back() = '\n';
  } else {
    lines.require(1);
    lines.append('\n');
  }
  single_begin_ = begin;
  begins_ = {&single_begin_, 1};
  return error::none;
}

ErrorCode Run::next(std::vector<std::string_view>& values) {
  if (records_.is_lost()) return error::cancelled;
  line_.clear();
  if (const ErrorCode result = records_.assemble(line_, ends_); result != error::none)
    return result;
  values.clear();
  std::size_t begin = 0;
  for (std::size_t i = 0; i < ends_.size(); ++i) {
    const std::size_t frame = fields()[i]->is_quoted() ? 1 : 0;
    values.emplace_back(line_.data() + begin + frame, ends_[i] - 1 - begin - 2 * frame);
    begin = ends_[i];
  }
  blocks_->forget();
  return error::none;
}

void Run::seek(Steps record) {
  records_.seek(record);
  blocks_->forget();
}

std::vector<FieldFacts> Run::field_facts() const {
  std::vector<FieldFacts> all;
  for (const ItemGenerator* item : fields()) all.push_back(facts_of(*item));
  return all;
}

FieldFacts Run::facts_of(const ItemGenerator& item) const {
  const FmtColRec& settings = item.settings();
  FieldFacts field;
  field.frame_bytes = comma_size + (item.is_quoted() ? quotation_size : 0);
  const ClRepeatData* entry = item.is_repeat_member() || repeats_are_in_use()
                                  ? repeats_.find_level(settings.repeat_level)
                                  : nullptr;
  if (entry != nullptr && is_on(settings.repeat_flag)) {
    field.is_repeated = true;
    field.level = settings.repeat_level;
    field.rounds = entry->rounds();
    field.hold = entry->turns.hold;
    field.repeats_end = repeats_.end();
    if (!records_.repeats_turn_evenly()) return field;
  }
  if (!item.cycle()) return field;
  field.values = item.facts();
  return field;
}

std::optional<ByteCount> Run::size(RecordCount records) const {
  // A line feed of its own, but for the kind whose lines end in it in place of the last comma.
  ByteCount bytes = form_.layout_kind == layout_kind::iso ? 0 : records.number();
  for (const ItemGenerator* item : fields()) {
    const std::optional<ByteCount> own = facts_of(*item).bytes(records.number());
    if (!own) return std::nullopt;
    bytes += *own;
  }
  return bytes;
}

Result<ByteCount> Run::measure(RecordCount count) {
  try {
    if (const auto known = size(count)) return *known;
    const auto records = static_cast<std::int64_t>(count.number());
    const auto progress = platform::user_interface().open_progress(nullptr, true);
    ProgressMeter meter(*progress, records);
    LineBlock lines(0);
    ByteCount bytes = 0;
    for (std::int64_t done = 0; done < records;) {
      if (progress->cancel_requested()) return error::cancelled;
      meter.update(done);
      if (const ErrorCode code = append(lines, records - done); code != error::none) return code;
      done += std::ssize(line_begins());
      bytes += lines.size();
      lines.clear();
    }
    return bytes;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

}  // namespace korvex
