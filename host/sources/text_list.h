#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sources/decimal.h"
#include "host/sources/source.h"
#include "host/ways/refusal.h"

namespace korvex::sources {

// All that texts were read from, as it was read. `owner` keeps it; none is needed for what stays.
struct ReadText {
  std::string_view text;
  std::shared_ptr<const void> owner;
};

// Texts in a row, which copies of the list share.
class TextList {
 public:
  // Of copies, one after the other.
  static TextList of_texts(std::span<const std::string_view> texts, ReadText content = {});
  static TextList of_values(const std::vector<std::string>& values);

  // The lines of a text file, which end with LF or CRLF, the last one perhaps with neither. A mark
  // of UTF-8 at the begin is left out. Refused is what is not UTF-8, with the number of its line.
  static ways::Result<TextList> of_lines(std::string content);

  // What they were read from, empty if from nothing.
  std::string_view content() const { return content_.text; }

  std::size_t size() const { return texts_->size(); }
  std::string_view operator[](std::size_t i) const { return (*texts_)[i]; }

  // Each with the overhang that a block asks for.
  std::span<const std::string_view> texts() const { return *texts_; }

  // What is known of them, one after the other. Looks at them all.
  TextShape shape() const;
  TextFacts text_facts(Comparison comparison) const;
  Uniqueness uniqueness(Comparison comparison) const;

 private:
  TextList(std::shared_ptr<const std::string> bytes, std::vector<std::string_view> texts,
           ReadText content);

  // One text for all that are the same.
  TextList compared(Comparison comparison) const;

  std::shared_ptr<const std::string> bytes_;
  std::shared_ptr<const std::vector<std::string_view>> texts_;
  ReadText content_;
};

// The texts of a list, which is not empty, by their places. Whether they differ, and their shape,
// is found out when it is asked for the first time.
std::unique_ptr<Source> make_list_source(TextList list,
                                         Comparison comparison = Comparison::as_texts);

}  // namespace korvex::sources
