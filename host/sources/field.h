#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sources/emptiness.h"
#include "host/sources/source.h"
#include "host/sources/way.h"

namespace korvex::sources {

// What a record holds in one of its items: a source, a way through it, and what leaves it empty. Of
// one thread.
class Field {
 public:
  // Fields that take one row of a table or a set share a way.
  Field(std::unique_ptr<Source> source, std::shared_ptr<Way> way)
      : source_(std::move(source)), way_(std::move(way)) {}

  // With several, a record is empty where any of them says so.
  void add_emptiness(std::unique_ptr<Emptiness> emptiness) {
    emptiness_.push_back(std::move(emptiness));
    text_facts_.reset();
    shape_.reset();
  }

  // The text of a record; nothing where it has no value. Valid until the next record is asked for,
  // or until others are expected; until then asking again costs nothing. A record without a value
  // has an index too.
  std::optional<std::string_view> text(std::uint64_t record) {
    const std::string_view text = text_or_empty(record);
    return text.empty() ? std::nullopt : std::optional(text);
  }

  // The same with an empty text where there is no value.
  std::string_view text_or_empty(std::uint64_t record) {
    if (expected_ != nullptr && record - expected_->first < expected_->count) {
      const TextBlock& texts = expected_texts();
      const std::size_t place = record - expected_->first;
      if (place < texts.size()) return texts[place];
    }
    if (latest_record_ != record) make_text(record);
    return text_;
  }

  // Those that records may have, and no others.
  Shown show_texts(const TakeText& take) { return source_->show_texts(take); }

  // Whether any record may have the text: false where it is known that none has.
  bool may_have(std::string_view text);

  // These records in a row, at most as many as a block has texts, are going to be asked for: their
  // texts are made together, which takes less time, and are valid until others are expected.
  void expect(std::uint64_t first, std::size_t count);

  // The texts of the first of the expected records, empty ones where there is no value: fewer than
  // expected, perhaps none, where a value can't be made or where they take much memory.
  const TextBlock& expected_texts() {
    if (!expected_->is_made) make_expected();
    return expected_->texts;
  }

  // Adds the texts of some records to a block with room for so many, empty ones where there is no
  // value. May stop before the last one, as a source may.
  void append_all(std::span<const std::uint64_t> records, TextBlock& out);

  // Of the texts of all records. Found out when it is asked for the first time.
  const TextShape& shape() const;

  // To be told once it is known that all texts can be made: how large they are at most.
  void keep_within(const TextSize& most, const std::optional<Extremes>& extremes);

  // Computed by the first call.
  const TextFacts& text_facts() const;

  // At most this many first records are all different, as far as the order of texts says.
  std::uint64_t first_repeated() const;

  // What follows from the text, from the index, and from the fields that this one is made of.
  void tell(Dependencies& dependencies) const;

  // The same for those records alone that have a value here.
  void tell_of_values(Dependencies& dependencies) const;

  // How the texts follow each other in `records` records, in words: "drawn; empty in 3 of 12
  // records".
  std::string course(std::uint64_t records) const;

  // The same without saying what is empty.
  std::string course_of_texts(std::uint64_t records) const;

  // Why the record does not follow from the text: "is ...". Asked only where it does not.
  std::string doubt() const;

  // For how long so many records differ in several fields, of which this is the first. Many may ask
  // for the same of a layout: it is found out once.
  Uniqueness uniqueness_with(const std::vector<const Field*>& fields, std::uint64_t records) const;

  const Source& source() const { return *source_; }
  const Way& way() const { return *way_; }

  Thing thing() const { return {this}; }

 private:
  // Records in a row, and their texts once one of them was asked for.
  struct Expected {
    std::uint64_t first = 0;
    std::size_t count = 0;
    bool is_made = false;
    std::array<std::uint64_t, TextBlock::most_texts> records;
    TextBlock texts;
  };

  void make_text(std::uint64_t record);
  void make_expected();
  bool is_left_empty(std::uint64_t record);
  TextFacts predict() const;
  TextFacts predict_on_way() const;
  TextShape find_shape() const;
  bool tells_index() const;

  std::unique_ptr<Source> source_;
  std::shared_ptr<Way> way_;
  std::vector<std::unique_ptr<Emptiness>> emptiness_;
  mutable std::optional<TextFacts> text_facts_;
  mutable std::optional<TextShape> shape_;
  mutable std::map<std::vector<const Field*>, Uniqueness> uniqueness_with_;
  std::uint64_t latest_record_ = endless;  // none yet
  std::string text_;
  std::unique_ptr<Expected> expected_;
  std::vector<std::uint64_t> indices_;  // of records that are asked for together
};

}  // namespace korvex::sources
