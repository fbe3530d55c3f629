#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/records/moment_form.h"
#include "host/records/prepared_layout.h"
#include "host/records/record_number.h"
#include "host/records/value_rule.h"
#include "host/text/code_page_text.h"

namespace korvex::host {

// How the texts of records are encoded.
enum class TextEncoding { code_page, utf8 };

// The records of a layout, one after the other from any of them on, with the values that generating
// would give, or that the layout's own sources and ways give. Fields are separated where they are
// made, so that a value may hold commas and quotation marks. Needs memory for one record.
class RecordSource {
 public:
  // Takes the records of the layout from its first one on; the layout must outlive this object.
  explicit RecordSource(PreparedLayout& prepared);

  // The written values of the next record, without quotation marks, an empty one where there is
  // none; they are valid until the next call. False at the end, and after a failure.
  bool next(std::vector<std::string_view>& values);

  // The values of the next records, at most so many, as columns: so many rows are answered, whose
  // texts stand until the next call. None at the end, and after a failure. Not for a plain layout,
  // whose engine makes whole records.
  std::size_t next_rows(std::uint64_t most);

  // The values of an item in these rows; an empty one where there is none.
  const sources::TextBlock& column(std::size_t item) const { return field(item).expected_texts(); }

  // Of the texts of an item's source.
  sources::TextShape shape(std::size_t item) const { return field(item).source().shape(); }

  // Goes to a record, or to the end of all. Any order of records will do.
  void seek(RecordNumber record);

  // Of all values.
  TextEncoding encoding() const {
    return prepared_.is_plain() ? TextEncoding::code_page : TextEncoding::utf8;
  }

  // Why there is no next record; empty at the end of all.
  const std::string& failure() const { return failure_; }

 private:
  // Of a written item.
  sources::Field& field(std::size_t item) const {
    return *prepared_.fields()[prepared_.written()[item].place];
  }

  bool next_of_fields(std::vector<std::string_view>& values);
  std::size_t make_rows(std::uint64_t most);
  std::size_t fitting_rows(std::size_t item, std::size_t rows) const;
  void tell_failure();

  PreparedLayout& prepared_;
  RecordNumber next_;
  RecordNumber end_;
  // Of the values that were not looked at before, side by side with the written items.
  std::vector<std::optional<ValueRule>> rules_;
  // Of fields: the rows that are made, and how many are tried next.
  RecordNumber first_row_;
  std::size_t rows_ = 0;
  std::size_t tried_rows_ = 1;
  std::string failure_;
};

// The same records with their values as people and databases read them: in UTF-8, and moments in
// the form that each field is to have.
class ReadableRecords {
 public:
  ReadableRecords(PreparedLayout& prepared, std::vector<MomentForm> forms);

  // As RecordSource says. A value ends before bytes that are no character.
  bool next(std::vector<std::string_view>& values);
  void seek(RecordNumber record) { source_.seek(record); }
  const std::string& failure() const { return source_.failure(); }

  // The first value of the record with such bytes.
  struct Unreadable {
    std::size_t field = 0;
    std::string_view value;
  };
  const std::optional<Unreadable>& unreadable() const { return unreadable_; }

 private:
  RecordSource source_;
  CodePageDecoder decoder_;
  std::vector<MomentForm> forms_;
  std::vector<std::string_view> made_;
  std::vector<std::string> texts_;
  std::vector<MomentText> moments_;
  std::optional<Unreadable> unreadable_;
};

}  // namespace korvex::host
