#include "host/records/value_rule.h"

#include <algorithm>

#include "host/layout/own_text.h"
#include "host/records/moment_form.h"
#include "host/text/code_page_text.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

// An item that takes no list takes numbers here, as others do.
ItemAttributes listed(ItemAttributes attributes) {
  if (traits_of(attributes.attribute).kind == DataKind::bare_number) {
    attributes.attribute = korvex::attribute::decimal;
  }
  return attributes;
}

std::unique_ptr<sources::Scale> moments_of(const LayoutItem& item, const Layout& layout) {
  const MomentForm form = moment_form(item.attributes.attribute);
  return form == MomentForm::as_it_is ? nullptr : moment_scale(form, layout.kind);
}

}  // namespace

bool is_checked_before(const LayoutItem& item, const ClFmtColInf* column) {
  if (column != nullptr) return true;
  const OwnValues& own = item.values->own;
  return std::holds_alternative<ListValues>(own) || std::holds_alternative<BuiltinValues>(own);
}

ValueRule::ValueRule(const LayoutItem& item, const Layout& layout)
    : layout_(&layout),
      most_(static_cast<std::size_t>(std::max(effective_digits(item.attributes), 0))),
      is_text_(is_character(item.attributes.attribute) ||
               (layout.is_utf8 && is_national(item.attributes.attribute))),
      moments_(moments_of(item, layout)),
      list_rule_(listed(item.attributes)) {}

std::optional<std::string> ValueRule::fault(std::string_view text) const {
  if (text.empty() || (is_text_ && text.size() <= most_)) return std::nullopt;
  if (is_text_ && layout_->is_utf8) {
    const std::size_t count = character_count(text);
    if (count <= most_) return std::nullopt;
    return "has " + std::to_string(count) + " characters, expected at most " +
           std::to_string(most_);
  }
  if (moments_ != nullptr) {
    if (moments_->read(text)) return std::nullopt;
    return "is \"" + platform::printable(text) +
           "\", expected a date or time that exists, with digits as 20240229 or 235959";
  }
  // ASCII is stored as it is; what the code page lacks is refused where the layout is read.
  if (platform::is_ascii(text) && list_rule_.check(text) == error::none) return std::nullopt;
  const std::string bytes = exact_code_page_text(text).value_or(std::string(text));
  if (list_rule_.check(bytes) == error::none) return std::nullopt;
  if (is_text_) {
    return "has " + std::to_string(bytes.size()) + " bytes in code page 932, expected at most " +
           std::to_string(most_);
  }
  return "is \"" + platform::printable(text) + "\", expected what the item's size and sign allow";
}

// A text with fewer digits, or a moment between two others, fits where these do.
bool ValueRule::fits(const sources::TextShape& shape) const {
  if (is_text_) {
    return (layout_->is_utf8 ? shape.most.characters : shape.most.bytes) <= most_;
  }
  const auto scale = moments_ != nullptr ? moments_->kind() : sources::ScaleKind::number;
  return shape.extremes && shape.extremes->scale == scale && !fault(shape.extremes->least) &&
         !fault(shape.extremes->most);
}

}  // namespace korvex::host
