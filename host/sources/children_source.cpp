#include "host/sources/children_source.h"

#include <optional>
#include <utility>

#include "host/sources/decimal.h"

namespace korvex::sources {
namespace {

class ChildrenSource : public Source {
 public:
  ChildrenSource(std::shared_ptr<Field> field, const ways::GroupSizes& children)
      : field_(std::move(field)), children_(children) {}

  std::optional<std::uint64_t> period() const final { return std::nullopt; }
  std::uint64_t most_texts() const final { return endless; }
  void tell(Knowledge&, Thing, Thing, std::uint64_t) const final {}

 protected:
  template <class Take>
  void for_each_value(std::uint64_t record, Take take) {
    const ways::Members members = children_.members(record);
    for (std::uint64_t i = 0; i < members.count; ++i) {
      if (const auto text = field_->text(members.first + i)) take(*text);
    }
  }

 private:
  std::shared_ptr<Field> field_;
  ways::GroupSizes children_;
};

class SumSource : public ChildrenSource {
 public:
  using ChildrenSource::ChildrenSource;

  void append(std::uint64_t record, std::string& out) override {
    std::optional<Decimal> sum = Decimal();
    for_each_value(record, [&](std::string_view text) {
      const std::optional<Decimal> value = Decimal::parse(text);
      if (!value || !sum || !sum->add(*value)) sum.reset();
    });
    if (sum) out += sum->text();
  }
};

class CountSource : public ChildrenSource {
 public:
  using ChildrenSource::ChildrenSource;

  void append(std::uint64_t record, std::string& out) override {
    std::uint64_t count = 0;
    for_each_value(record, [&](std::string_view) { ++count; });
    out += std::to_string(count);
  }

  TextShape shape() const override {
    return {.never_empty = true, .size = {}, .only_digits = true};
  }
};

bool is_less(std::string_view left, std::string_view right) {
  const std::optional<Decimal> a = Decimal::parse(left);
  const std::optional<Decimal> b = Decimal::parse(right);
  return a && b ? *a < *b : left < right;
}

class ExtremeSource : public ChildrenSource {
 public:
  ExtremeSource(std::shared_ptr<Field> field, const ways::GroupSizes& children, bool is_most)
      : ChildrenSource(std::move(field), children), is_most_(is_most) {}

  void append(std::uint64_t record, std::string& out) override {
    std::optional<std::string> extreme;
    for_each_value(record, [&](std::string_view text) {
      if (!extreme || (is_most_ ? is_less(*extreme, text) : is_less(text, *extreme))) {
        extreme = text;
      }
    });
    if (extreme) out += *extreme;
  }

 private:
  bool is_most_;
};

}  // namespace

std::unique_ptr<Source> make_children_source(Fold fold, std::shared_ptr<Field> field,
                                             const ways::GroupSizes& children) {
  switch (fold) {
    case Fold::sum:
      return std::make_unique<SumSource>(std::move(field), children);
    case Fold::count:
      return std::make_unique<CountSource>(std::move(field), children);
    case Fold::least:
      return std::make_unique<ExtremeSource>(std::move(field), children, false);
    case Fold::most:
      break;
  }
  return std::make_unique<ExtremeSource>(std::move(field), children, true);
}

}  // namespace korvex::sources
