#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "host/sources/knowledge.h"

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

  // There are no more different texts.
  virtual std::uint64_t most_texts() const = 0;

  // What follows from the text, among the first `records` records, which have an index.
  virtual void tell(Knowledge&, Thing text, Thing index, std::uint64_t records) const = 0;

  virtual TextShape shape() const { return {}; }
};

}  // namespace korvex::sources
