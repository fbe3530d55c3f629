#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "host/sources/decimal.h"
#include "host/sources/lookups.h"
#include "host/sources/record_sources.h"
#include "host/sources/saturating.h"
#include "platform/printable_text.h"

namespace korvex::sources {
namespace {

constexpr std::uint64_t children_between_pauses = 4096;

class ChildrenSource : public Source {
 public:
  ChildrenSource(const Children& children, const FoldRules& rules)
      : children_(children), pause_(rules.pause) {}

  std::optional<std::uint64_t> period() const final { return std::nullopt; }
  TextFacts text_facts() const override { return {}; }
  std::string course(std::uint64_t) const final { return "computed from other records"; }
  std::string_view doubt() const final { return "is computed from other records"; }

 protected:
  // Hands over the value of each child that has one; an empty one where the children are counted.
  template <class Take>
  void for_each_value(std::uint64_t record, Take take) {
    const Lookup::Apart apart;
    const ways::Members members = children_.groups->members(record);
    for (std::uint64_t i = 0; i < members.count; ++i) {
      // Whatever the number of children of one record: folds may be nested.
      if (++seen_ % children_between_pauses == 0) pause_();
      const std::uint64_t child = members.first + i;
      if (children_.key != nullptr && !children_.key->text(child)) continue;
      const auto text = children_.field == nullptr ? std::optional(std::string_view())
                                                   : children_.field->text(child);
      if (text) take(*text);
    }
  }

  // Of a child: none of them is the one that has its ends for certain.
  TextShape child_shape() const {
    TextShape shape = children_.field->shape();
    if (shape.extremes) shape.extremes->are_reached = false;
    return shape;
  }
  bool children_are_made() const {
    const auto is_made = [](const Field* field) {
      return field == nullptr || field->shape().always_made;
    };
    return is_made(children_.key) && is_made(children_.field);
  }
  std::uint64_t most_children() const { return children_.groups->largest().most; }
  Count values() const { return children_.field->text_facts().values; }

  // Whether each record has children, and all of these have values. Of a tree some have none.
  bool all_have_values() const {
    const Groups& groups = *children_.groups;
    return groups.have_all() && groups.parents_with_records().least >= groups.parents() &&
           children_.key == nullptr && children_.field->shape().never_empty;
  }

 private:
  Children children_;
  void (*pause_)();
  std::uint64_t seen_ = 0;
};

class SumOfChildren : public ChildrenSource {
 public:
  SumOfChildren(const Children& children, const FoldRules& rules)
      : ChildrenSource(children, rules), zero_(Decimal::of_units(0, rules.decimals)) {}

  void append(std::uint64_t record, std::string& out) override {
    Decimal sum = zero_;
    for_each_value(record, [&](std::string_view text) {
      const std::optional<Decimal> value = Decimal::parse(text);
      if (value && sum.add(*value)) return;
      throw BadValue("nothing can be added to a sum from the value \"" + platform::printable(text) +
                     "\" of another record, or the sum is too large");
    });
    sum.append(out);
  }

  // Where no child is below zero, the least sum is that of none.
  TextShape shape() const override {
    constexpr TextShape unknown = {.never_empty = true, .size = {}};
    const std::optional<Extremes> child = child_shape().extremes;
    if (!child || child->scale != ScaleKind::number || !children_are_made()) return unknown;
    NumberExtremes extremes;
    for (const std::string& end : {child->least, child->most}) {
      std::optional<Decimal> sum = Decimal::parse(end);
      if (!sum || !sum->multiply(most_children()) || !sum->add(zero_)) return unknown;
      std::string text;
      sum->append(text);
      extremes.add(text);
    }
    std::string none;
    zero_.append(none);
    extremes.add(none);
    TextShape shape = shape_within(*extremes.result());
    shape.never_empty = true;
    return shape;
  }

 private:
  Decimal zero_;
};

class CountSource : public ChildrenSource {
 public:
  using ChildrenSource::ChildrenSource;

  void append(std::uint64_t record, std::string& out) override {
    std::uint64_t count = 0;
    for_each_value(record, [&](std::string_view) { ++count; });
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), count);
    out.append(digits.data(), end.ptr);
  }

  TextShape shape() const override {
    TextShape shape = shape_of_counts(0, {0, most_children()});
    shape.never_empty = true;
    shape.always_made = children_are_made();
    return shape;
  }

  TextFacts text_facts() const override {
    TextFacts text_facts;
    text_facts.values.most = sum(most_children(), 1);
    return text_facts;
  }
};

// Numbers by their size, and after all of them texts that are none.
class ByNumber {
 public:
  explicit ByNumber(std::string_view text) : number_(Decimal::parse(text)) {}

  bool operator<(const ByNumber& other) const {
    return number_ && (!other.number_ || *number_ < *other.number_);
  }

 private:
  std::optional<Decimal> number_;
};

// By their bytes.
using ByText = std::string_view;

// `Order` is made of a text and compares it with others. It may refer to the text.
template <class Order>
class ExtremeSource : public ChildrenSource {
 public:
  ExtremeSource(const Children& children, const FoldRules& rules)
      : ChildrenSource(children, rules), is_most_(rules.fold == Fold::most) {}

  void append(std::uint64_t record, std::string& out) override {
    std::optional<Order> extreme;
    for_each_value(record, [&](std::string_view text) {
      const Order value(text);
      if (extreme && !(is_most_ ? *extreme < value : value < *extreme)) return;
      text_ = text;
      extreme.emplace(text_);
    });
    if (extreme) out += text_;
  }

  TextShape shape() const override {
    const TextShape child = child_shape();
    return {.never_empty = all_have_values(),
            .size = {},
            .always_made = children_are_made(),
            .most = child.most,
            .extremes = child.extremes};
  }

  TextFacts text_facts() const override {
    TextFacts text_facts;
    text_facts.values.most = values().most;
    return text_facts;
  }

 private:
  bool is_most_;
  std::string text_;
};

}  // namespace

std::unique_ptr<Source> make_children_source(const Children& children, const FoldRules& rules) {
  if (rules.fold == Fold::sum) return std::make_unique<SumOfChildren>(children, rules);
  if (rules.fold == Fold::count) return std::make_unique<CountSource>(children, rules);
  if (rules.comparison == Comparison::as_numbers) {
    return std::make_unique<ExtremeSource<ByNumber>>(children, rules);
  }
  return std::make_unique<ExtremeSource<ByText>>(children, rules);
}

}  // namespace korvex::sources
