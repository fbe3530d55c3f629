#include "host/sources/text_list.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <unordered_set>
#include <utility>

#include "platform/text_lines.h"
#include "platform/utf8.h"

namespace korvex::sources {
namespace {

class ListSource : public Source {
 public:
  ListSource(TextList list, Comparison comparison)
      : list_(std::move(list)), comparison_(comparison) {
    assert(list_.size() > 0);
  }

  void append(std::uint64_t index, std::string& out) override {
    out += list_[static_cast<std::size_t>(index)];
  }

  void append_all(std::span<const std::uint64_t> indices, TextBlock& out) override {
    const std::span<const std::string_view> texts = list_.texts();
    for (const std::uint64_t index : indices) {
      if (out.is_full()) return;
      out.add(texts[static_cast<std::size_t>(index)]);
    }
  }

  std::optional<std::uint64_t> period() const override { return list_.size(); }

  TextShape shape() const override {
    if (!shape_) shape_ = list_.shape();
    return *shape_;
  }

  TextFacts text_facts() const override {
    if (!text_facts_) text_facts_ = list_.text_facts(comparison_);
    return *text_facts_;
  }

  Uniqueness uniqueness() const override {
    if (!uniqueness_) uniqueness_ = list_.uniqueness(comparison_);
    return *uniqueness_;
  }

  Shown show_texts(const TakeText& take) override {
    for (std::size_t i = 0; i < list_.size(); ++i) {
      if (!take(list_[i])) break;
    }
    return Shown::all;
  }

  // Columns of one table may tell its rows together.
  void tell_of_row(Dependencies& dependencies, const TextOfRow& text) const override {
    if (comparison_ == Comparison::as_texts) dependencies.add_text_of_row(text, list_.texts());
  }

  std::string_view doubt() const override { return "has equal values"; }
  std::string_view content() const override { return list_.content(); }

 private:
  TextList list_;
  Comparison comparison_;
  mutable std::optional<TextShape> shape_;
  mutable std::optional<TextFacts> text_facts_;
  mutable std::optional<Uniqueness> uniqueness_;
};

TextShape shape_of(std::span<const std::string_view> texts) {
  TextShape shape = {.never_empty = true,
                     .size = texts.front().size(),
                     .only_digits = true,
                     .no_digits = true,
                     .always_made = true};
  shape.only_plain = std::all_of(texts.begin(), texts.end(), [](std::string_view text) {
    return std::all_of(text.begin(), text.end(), is_plain);
  });
  for (const std::string_view text : texts) {
    if (text.empty()) return {.size = {}, .only_plain = shape.only_plain, .always_made = true};
    if (text.size() != shape.size) shape.size.reset();
    shape.only_digits =
        shape.only_digits && std::all_of(text.begin(), text.end(), platform::is_digit);
    shape.no_digits = shape.no_digits && std::none_of(text.begin(), text.end(), platform::is_digit);
  }
  return shape;
}

}  // namespace

TextList::TextList(std::shared_ptr<const std::string> bytes, std::vector<std::string_view> texts,
                   ReadText content)
    : bytes_(std::move(bytes)),
      texts_(std::make_shared<const std::vector<std::string_view>>(std::move(texts))),
      content_(std::move(content)) {}

TextList TextList::of_texts(std::span<const std::string_view> texts, ReadText content) {
  std::size_t size = TextBlock::overhang;
  for (const std::string_view text : texts) size += text.size();
  const auto bytes = std::make_shared<std::string>();
  bytes->reserve(size);
  std::vector<std::string_view> copies;
  copies.reserve(texts.size());
  for (const std::string_view text : texts) {
    copies.emplace_back(bytes->data() + bytes->size(), text.size());
    *bytes += text;
  }
  bytes->resize(size);
  return TextList(bytes, std::move(copies), std::move(content));
}

TextList TextList::of_values(const std::vector<std::string>& values) {
  const std::vector<std::string_view> texts(values.begin(), values.end());
  return of_texts(texts);
}

ways::Result<TextList> TextList::of_lines(std::string content) {
  const std::size_t size = content.size();
  content.resize(size + TextBlock::overhang);
  const auto bytes = std::make_shared<const std::string>(std::move(content));
  const std::string_view whole = std::string_view(*bytes).substr(0, size);
  std::string_view rest = whole;
  platform::skip_byte_order_mark(rest);
  std::vector<std::string_view> lines;
  while (!rest.empty()) {
    const std::string_view line = platform::take_line(rest);
    lines.push_back(line);
    if (!platform::is_utf8(line)) {
      return ways::Refusal{"line " + std::to_string(lines.size()) + " is not UTF-8"};
    }
  }
  return TextList(bytes, std::move(lines), {whole, bytes});
}

// Numbers without signs and zeros that say nothing.
TextList TextList::compared(Comparison comparison) const {
  if (comparison == Comparison::as_texts) return *this;
  std::vector<std::string> texts;
  for (const std::string_view text : *texts_) {
    const std::optional<Decimal> number = Decimal::parse(text);
    Decimal with_all_decimals = Decimal::of_units(0, most_decimals);
    texts.emplace_back();
    if (number && with_all_decimals.add(*number)) {
      with_all_decimals.append(texts.back());
    } else {
      texts.back() = text;
    }
  }
  return of_values(texts);
}

TextShape TextList::shape() const { return shape_of(*texts_); }

TextFacts TextList::text_facts(Comparison comparison) const {
  const TextList same = compared(comparison);
  std::vector<std::string_view> sorted = *same.texts_;
  std::sort(sorted.begin(), sorted.end());
  const auto end = std::unique(sorted.begin(), sorted.end());
  const bool has_empty = !sorted.empty() && sorted.front().empty();
  TextFacts text_facts;
  text_facts.values = Count::of(static_cast<std::size_t>(end - sorted.begin()) - has_empty);
  return text_facts;
}

Uniqueness TextList::uniqueness(Comparison comparison) const {
  const TextList same = compared(comparison);
  std::unordered_set<std::string_view> met;
  for (const std::string_view text : *same.texts_) {
    if (!met.insert(text).second) return {met.size(), met.size()};
  }
  return {met.size(), endless};
}

std::unique_ptr<Source> make_list_source(TextList list, Comparison comparison) {
  return std::make_unique<ListSource>(std::move(list), comparison);
}

}  // namespace korvex::sources
