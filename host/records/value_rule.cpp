#include "host/records/value_rule.h"

#include <algorithm>

#include "host/layout/own_text.h"
#include "host/records/moment_form.h"
#include "host/text/code_page_text.h"
#include "lists/enumeration_value.h"
#include "platform/printable_text.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

bool is_moment(MomentForm form, std::string_view text) {
  MomentText moment;
  return moment.convert(form, text).data() != text.data();
}

}  // namespace

ValueRule::ValueRule(const LayoutItem& item, const Layout& layout)
    : item_(&item),
      layout_(&layout),
      most_(static_cast<std::size_t>(std::max(effective_digits(item.attributes), 0))),
      is_text_(is_character(item.attributes.attribute) ||
               (layout.is_utf8 && is_national(item.attributes.attribute))) {}

std::optional<std::string> ValueRule::fault(std::string_view text) const {
  const Attribute attribute = item_->attributes.attribute;
  if (text.empty() || (is_text_ && text.size() <= most_)) return std::nullopt;
  if (is_text_ && layout_->is_utf8) {
    const std::size_t count = character_count(text);
    if (count <= most_) return std::nullopt;
    return "has " + std::to_string(count) + " characters, expected at most " +
           std::to_string(most_);
  }
  if (const MomentForm form = moment_form(attribute); form != MomentForm::as_it_is) {
    if (is_moment(form, text)) return std::nullopt;
    return "is \"" + platform::printable(text) + "\", expected digits as 20240229 or 235959";
  }
  // An item that takes no list takes numbers here, as others do.
  ItemAttributes attributes = item_->attributes;
  if (traits_of(attribute).kind == DataKind::bare_number) {
    attributes.attribute = korvex::attribute::decimal;
  }
  // What the code page lacks is refused where the layout is read.
  const auto stored = exact_code_page_text(text);
  const std::string bytes = stored ? *stored : std::string(text);
  if (EnumerationRule(attributes).check(bytes) == 0) return std::nullopt;
  if (is_text_) {
    return "has " + std::to_string(bytes.size()) + " bytes in code page 932, expected at most " +
           std::to_string(most_);
  }
  return "is \"" + platform::printable(text) + "\", expected what the item's size and sign allow";
}

}  // namespace korvex::host
