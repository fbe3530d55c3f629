#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "courses/line_block.h"
#include "run/record_assembler.h"

namespace korvex {

// Assembles many lines at once, item by item: the same bytes as the record assembler, whose items
// it takes on, so that either can go on where the other stopped.
//
// Records are assembled together as long as the items predict them: fields that keep their size,
// and values of lists. First the values of lists are written, line by line, because they decide
// where everything else is, unless all are of one size; then each item writes its fields into
// all lines, a run at a time.
class BlockAssembler {
 public:
  // Keeps a reference to the record assembler, which must have all its fields.
  BlockAssembler(RecordAssembler& records, LayoutKind layout_kind);

  // Appends up to `most` of the next lines, with their ends; answers how many. 0 when the next
  // record must be left to the record assembler.
  std::int64_t assemble(LineBlock& lines, std::int64_t most);

  // To be called when records have been taken elsewhere, or another one is next.
  void forget() { planned_ = 0; }

  // Where the lines begin that the last call has appended.
  std::span<const std::size_t> line_begins() const { return begins_; }

 private:
  // One item, and the text between its field and the next item that counts or is listed.
  struct Column {
    ItemGenerator* item = nullptr;  // null for the text before the first item
    FieldForm form = FieldForm::constant;
    bool is_listed = false;  // of a list with values of several sizes
    std::size_t offset = 0;  // from the line's begin, or from the end of the last listed field
    std::size_t room = 0;    // after it, up to the next listed field or the line's end
    std::string closing;
  };

  // A listed column as the loop over the lines needs it.
  struct ListedField {
    ItemGenerator* item;
    EnumCursor cursor;  // a copy of the item's, while lines are written
    std::size_t offset;
    const char* closing;
    std::size_t closing_size;
  };

  bool plan_records();
  Column& add_column(ItemGenerator* item, FieldForm form);
  void place_columns();
  std::int64_t place_equal_lines(LineBlock& lines, std::int64_t most);
  std::int64_t write_lists(LineBlock& lines, std::int64_t most);
  template <std::size_t... list>
  void write_few_lists(LineBlock& lines, std::size_t count, std::index_sequence<list...>);
  template <typename Fields>
  void write_listed_fields(Fields& fields, LineBlock& lines, std::size_t count);
  void write_columns(LineBlock& lines, std::int64_t count);

  RecordAssembler& records_;
  const bool drops_last_comma_;
  bool may_predict_ = true;

  std::vector<Column> columns_;
  std::int64_t planned_ = 0;   // records that the columns still hold for
  std::size_t tail_size_ = 0;  // of what follows the last listed field
  std::size_t line_room_ = 0;  // for the longest line
  std::vector<ListedField> listed_;

  // Places in the lines: where each begins, and then where each listed field ends.
  std::vector<std::size_t> places_;
  std::span<const std::size_t> begins_;
};

}  // namespace korvex
