#include "host/records/engine_source.h"

#include <algorithm>
#include <utility>

#include "courses/item_course.h"
#include "host/process/signals.h"
#include "host/records/engine_texts.h"
#include "host/ways/shuffle.h"
#include "platform/printable_text.h"
#include "platform/text_lines.h"
#include "platform/utf8.h"
#include "values/error_codes.h"
#include "values/error_texts.h"

namespace korvex::host {

namespace {

using sources::counted_records;

std::string plain_course(const ItemFacts& item) {
  if (!item.has_end() && item.distinct == 1) return "the same in every record";
  if (!item.period) return untold;
  if (item.has_end() && item.runs_empty) return "is empty after " + counted_records(item.end);
  return "starts again after " + counted_records(*item.period);
}

std::string repeated_course(const FieldFacts& field) {
  const ItemFacts& item = *field.values;
  std::string text = "repeat level " + std::to_string(number_of(field.level)) + ": ";
  const std::uint64_t cycle = product(field.hold, item.end);
  if (field.hold == endless) {
    text += "keeps its first value";
  } else {
    text += "a new value " +
            (field.hold == 1 ? "every record" : "every " + counted_records(field.hold));
    if (cycle != endless) text += ", starts again after " + counted_records(cycle);
  }
  return text + (item.runs_empty ? "; empty after the repeats" : "");
}

bool counts_in_digits(FormatKind kind) {
  return kind == format_kind::unsigned_number || kind == format_kind::unsigned_number_in_text ||
         kind == format_kind::date || kind == format_kind::date_unchecked ||
         kind == format_kind::time || kind == format_kind::timestamp;
}

bool counts_in_letters(FormatKind kind) {
  return kind == format_kind::upper_letters || kind == format_kind::lower_letters;
}

// What a step changes in a text are digits in the place of digits, and letters in that of letters.
sources::TextShape shape_of(const ClFmtColInf& column, const ItemCourse& course) {
  std::string first;
  bool only_digits = true;
  bool no_digits = true;
  bool is_ascii = true;
  for (std::size_t i = 0; i < course.elements().size(); ++i) {
    const FormatKind kind = column.elements[i]->record.kind;
    const bool is_fixed = kind == format_kind::fixed;
    only_digits = only_digits && (is_fixed || counts_in_digits(kind));
    no_digits = no_digits && (is_fixed || counts_in_letters(kind));
    is_ascii = is_ascii && kind != format_kind::national_character;
    CourseCursor cursor(*course.elements()[i]);
    cursor.seek(0);
    first += cursor.text();
  }
  is_ascii = is_ascii && platform::is_ascii(first);
  const bool is_cut = course.is_cut_at_end();
  sources::TextShape shape;
  shape.always_made = true;
  shape.never_empty = !first.empty() && (!is_cut || course.size_at(course.end() - 1) > 0);
  if (is_ascii && !is_cut) shape.size = first.size();
  shape.only_digits = only_digits && std::all_of(first.begin(), first.end(), platform::is_digit);
  shape.no_digits = no_digits && std::none_of(first.begin(), first.end(), platform::is_digit);
  // What counts are digits, letters, signs and full-width characters; the rest stays.
  shape.only_plain = is_ascii && std::all_of(first.begin(), first.end(), sources::is_plain);
  return shape;
}

sources::TextShape shape_of(const ItemGenerator& item, LayoutKind layout_kind) {
  if (const ClEnumDataList* values = item.enumeration().get()) {
    return {.never_empty = values->count() > 0, .size = {}, .always_made = true};
  }
  const auto course = ItemCourse::of(item.column(), layout_kind);
  return course ? shape_of(item.column(), *course) : sources::TextShape();
}

// What is known of an item's values, one after the other.
sources::TextFacts text_facts_of(const ItemFacts& facts) {
  sources::TextFacts text_facts;
  const bool has_texts = std::any_of(facts.texts.begin(), facts.texts.end(),
                                     [](const TextRun& run) { return run.bytes > 0; });
  text_facts.values = {has_texts ? facts.different : 0,
                       has_texts ? facts.distinct.value_or(sources::endless) : 0};
  if (has_texts && facts.distinct) text_facts.values.least = *facts.distinct;
  text_facts.all_after = facts.has_end() ? facts.end : facts.period.value_or(sources::endless);
  return text_facts;
}

sources::Uniqueness uniqueness_of(const ItemFacts& facts) {
  const bool is_exact = facts.distinct && facts.period && facts.different < *facts.period;
  return {facts.different, is_exact ? facts.different : sources::endless};
}

// So many texts of an item are shown.
constexpr Steps most_shown = 100'000;

// Whether texts go from the first one to the last without a turn.
bool goes_one_way(const ItemGenerator& item, const ItemFacts& facts) {
  const auto& elements = item.column().elements;
  return facts.has_end() && item.enumeration() == nullptr && elements.size() == 1 &&
         counts_in_digits(elements.front()->record.kind);
}

// The first `count` texts, or their ends where these are too many and go one way.
template <class Texts>
sources::Shown show(Texts& texts, Steps count, bool is_one_way, const sources::TakeText& take) {
  const bool is_too_many = count > most_shown;
  if (is_too_many && !is_one_way) return sources::Shown::nothing;
  std::string text;
  for (Steps step = 0; step < count; step += is_too_many ? count - 1 : 1) {
    text.clear();
    texts.append(step, text);
    if (!take(text)) break;
  }
  return is_too_many ? sources::Shown::ends : sources::Shown::all;
}

// An item's field in the records as they are generated.
class EngineSource : public sources::Source {
 public:
  EngineSource(const ItemGenerator& generator, const FieldFacts& facts, LayoutKind layout_kind)
      : course_(course_of(facts)) {
    if (!facts.values) return;
    const ItemFacts& item = *facts.values;
    shape_ = shape_of(generator, layout_kind);
    text_facts_ = text_facts_of(item);
    const bool ends = item.has_end() && item.runs_empty;
    if (shape_.never_empty) text_facts_.gaps = 0;
    text_facts_.end = end_of(facts);
    shape_.never_empty = shape_.never_empty && !ends;
    is_repeated_ = facts.is_repeated;
    if (is_repeated_) {
      text_facts_.all_after = sources::product(facts.hold, text_facts_.all_after);
      return;
    }
    uniqueness_ = host::uniqueness_of(item);
    if (ends) {
      text_facts_.cycle = {item.end, 1};
    } else if (item.period) {
      text_facts_.cycle = {0, *item.period};
    }
    is_injective_ = item.is_injective();
  }

  std::optional<std::uint64_t> period() const override { return std::nullopt; }
  sources::TextShape shape() const override { return shape_; }
  sources::TextFacts text_facts() const override { return text_facts_; }
  sources::Uniqueness uniqueness() const override { return uniqueness_; }
  void tell(sources::Dependencies& dependencies, sources::Thing text) const override {
    if (is_injective_) {
      dependencies.add_cycle(text, *text_facts_.cycle);
    } else {
      dependencies.add({text}, sources::the_record, uniqueness_.different);
    }
  }
  std::string course(std::uint64_t) const override { return course_; }
  std::string_view doubt() const override {
    return is_repeated_ ? "repeats" : is_injective_ ? "is repeated" : "may have equal values";
  }

 private:
  std::string course_;
  sources::TextShape shape_;
  sources::TextFacts text_facts_;
  sources::Uniqueness uniqueness_;
  bool is_repeated_ = false;
  bool is_injective_ = false;
};

// The field of an item that needs the records as a whole: it repeats, or goes step by step.
class RecordField : public EngineSource {
 public:
  RecordField(std::shared_ptr<EngineRecords> records, std::size_t field, const FieldFacts& facts)
      : EngineSource(records->item(field), facts, records->layout_kind()),
        records_(std::move(records)),
        field_(field) {}

  void append(std::uint64_t record, std::string& out) override {
    decoder_.append(records_->value(record, field_), out);
  }

 private:
  std::shared_ptr<EngineRecords> records_;
  std::size_t field_;
  Decoder decoder_;
};

// The field of an item that goes its own way, so that nothing else of its records is made.
template <class Texts>
class LoneField : public EngineSource {
 public:
  LoneField(const ItemGenerator& item, const FieldFacts& facts, LayoutKind layout_kind)
      : EngineSource(item, facts, layout_kind),
        cycles_(*item.cycle()),
        starts_again_(item.repeats_from_start()),
        is_one_way_(facts.values && goes_one_way(item, *facts.values)),
        texts_(item, layout_kind) {}

  void append(std::uint64_t record, std::string& out) override {
    if (is_over(record)) return;
    texts_.append(cycles_.place_of(record), out);
  }
  sources::Shown show_texts(const sources::TakeText& take) override {
    return show(texts_, cycles_.period(), is_one_way_, take);
  }

  void append_all(std::span<const std::uint64_t> records, sources::TextBlock& out) override {
    const bool ends = std::any_of(records.begin(), records.end(),
                                  [this](std::uint64_t record) { return is_over(record); });
    if (ends) return Source::append_all(records, out);
    places_.assign(records.begin(), records.end());
    for (std::uint64_t& place : places_) place = cycles_.place_of(place);
    texts_.append_all(places_, out);
  }

 private:
  bool is_over(std::uint64_t record) const { return record >= cycles_.period() && !starts_again_; }

  ways::Rounds cycles_;
  bool starts_again_;
  std::vector<std::uint64_t> places_;
  bool is_one_way_;
  Texts texts_;
};

// The values of an item as long as a way leads through them.
template <class Texts>
class ItemSource : public sources::Source {
 public:
  ItemSource(const ItemGenerator& item, const ItemFacts& facts, LayoutKind layout_kind)
      : period_(facts.has_end() ? facts.end : facts.period),
        shape_(shape_of(item, layout_kind)),
        text_facts_(text_facts_of(facts)),
        uniqueness_(host::uniqueness_of(facts)),
        is_one_way_(goes_one_way(item, facts)),
        texts_(item, layout_kind) {}

  void append(std::uint64_t step, std::string& out) override { texts_.append(step, out); }
  void append_all(std::span<const std::uint64_t> steps, sources::TextBlock& out) override {
    texts_.append_all(steps, out);
  }
  std::optional<std::uint64_t> period() const override { return period_; }
  sources::Shown show_texts(const sources::TakeText& take) override {
    return show(texts_, *period_, is_one_way_, take);
  }
  sources::TextShape shape() const override { return shape_; }
  sources::TextFacts text_facts() const override { return text_facts_; }
  sources::Uniqueness uniqueness() const override { return uniqueness_; }
  std::string_view doubt() const override { return "may have equal values"; }

 private:
  std::optional<std::uint64_t> period_;
  sources::TextShape shape_;
  sources::TextFacts text_facts_;
  sources::Uniqueness uniqueness_;
  bool is_one_way_;
  Texts texts_;
};

}  // namespace

std::string course_of(const FieldFacts& facts) {
  if (!facts.values) return untold;
  return facts.is_repeated ? repeated_course(facts) : plain_course(*facts.values);
}

std::uint64_t end_of(const FieldFacts& facts) {
  if (!facts.values) return sources::endless;
  const ItemFacts& item = *facts.values;
  if (!item.has_end() || !item.runs_empty) return sources::endless;
  return facts.is_repeated ? facts.repeats_end : item.end;
}

std::string_view EngineRecords::value(std::uint64_t record, std::size_t field) {
  if (latest_ != record) {
    latest_.reset();
    if (record != next_) {
      run_.seek(record);
      check_interruption();
    }
    if (const auto code = run_.next(values_); code != error::none) {
      throw BadValue(error_message(code, layout_kind_));
    }
    latest_ = record;
    next_ = record + 1;
  }
  return values_[field];
}

std::unique_ptr<sources::Source> make_engine_source(std::shared_ptr<EngineRecords> records,
                                                    std::size_t field, const FieldFacts& facts) {
  const ItemGenerator& item = records->item(field);
  const LayoutKind layout_kind = records->layout_kind();
  if (facts.is_repeated || !item.cycle()) {
    return std::make_unique<RecordField>(std::move(records), field, facts);
  }
  if (item.enumeration() != nullptr) {
    return std::make_unique<LoneField<ListTexts>>(item, facts, layout_kind);
  }
  return std::make_unique<LoneField<CourseTexts>>(item, facts, layout_kind);
}

std::unique_ptr<sources::Source> make_course_source(const ItemGenerator& item,
                                                    LayoutKind layout_kind) {
  if (!item.cycle()) return nullptr;
  const ItemFacts facts = item.facts();
  if (!facts.has_end() && !facts.period) return nullptr;
  if (item.enumeration() != nullptr) {
    return std::make_unique<ItemSource<ListTexts>>(item, facts, layout_kind);
  }
  return std::make_unique<ItemSource<CourseTexts>>(item, facts, layout_kind);
}

}  // namespace korvex::host
