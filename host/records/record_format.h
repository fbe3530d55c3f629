#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/records/prepared_layout.h"
#include "host/records/record_number.h"
#include "host/sources/text_block.h"
#include "host/sources/text_facts.h"

namespace korvex::host {

// How records are written for another program.
enum class Dialect { csv, tsv, json_lines, sql };

// As a user names them.
inline const std::vector<std::pair<std::string, Dialect>> dialect_names = {
    {"csv", Dialect::csv},
    {"tsv", Dialect::tsv},
    {"jsonl", Dialect::json_lines},
    {"sql", Dialect::sql},
};

// The values of an item in some records.
struct RecordColumn {
  const sources::TextBlock* texts = nullptr;
  sources::TextShape shape;  // of those that are not empty
};

// Writes records in one dialect, with the texts that a load would store. Names and values are
// handed over in the encoding that is to be written; an empty value is an empty field, in JSON and
// SQL null.
class RecordFormat {
 public:
  virtual ~RecordFormat() = default;

  // Appends what comes before the first record, a record, what comes after the last.
  virtual void begin(std::string&) {}
  virtual void append(std::span<const std::string_view> values, std::string& out) = 0;

  // The same for so many records at once, whose values are the first ones of each column. Does not
  // tell where fields end.
  virtual void append_rows(std::span<const RecordColumn> columns, std::size_t rows,
                           std::string& out);
  virtual void end(std::string&) {}

  // The next record is this one: what is written from here on is what would have
  // been, had all records before it been written.
  virtual void go_to(RecordNumber) {}

  // From here on append() adds to `ends` where each field ends, in the text that it appends to;
  // null for no longer.
  void tell_field_ends(std::vector<std::size_t>* ends) { ends_ = ends; }

 protected:
  void end_field(const std::string& out) {
    if (ends_ != nullptr) ends_->push_back(out.size());
  }

 private:
  std::vector<std::size_t>* ends_ = nullptr;
  std::vector<std::string_view> row_;
};

struct FormatChoices {
  Dialect dialect = Dialect::csv;
  bool header = false;        // csv and tsv: a first line of names
  std::string table;          // sql: as SQL takes it
  bool in_code_page = false;  // names and values are in code page 932, else UTF-8; not for JSON
};

// The table that SQL puts the records of a layout into, between quotation marks: the one that was
// chosen, else the layout's own, else one named after the data file.
std::string sql_table(const FormatChoices& choices, const Layout& layout);

// `names` and `items` go side by side and must outlive the format.
std::unique_ptr<RecordFormat> make_record_format(const FormatChoices& choices,
                                                 const std::vector<std::string>& names,
                                                 const std::vector<PreparedItem>& items);

}  // namespace korvex::host
