#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/commands/load_plan.h"
#include "host/databases/database.h"
#include "host/records/record_source.h"

namespace korvex::host {

// A record that no database can take.
class BadRecord : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The records of a layout as they go into the columns of a table.
class LoadRecords {
 public:
  // Both must outlive this object.
  LoadRecords(PreparedLayout& prepared, const LoadPlan& plan);

  // The fields of the next record, valid until the next call; false after the last one. Throws
  // BadRecord.
  bool next(RowFields& fields);

  // Of the record that next() has answered, from 1.
  std::int64_t number() const { return number_; }

 private:
  const LoadPlan& plan_;
  ReadableRecords records_;
  std::int64_t number_ = 0;
};

// Where a refused row comes from: record, items and values as far as they are known, else an
// empty text. The row has passed by then, so the records are made once more up to it: generating is
// by far the fastest part of a load, and the same settings give the same values.
std::string place_of(const RefusedRow& row, PreparedLayout& prepared, const LoadPlan& plan);

}  // namespace korvex::host
