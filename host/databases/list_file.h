#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formatlang/attributes.h"
#include "generate/enumeration_value.h"

namespace korvex::host {

// A list of values that is being written beside a layout. It gets its name when it is kept; until
// then it is a temporary file, which is removed with this object.
class ListFile {
 public:
  // Throws std::system_error. `number_item`, where given, is an item for numbers that the values
  // may fit.
  ListFile(const std::string& folder, const std::string& name,
           const std::optional<ItemAttributes>& number_item);
  ~ListFile();
  ListFile(const ListFile&) = delete;
  ListFile& operator=(const ListFile&) = delete;

  // What the module can read as a line of a list; nothing for what it cannot.
  static std::optional<std::string> line_of(std::string_view utf8);

  // Takes an answer of line_of().
  void append(const std::string& line);

  void keep();

  const std::string& name() const { return name_; }
  std::string path() const;
  std::int64_t values() const { return values_; }
  std::size_t longest() const { return longest_; }
  bool fits_number_item() const { return fits_number_item_; }

 private:
  std::string folder_;
  std::string name_;
  std::string temporary_;
  std::optional<EnumerationRule> number_rule_;
  std::ofstream stream_;
  std::int64_t values_ = 0;
  std::size_t longest_ = 0;
  bool fits_number_item_ = false;
};

}  // namespace korvex::host
