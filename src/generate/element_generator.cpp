#include "generate/element_generator.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "format/record_text.h"
#include "generate/character_generator.h"
#include "generate/date_generator.h"
#include "generate/number_generator.h"
#include "generate/time_generator.h"

namespace korvex {

namespace {

// Fixed text of a format.
class FixedGenerator : public ElementGenerator {
 public:
  FixedGenerator(const ItemContext& context, const ClFmtItemInf& element)
      : ElementGenerator(context, element) {
    begin_idle_run();
  }

  void restart() override { set_text(field_text(settings_.text)); }
  bool keeps_size() const override { return length_ == field_text(settings_.text).size(); }
  bool never_cuts() const override { return true; }

 private:
  StepOutcome step(ItemPass&) override { return StepOutcome::going; }
};

// A kind, or a way of counting, that no generator knows: it fails the run when its turn comes.
class UnknownGenerator : public ElementGenerator {
 public:
  UnknownGenerator(const ItemContext& context, const ClFmtItemInf& element, StepOutcome failure)
      : ElementGenerator(context, element), failure_(failure) {}

  void restart() override { set_text(field_text(settings_.start_text)); }

 private:
  StepOutcome step(ItemPass&) override { return failure_; }

  StepOutcome failure_;
};

template <typename Generator, typename... Arguments>
std::unique_ptr<ElementGenerator> make(const ItemContext& context, const ClFmtItemInf& element,
                                       Arguments... arguments) {
  return std::make_unique<Generator>(context, element, arguments...);
}

std::unique_ptr<ElementGenerator> make_signed_number(const ItemContext& context,
                                                     const ClFmtItemInf& element) {
  const std::int32_t sub_kind = element.record.sign;
  const bool is_simple = element.record.kind == format_kind::signed_number_simple;
  switch (sub_kind) {
    case number_sub_kind::plus_plus_up:
    case number_sub_kind::plus_plus_down:
      return make<NumberGenerator>(context, element);
    case number_sub_kind::plus_minus_down:
    case number_sub_kind::minus_minus_down:
    case number_sub_kind::minus_minus_up:
    case number_sub_kind::minus_plus_up:
      if (!is_simple) return make<NumberGenerator>(context, element);
      break;
    default:
      break;
  }
  return make<UnknownGenerator>(context, element, StepOutcome::bad_sub_kind);
}

}  // namespace

ElementGenerator::ElementGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : settings_(element.record),
      increment_sign_(context.increment.sign),
      is_lead_(element.record.kind != format_kind::fixed &&
               element.record.sequence == context.lead_element) {
  set_text(element.first_text());
}

void ElementGenerator::set_text(std::string_view text) {
  length_ = std::min(text.size(), sizeof text_);
  std::memcpy(text_, text.data(), length_);
}

void ElementGenerator::begin_run(const Wheel& wheel, std::int64_t index, std::int64_t change,
                                 std::int64_t steps) {
  const auto entry_size = static_cast<std::ptrdiff_t>(wheel.entry_size);
  run_left_ = run_size_ = std::max<std::int64_t>(steps, 0);
  wheel_place_ = wheel.entries + entry_size * index;
  wheel_step_ = entry_size * change;
  tail_size_ = wheel.entry_size;
}

void ElementGenerator::begin_idle_run() {
  run_left_ = run_size_ = std::numeric_limits<std::int64_t>::max();
}

std::int64_t ElementGenerator::end_run() {
  const std::int64_t taken = run_size_ - run_left_;
  run_size_ = run_left_ = 0;
  return taken;
}

std::unique_ptr<ElementGenerator> make_element_generator(const ItemContext& context,
                                                         const ClFmtItemInf& element) {
  switch (element.record.kind) {
    case format_kind::signed_number:
    case format_kind::signed_number_simple:
      return make_signed_number(context, element);
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return make<NumberGenerator>(context, element);
    case format_kind::upper_letters:
    case format_kind::lower_letters:
    case format_kind::national_character:
      return make<CharacterGenerator>(context, element);
    case format_kind::date:
      return make<DateGenerator>(context, element);
    case format_kind::date_unchecked:
      return make<UncheckedDateGenerator>(context, element);
    case format_kind::time:
      return make<TimeGenerator>(context, element);
    case format_kind::timestamp:
      return make<TimestampGenerator>(context, element);
    case format_kind::fixed:
      return make<FixedGenerator>(context, element);
    default:
      return make<UnknownGenerator>(context, element, StepOutcome::bad_kind);
  }
}

}  // namespace korvex
