#include "host/records/value_trial.h"

#include <algorithm>
#include <utility>

#include "host/process/signals.h"
#include "host/records/moment_form.h"
#include "host/sources/source.h"

namespace korvex::host {

namespace {

using sources::Extremes;
using sources::Field;

constexpr std::uint64_t tried_at_begin = 256;
constexpr std::uint64_t tried_thoroughly = 100'000;

// Of dates, times or timestamps.
class MomentExtremes {
 public:
  MomentExtremes(MomentForm form, LayoutKind kind) : scale_(moment_scale(form, kind)) {}

  void add(std::string_view text) {
    const auto moment = scale_->read(text);
    are_moments_ = are_moments_ && moment;
    if (!are_moments_) return;
    least_ = std::min(least_.value_or(*moment), *moment);
    most_ = std::max(most_.value_or(*moment), *moment);
  }

  std::optional<Extremes> result() const {
    Extremes extremes = {.scale = scale_->kind()};
    if (!are_moments_ || !least_ || !scale_->append(*least_, extremes.least) ||
        !scale_->append(*most_, extremes.most)) {
      return std::nullopt;
    }
    return extremes;
  }

 private:
  std::unique_ptr<sources::Scale> scale_;
  std::optional<std::int64_t> least_;
  std::optional<std::int64_t> most_;
  bool are_moments_ = true;
};

// What is known of all texts of an item.
struct Limits {
  sources::TextSize most;
  std::optional<Extremes> extremes;
};

// Of texts that are known one by one.
Limits limits_of_texts(Field& field, const ItemAttributes& attributes, LayoutKind kind) {
  const MomentForm form = moment_form(attributes.attribute);
  const bool is_moment = form != MomentForm::as_it_is;
  MomentExtremes moments(is_moment ? form : MomentForm::iso_date, kind);
  sources::NumberExtremes numbers;
  sources::TextSize most = {0, 0};
  const sources::Shown shown = field.show_texts([&](std::string_view text) {
    most = larger(most, sources::size_of(text));
    if (text.empty()) return true;
    if (is_moment) {
      moments.add(text);
    } else {
      numbers.add(text);
    }
    return true;
  });
  if (shown == sources::Shown::nothing) return {};
  return {most, is_moment ? moments.result() : numbers.result()};
}

// Of texts that keep to the item.
Limits limits_of_item(const ItemAttributes& attributes, bool is_utf8) {
  const auto count = [](std::int32_t number) {
    return static_cast<std::size_t>(std::max(number, 0));
  };
  if (traits_of(attributes.attribute).kind == DataKind::number_or_text && attributes.digits == 0) {
    return {{count(attributes.length), count(attributes.length)}, {}};
  }
  if (!is_numeric(attributes.attribute)) {
    const std::size_t size = count(effective_digits(attributes));
    return {{size, is_utf8 ? 2 * size : size}, {}};
  }
  const bool is_signed = is_on(attributes.signed_flag);
  const std::size_t whole =
      attributes.decimals == 0
          ? count(is_signed ? attributes.length - 1 : attributes.digits)
          : count(attributes.length - attributes.decimals - (is_signed ? 2 : 1));
  std::string most(std::max<std::size_t>(whole, 1), '9');
  if (attributes.decimals > 0) most += "." + std::string(count(attributes.decimals), '9');
  const Extremes extremes = {.least = is_signed ? "-" + most : "0", .most = most};
  return {larger(sources::size_of(extremes.least), sources::size_of(most)), extremes};
}

}  // namespace

ValueTrial::ValueTrial(const LayoutItem& item, const Layout& layout, Field& field, Trial trial)
    : item_(item), layout_(layout), field_(field), trial_(trial) {
  if (!item.is_hidden()) rule_.emplace(item, layout);
}

// What is computed from many records takes as long as there are of these.
std::uint64_t ValueTrial::records_tried() const {
  const bool is_folded = std::holds_alternative<ChildrenValues>(item_.values->own);
  if (trial_ == Trial::begin) return is_folded ? 0 : tried_at_begin;
  return is_folded ? tried_thoroughly / 100 : tried_thoroughly;
}

std::optional<std::string> ValueTrial::fault_of_reached_end() const {
  const std::optional<Extremes>& extremes = field_.shape().extremes;
  if (!rule_ || !extremes || !extremes->are_reached) return std::nullopt;
  const auto fault = rule_->fault(extremes->least);
  return fault ? fault : rule_->fault(extremes->most);
}

std::optional<std::string> ValueTrial::find_misfit() {
  const sources::TextShape& shape = field_.shape();
  all_fit_ = shape.always_made && (!rule_ || rule_->fits(shape));
  if (all_fit_) return std::nullopt;
  if (const auto fault = fault_of_reached_end()) return "in some record the value " + *fault;
  const std::uint64_t all = layout_.records.number();
  const std::uint64_t tried = std::min(all, records_tried());
  for (std::uint64_t record = 0; record < tried; ++record) {
    check_interruption();
    const auto in_record = [&](const std::string& what) {
      return "record " + std::to_string(record + 1) + ": " + what;
    };
    try {
      const std::string_view text = field_.text_or_empty(record);
      const auto fault = rule_ ? rule_->fault(text) : std::nullopt;
      if (fault) return in_record("the value " + *fault);
    } catch (const sources::BadValue& bad) {
      return in_record(bad.what());
    }
  }
  all_fit_ = tried == all;
  return std::nullopt;
}

void ValueTrial::tell_limits() {
  if (trial_ == Trial::thorough && !field_.shape().extremes) {
    const Limits limits = limits_of_texts(field_, item_.attributes, layout_.kind);
    field_.keep_within(limits.most, limits.extremes);
  }
  if (!rule_) return;
  const Limits limits = limits_of_item(item_.attributes, layout_.is_utf8);
  field_.keep_within(limits.most, limits.extremes);
}

}  // namespace korvex::host
