#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"

namespace korvex::host {

// How the text of a field changes on its way into a column.
enum class FieldForm {
  as_it_is,
  iso_date,       // "20240229", "2024/02/29", "240229" or "24/02/29" to "2024-02-29"
  iso_time,       // "235959" to "23:59:59"
  iso_timestamp,  // "20240229 235959" or "2024/02/29 23:59:59" to "2024-02-29 23:59:59"
};

// The form for an item of the attribute in a column: moments become what databases read, unless the
// column has no room for that or holds numbers, where the text stays as it would be in a file.
FieldForm field_form(std::int32_t attribute, const ColumnSchema& column);

// Cuts generated records into fields.
class RecordReader {
 public:
  // In the record's order. `has_last_comma` tells whether a comma stands behind the last field,
  // `has_marks` whether marks stand for commas inside values.
  RecordReader(const std::vector<FieldForm>& forms, bool has_last_comma, bool has_marks);

  // False when the record has another number of fields. The fields are views of the record and of
  // this object, valid until the next call.
  bool read(std::string_view record, RowFields& fields);

 private:
  static constexpr std::size_t longest_moment = 19;
  using MomentText = std::array<char, longest_moment>;

  void restore_commas(std::string_view record, RowFields& fields);

  std::vector<FieldForm> forms_;
  std::vector<MomentText> texts_;
  bool has_last_comma_;
  bool has_marks_;
  std::string restored_;
};

}  // namespace korvex::host
