#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/sources/dependencies.h"
#include "host/sources/text_block.h"
#include "host/sources/text_shape.h"

namespace korvex::sources {

// Thrown for a value that can't be in its record, or can't be made: what is wrong with it.
class BadValue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Texts in UTF-8 by their index. Of one thread.
class Source {
 public:
  virtual ~Source() = default;

  // Appends the text at an index, which is below the period where there is one. Appends nothing
  // where there is no value.
  virtual void append(std::uint64_t index, std::string& out) = 0;

  // Adds the texts at some indices to a block with room for so many, empty ones where there is no
  // value. May stop before the last one when the block is full, or with a BadValue at the one that
  // can't be made. The same as one by one; a source that can do it in less time has its own.
  virtual void append_all(std::span<const std::uint64_t> indices, TextBlock& out);

  // How many indices there are; nothing for a source that follows the record itself, whose index is
  // the record's number.
  virtual std::optional<std::uint64_t> period() const = 0;

  // What is known of every text, at little cost.
  virtual TextShape shape() const { return {}; }

  // What is known of the texts if their indices are taken one after the other. Emptiness is counted
  // by `never_empty` alone, and a source with a period need not tell its cycle.
  virtual TextFacts text_facts() const = 0;

  // Shows the texts, as far as they are known one by one and not too many. Called before
  // records are made.
  virtual Shown show_texts(const TakeText&) { return Shown::nothing; }

  // For how long the texts differ, one after the other.
  virtual Uniqueness uniqueness() const { return {}; }

  // What follows from the text beyond its index, and what it follows from.
  virtual void tell(Dependencies&, Thing /*text*/) const {}

  // The same of a source with a period, whose index does not follow from the text alone.
  virtual void tell_of_row(Dependencies&, const TextOfRow&) const {}

  // All that the texts were read from, as it was read; empty for a source that makes its texts.
  virtual std::string_view content() const { return {}; }

  // How the texts follow each other in so many records, in words: "starts again after 3 records".
  // Only for a source that follows the record.
  virtual std::string course(std::uint64_t) const { return {}; }

  // Why the index, or the record, does not follow from the text: "is ...". Asked only where it does
  // not.
  virtual std::string_view doubt() const = 0;
};

}  // namespace korvex::sources
