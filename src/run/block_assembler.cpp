#include "run/block_assembler.h"

#include <algorithm>
#include <array>

#include "values/records.h"

namespace korvex {

namespace {

// Lines are written again for each item, so as many are taken at a time as the processor's nearest
// cache holds, beside the wheels.
constexpr std::size_t bytes_at_a_time = 24 * 1024;
constexpr std::int64_t most_lines = 512;
constexpr std::int64_t fewest_lines = 32;

// Fewer records cost less one by one.
constexpr std::int64_t fewest_planned = 4;

}  // namespace

BlockAssembler::BlockAssembler(RecordAssembler& records, LayoutKind layout_kind)
    : records_(records), drops_last_comma_(layout_kind == layout_kind::iso) {
  for (const ItemGenerator* item : records_.fields()) may_predict_ &= item->is_predictable();
  may_predict_ &= !records_.fields().empty();
}

std::int64_t BlockAssembler::assemble(LineBlock& lines, std::int64_t most) {
  begins_ = {};
  const bool is_planned =
      may_predict_ && most >= fewest_planned && (planned_ > 0 || plan_records());
  if (!is_planned) {
    // A plan with an end counts records, and the next one is taken elsewhere.
    if (planned_ != FieldOutlook::no_end) planned_ = 0;
    return 0;
  }
  most = std::min({most, planned_, most_lines});
  const std::int64_t count =
      !listed_.empty() ? write_lists(lines, most) : place_equal_lines(lines, most);
  write_columns(lines, count);
  if (planned_ != FieldOutlook::no_end) planned_ -= count;
  begins_ = std::span(places_).first(static_cast<std::size_t>(count));
  return count;
}

// Asks every item how its field goes on, and lays the line out accordingly.
bool BlockAssembler::plan_records() {
  std::int64_t records = FieldOutlook::no_end;
  columns_.clear();
  std::string* text = &add_column(nullptr, FieldForm::constant).closing;
  for (ItemGenerator* item : records_.fields()) {
    const FieldOutlook outlook = item->outlook(records_.run());
    records = std::min(records, outlook.records);
    if (records < fewest_planned) return false;
    if (outlook.form == FieldForm::constant) {
      item->append_constant(*text, records_.run());
      continue;
    }
    *text += item->opening();
    text = &add_column(item, outlook.form).closing;
    *text += item->closing();
  }
  if (drops_last_comma_) text->pop_back();
  *text += '\n';
  planned_ = records;
  place_columns();
  return true;
}

BlockAssembler::Column& BlockAssembler::add_column(ItemGenerator* item, FieldForm form) {
  Column& column = columns_.emplace_back();
  column.item = item;
  column.form = form;
  column.is_listed = item != nullptr && !item->has_one_size(form);
  return column;
}

void BlockAssembler::place_columns() {
  line_room_ = 0;
  listed_.clear();
  std::size_t offset = 0;
  for (Column& column : columns_) {
    column.offset = offset;
    if (column.is_listed) {
      offset = 0;
      line_room_ += column.item->largest_value() + LineBlock::chunk_size;
      listed_.push_back({column.item, column.item->list_cursor(), column.offset,
                         column.closing.data(), column.closing.size()});
    } else {
      const std::size_t field = column.item != nullptr ? column.item->size(column.form) : 0;
      offset += field + column.closing.size();
      line_room_ += field;
    }
    line_room_ += column.closing.size();
  }
  tail_size_ = offset;
  std::size_t piece_end = offset;
  for (auto column = columns_.rbegin(); column != columns_.rend(); ++column) {
    if (column->is_listed) piece_end = column->offset;
    column->room = piece_end - (column->is_listed ? piece_end : offset);
    offset = column->offset;
  }
  places_.resize((listed_.size() + 1) * static_cast<std::size_t>(most_lines));
}

// Lines of one size: answers how many.
std::int64_t BlockAssembler::place_equal_lines(LineBlock& lines, std::int64_t most) {
  const std::size_t line_size = tail_size_;
  const auto fitting = static_cast<std::int64_t>(bytes_at_a_time / line_size);
  const auto count = static_cast<std::size_t>(std::min(most, std::max(fitting, fewest_lines)));
  lines.require(count * line_size);
  std::size_t place = lines.size();
  for (std::size_t i = 0; i < count; ++i, place += line_size) places_[i] = place;
  lines.move_cursor(lines.data() + place);
  return static_cast<std::int64_t>(count);
}

// Writes the values of the lists with what closes them, and notes where all other fields go.
std::int64_t BlockAssembler::write_lists(LineBlock& lines, std::int64_t most) {
  for (ListedField& field : listed_) {
    field.cursor = field.item->list_cursor();
    if (field.cursor.is_at_end()) field.cursor.rewind();
    most = std::min(most, static_cast<std::int64_t>(field.cursor.left()));
  }
  const auto fitting = static_cast<std::int64_t>(bytes_at_a_time / line_room_);
  const auto count = static_cast<std::size_t>(std::min(most, std::max(fitting, fewest_lines)));
  lines.require(count * line_room_);
  switch (listed_.size()) {
    case 1:
      write_few_lists(lines, count, std::make_index_sequence<1>());
      break;
    case 2:
      write_few_lists(lines, count, std::make_index_sequence<2>());
      break;
    default:
      write_listed_fields(listed_, lines, count);
  }
  for (const ListedField& field : listed_) field.item->list_cursor() = field.cursor;
  return static_cast<std::int64_t>(count);
}

// The same with cursors that no store to a line can change, so that they stay in registers.
template <std::size_t... list>
void BlockAssembler::write_few_lists(LineBlock& lines, std::size_t count,
                                     std::index_sequence<list...>) {
  std::array fields = {listed_[list]...};
  write_listed_fields(fields, lines, count);
  std::copy(fields.begin(), fields.end(), listed_.begin());
}

// What a copied chunk leaves after its end is overwritten by what follows.
template <typename Fields>
void BlockAssembler::write_listed_fields(Fields& fields, LineBlock& lines, std::size_t count) {
  char* const base = lines.data();
  char* out = lines.cursor();
  const std::size_t tail_size = tail_size_;
  std::size_t* const places = places_.data();
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t* place = places + i;
    *place = static_cast<std::size_t>(out - base);
    for (ListedField& field : fields) {
      out = field.cursor.write_next(out + field.offset);
      copy_short(out, field.closing, field.closing_size);
      out += field.closing_size;
      place += most_lines;
      *place = static_cast<std::size_t>(out - base);
    }
    out += tail_size;
  }
  lines.move_cursor(out);
}

void BlockAssembler::write_columns(LineBlock& lines, std::int64_t count) {
  const std::size_t* places = places_.data();
  for (const Column& column : columns_) {
    const FieldPlaces fields = {lines.data(), places, column.offset, column.room};
    if (column.is_listed) {
      places += most_lines;
    } else if (column.form == FieldForm::counting) {
      column.item->write_counting(fields, count, column.closing);
    } else if (column.form == FieldForm::listed) {
      column.item->write_values(fields, count, column.closing);
    } else if (!column.closing.empty()) {
      write_fields(fields, count, column.closing, {});
    }
  }
}

}  // namespace korvex
