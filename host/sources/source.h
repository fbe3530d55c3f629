#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace korvex::sources {

// What all texts of a source have in common. It decides whether a text that is made of several can
// be taken apart again.
struct TextShape {
  bool never_empty = false;         // every index has a text
  std::optional<std::size_t> size;  // bytes, of every text
  bool only_digits = false;         // every text consists of ASCII digits
  bool no_digits = false;           // no text has one
};

// Texts in UTF-8 by their index. Of one thread.
class Source {
 public:
  virtual ~Source() = default;

  // Appends the text at an index, which is below the period where there is one. Appends nothing
  // where there is no value.
  virtual void append(std::uint64_t index, std::string& out) = 0;

  // How many indices there are; nothing for a source that follows the record itself, whose index is
  // the record's number.
  virtual std::optional<std::uint64_t> period() const = 0;

  // So many indices from the first on have texts that all differ, for certain. At least 1.
  virtual std::uint64_t different() const { return 1; }

  virtual TextShape shape() const { return {}; }
};

}  // namespace korvex::sources
