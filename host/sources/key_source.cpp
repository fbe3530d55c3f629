#include <algorithm>

#include "host/sources/lookups.h"
#include "host/sources/record_sources.h"
#include "host/sources/uniqueness.h"

namespace korvex::sources {
namespace {

class KeySource : public Source {
 public:
  KeySource(Field& field, std::uint64_t records) : field_(field), records_(records) {}

  void append(std::uint64_t index, std::string& out) override {
    const Lookup lookup;
    out += field_.text_or_empty(index);
  }

  void append_all(std::span<const std::uint64_t> indices, TextBlock& out) override {
    const Lookup lookup(indices.size());
    field_.append_all(indices, out);
  }

  std::optional<std::uint64_t> period() const override { return records_; }
  Shown show_texts(const TakeText& take) override { return field_.show_texts(take); }

  TextShape shape() const override {
    TextShape shape = field_.shape();
    shape.lookups = sum(shape.lookups, 1);
    // Not every record need be led to.
    if (shape.extremes) shape.extremes->are_reached = false;
    return shape;
  }

  TextFacts text_facts() const override {
    TextFacts text_facts = field_.text_facts();
    const std::uint64_t different = uniqueness().different;
    if (different >= records_ && shape().never_empty) {
      text_facts.values = Count::of(records_);
    } else if (records_ < text_facts.all_after) {
      text_facts.values = {0, std::min(records_, text_facts.values.most)};
    }
    return text_facts;
  }

  Uniqueness uniqueness() const override {
    if (!uniqueness_) {
      const Field* const field = &field_;
      uniqueness_ = uniqueness_of({&field, 1}, records_);
    }
    return *uniqueness_;
  }

  void tell_of_row(Dependencies& dependencies, const TextOfRow& text) const override {
    dependencies.add_text_of_row(text, field_, records_);
  }

  std::string_view doubt() const override { return "points to values that may be equal"; }

 private:
  Field& field_;
  std::uint64_t records_;
  mutable std::optional<Uniqueness> uniqueness_;
};

}  // namespace

std::unique_ptr<Source> make_key_source(Field& field, std::uint64_t records) {
  return std::make_unique<KeySource>(field, records);
}

}  // namespace korvex::sources
