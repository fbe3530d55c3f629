#include "courses/literal_element.h"

#include <algorithm>

#include "values/ordinals.h"
#include "values/record_text.h"

namespace korvex {

namespace {

// Fixed text of a format.
class LiteralText : public CopiedElement<LiteralText> {
 public:
  using CopiedElement::CopiedElement;

  void restart() override { set_text(field_text(settings_.text)); }
  StepOutcome advance(ItemPass&) override { return StepOutcome::going; }
};

// A kind, or a way of counting, that nobody knows: it fails the run when it is reached.
class UnknownElement : public CopiedElement<UnknownElement> {
 public:
  UnknownElement(const ElementContext& context, const ClFmtItemInf& element, StepOutcome failure)
      : CopiedElement(context, element), failure_(failure) {}

  void restart() override { set_text(field_text(settings_.start_text)); }
  StepOutcome advance(ItemPass&) override { return failure_; }

 private:
  const StepOutcome failure_;
};

// Letters and full-width characters: part of the text is a number whose digits are characters, to
// which the increment is added. An element that does not lead starts again by itself when it
// passes its own end.
class LiteralCharacters : public CopiedElement<LiteralCharacters> {
 public:
  LiteralCharacters(const ElementContext& context, const ClFmtItemInf& element)
      : CopiedElement(context, element),
        change_(counts_up() ? std::int64_t{context.increment.low}
                            : -std::int64_t{context.increment.low}) {
    if (settings_.kind == format_kind::upper_letters) base_letter_ = 'A';
    if (settings_.kind == format_kind::lower_letters) base_letter_ = 'a';
    load(settings_.current);
  }

  void restart() override {
    set_text(field_text(settings_.start_text));
    load(settings_.start);
  }

  StepOutcome advance(ItemPass&) override {
    ordinal_ = static_cast<std::int32_t>(ordinal_ + change_);
    write_ordinal();
    if (!passed_end()) return StepOutcome::going;
    if (is_lead_) return StepOutcome::ended;
    restart();
    return StepOutcome::going;
  }

 private:
  void load(const FmtValRec& value) {
    ordinal_ = value.low;
    const std::string_view low_text = field_text(value.low_text);
    low_size_ = low_text.size();
    std::memcpy(low_text_, low_text.data(), low_size_);
    constexpr auto last_place = static_cast<std::int32_t>(element_text_size - value_text_size);
    position_ = static_cast<std::size_t>(std::clamp(value.position, 0, last_place));
  }

  // The counting part takes the place of the rest of the text; a place beyond its end changes
  // nothing.
  void write_ordinal() {
    if (base_letter_ != 0) {
      ordinal_to_letters(base_letter_, ordinal_, low_text_, low_size_);
    } else {
      ordinal_to_full_width(ordinal_, low_text_, low_size_);
    }
    if (position_ > length_) return;
    std::memcpy(text_ + position_, low_text_, low_size_);
    length_ = position_ + low_size_;
  }

  bool passed_end() const {
    return counts_up() ? ordinal_ > settings_.end.low
                       : counts_down() && ordinal_ < settings_.end.low;
  }

  char base_letter_ = 0;  // 0 for full-width characters
  const std::int64_t change_;
  std::int32_t ordinal_ = 0;
  std::size_t position_ = 0;
  char low_text_[value_text_size] = {};
  std::size_t low_size_ = 0;
};

bool is_known_sub_kind(const FmtItemRec& settings) {
  switch (settings.sign) {
    case number_sub_kind::plus_plus_up:
    case number_sub_kind::plus_plus_down:
      return true;
    case number_sub_kind::plus_minus_down:
    case number_sub_kind::minus_minus_down:
    case number_sub_kind::minus_minus_up:
    case number_sub_kind::minus_plus_up:
      return settings.kind == format_kind::signed_number;
    default:
      return false;
  }
}

}  // namespace

LiteralElement::LiteralElement(const ElementContext& context, const ClFmtItemInf& element)
    : settings_(element.record),
      increment_sign_(context.increment.sign),
      is_lead_(context.leads(element.record)) {
  set_text(element.first_text());
}

void LiteralElement::set_text(std::string_view text) {
  length_ = std::min(text.size(), sizeof text_);
  std::memcpy(text_, text.data(), length_);
}

std::unique_ptr<LiteralElement> make_literal_element(const ElementContext& context,
                                                     const ClFmtItemInf& element) {
  switch (element.record.kind) {
    case format_kind::signed_number:
    case format_kind::signed_number_simple:
      if (is_known_sub_kind(element.record)) return make_literal_number(context, element);
      return std::make_unique<UnknownElement>(context, element, StepOutcome::bad_sub_kind);
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return make_literal_number(context, element);
    case format_kind::upper_letters:
    case format_kind::lower_letters:
    case format_kind::national_character:
      return std::make_unique<LiteralCharacters>(context, element);
    case format_kind::date:
    case format_kind::date_unchecked:
    case format_kind::time:
    case format_kind::timestamp:
      return make_literal_moment(context, element);
    case format_kind::fixed:
      return std::make_unique<LiteralText>(context, element);
    default:
      return std::make_unique<UnknownElement>(context, element, StepOutcome::bad_kind);
  }
}

}  // namespace korvex
