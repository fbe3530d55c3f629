#include <array>
#include <charconv>
#include <utility>

#include "host/sources/record_sources.h"

namespace korvex::sources {
namespace {

class LineSource : public Source {
 public:
  explicit LineSource(std::shared_ptr<Groups> groups) : groups_(std::move(groups)) {}

  void append(std::uint64_t record, std::string& out) override {
    const std::optional<ways::Member> member = groups_->member(record);
    if (!member) return;
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), member->place + 1);
    out.append(digits.data(), end.ptr);
  }

  std::optional<std::uint64_t> period() const override { return std::nullopt; }

  TextShape shape() const override {
    TextShape shape = shape_of_counts(1, groups_->largest());
    shape.never_empty = groups_->have_all();
    return shape;
  }

  TextFacts text_facts() const override {
    TextFacts text_facts;
    text_facts.values = groups_->largest();
    text_facts.all_after = groups_->records();
    if (!groups_->have_all()) text_facts.gaps = text_facts.least_empty = 1;
    return text_facts;
  }

  void tell(Dependencies& dependencies, Thing text) const override {
    groups_->tell(dependencies);
    dependencies.add({text}, groups_->line_thing());
  }

  std::string course(std::uint64_t) const override { return "counts from 1 in each group"; }
  std::string_view doubt() const override { return "starts again in each group"; }

 private:
  std::shared_ptr<Groups> groups_;
};

}  // namespace

std::unique_ptr<Source> make_line_source(std::shared_ptr<Groups> groups) {
  return std::make_unique<LineSource>(std::move(groups));
}

}  // namespace korvex::sources
