#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/process/replaced_output.h"
#include "lists/enumeration_value.h"
#include "values/attributes.h"

namespace korvex::host {

// A value list that is being written beside a layout. It gets its name when it is kept; until
// then it is a temporary file, which is removed with this object. Throws std::runtime_error for
// what cannot be written.
class ListFile {
 public:
  // `number_item`, where given, is an item for numbers that the values
  // may fit.
  ListFile(const std::string& folder, const std::string& name,
           const std::optional<ItemAttributes>& number_item);

  // What the module can read as a line of a list; nothing for what it cannot.
  static std::optional<std::string> line_of(std::string_view utf8);

  // Takes an answer of line_of().
  void append(const std::string& line);

  void keep();

  const std::string& name() const { return name_; }
  const std::string& path() const { return path_; }
  std::int64_t values() const { return values_; }
  std::size_t longest() const { return longest_; }
  bool fits_number_item() const { return fits_number_item_; }

 private:
  void report() const;

  std::string name_;
  std::string path_;
  ReplacedOutput output_;
  std::optional<EnumerationRule> number_rule_;
  std::int64_t values_ = 0;
  std::size_t longest_ = 0;
  bool fits_number_item_ = false;
};

}  // namespace korvex::host
