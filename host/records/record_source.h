#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "generate/item_generator.h"
#include "host/records/prepared_layout.h"

namespace korvex::host {

// The records of a layout, one after the other, with the values that generating would give. Fields
// are told apart where they are made, so that a value may hold commas and quotation marks. Needs
// memory for one record.
class RecordSource {
 public:
  // Takes the lists of the layout's items, which must outlive this object.
  explicit RecordSource(PreparedLayout& prepared);

  // The values of the next record, without quotation marks, in code page 932; they stand until the
  // next call. False at the end, and after a failure, whose code `code()` then answers.
  bool next(std::vector<std::string_view>& values);

  std::int32_t code() const { return code_; }

 private:
  struct Field {
    std::unique_ptr<ItemGenerator> generator;
    bool is_quoted = false;
  };
  struct Place {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  PreparedLayout& prepared_;
  std::vector<Field> fields_;
  RunState run_;
  LineBlock line_{0};
  std::vector<Place> places_;
  std::int32_t records_left_ = 0;
  std::int32_t code_ = 0;
};

}  // namespace korvex::host
