#include "host/sources/key_source.h"

#include <algorithm>

#include "host/sources/uniqueness.h"

namespace korvex::sources {
namespace {

class KeySource : public Source {
 public:
  KeySource(Field& field, std::uint64_t records) : field_(field), records_(records) {}

  void append(std::uint64_t index, std::string& out) override {
    out += field_.text(index).value_or("");
  }

  std::optional<std::uint64_t> period() const override { return records_; }

  std::uint64_t most_texts() const override { return std::min(records_, field_.most_values()); }

  void tell(Knowledge& knowledge, Thing text, Thing index, std::uint64_t records) const override {
    const Field* const field = &field_;
    if (uniqueness_of({&field, 1}).different >= records_) knowledge.add({text}, index, records);
  }

  TextShape shape() const override { return field_.shape(); }

 private:
  Field& field_;
  std::uint64_t records_;
};

}  // namespace

std::unique_ptr<Source> make_key_source(Field& field, std::uint64_t records) {
  return std::make_unique<KeySource>(field, records);
}

}  // namespace korvex::sources
