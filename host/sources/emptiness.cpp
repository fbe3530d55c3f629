#include "host/sources/emptiness.h"

#include <algorithm>
#include <utility>

#include "host/sources/field.h"
#include "host/ways/shares.h"

namespace korvex::sources {
namespace {

class EmptyShare : public Emptiness {
 public:
  EmptyShare(ways::Key key, ways::Fraction share, std::uint64_t records)
      : shares_(key, ways::Proportions::of_share(share), records) {}

  bool is_empty(std::uint64_t record) override { return shares_.category_of(record) == 0; }
  std::uint64_t end() const override { return shares_.count(1) == 0 ? 0 : endless; }
  std::uint64_t gaps() const override { return shares_.count(1) == 0 ? 0 : shares_.count(0); }
  std::uint64_t least_empty() const override { return shares_.count(0); }
  std::optional<Cycle> cycle() const override {
    if (shares_.count(0) == 0 || shares_.count(1) == 0) return Cycle();
    return std::nullopt;
  }

 private:
  ways::ExactShares shares_;
};

class EmptyWith : public Emptiness {
 public:
  explicit EmptyWith(Field& other) : other_(other) {}

  bool is_empty(std::uint64_t record) override { return !other_.text(record); }
  std::uint64_t end() const override { return other_.text_facts().end; }
  std::uint64_t gaps() const override { return other_.text_facts().gaps; }
  std::uint64_t least_empty() const override { return other_.text_facts().least_empty; }
  std::uint64_t lookups() const override { return other_.shape().lookups; }
  std::optional<Cycle> cycle() const override { return other_.text_facts().cycle; }

 private:
  Field& other_;
};

class EmptyUnless : public Emptiness {
 public:
  EmptyUnless(Field& other, std::vector<std::string> texts)
      : other_(other), texts_(std::move(texts)) {
    std::sort(texts_.begin(), texts_.end());
  }

  bool is_empty(std::uint64_t record) override {
    const std::optional<std::string_view> text = other_.text(record);
    return !text || !std::binary_search(texts_.begin(), texts_.end(), *text);
  }
  std::uint64_t end() const override { return other_.text_facts().end; }
  std::uint64_t gaps() const override { return endless; }
  std::uint64_t least_empty() const override { return other_.text_facts().least_empty; }
  std::uint64_t lookups() const override { return other_.shape().lookups; }
  std::optional<Cycle> cycle() const override { return other_.text_facts().cycle; }

 private:
  Field& other_;
  std::vector<std::string> texts_;
};

}  // namespace

std::unique_ptr<Emptiness> empty_share(ways::KeyFor<ways::Use::empty> key, ways::Fraction share,
                                       std::uint64_t records) {
  return std::make_unique<EmptyShare>(key, share, records);
}

std::unique_ptr<Emptiness> empty_with(Field& other) { return std::make_unique<EmptyWith>(other); }

std::unique_ptr<Emptiness> empty_unless(Field& other, std::vector<std::string> texts) {
  return std::make_unique<EmptyUnless>(other, std::move(texts));
}

}  // namespace korvex::sources
