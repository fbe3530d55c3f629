#include "host/records/engine_source.h"

#include <algorithm>
#include <utility>

#include "courses/course_cursor.h"
#include "courses/enum_data_list.h"
#include "courses/item_course.h"
#include "platform/printable_text.h"
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
  std::string text = "repeat level " + std::to_string(field.level) + ": ";
  const std::uint64_t cycle = product(field.hold, item.end);
  if (field.hold == endless) {
    text += "keeps its first value";
  } else {
    text += "a new value " +
            (field.hold == 1 ? "every record" : "every " + counted_records(field.hold));
    if (cycle != endless) text += ", starts again after " + counted_records(cycle);
  }
  return text + (item.runs_empty ? "; empty behind the repeats" : "");
}

// Texts of code page 932 on their way into UTF-8.
class Decoder {
 public:
  void append(std::string_view text, std::string& out) {
    if (!decoder_.decode(text, decoded_)) {
      throw BadValue(platform::printable_from_code_page(text) +
                     " has bytes without meaning in code page 932, expected characters");
    }
    out += decoded_;
  }

 private:
  CodePageDecoder decoder_;
  std::string decoded_;
};

bool counts_in_digits(std::int32_t kind) {
  return kind == format_kind::unsigned_number || kind == format_kind::unsigned_number_in_text ||
         kind == format_kind::date || kind == format_kind::date_unchecked ||
         kind == format_kind::time || kind == format_kind::timestamp;
}

bool counts_in_letters(std::int32_t kind) {
  return kind == format_kind::upper_letters || kind == format_kind::lower_letters;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// What a step changes in a text are digits in the place of digits, and letters in that of letters.
sources::TextShape shape_of(const ClFmtColInf& column, const ItemCourse& course) {
  std::string first;
  bool only_digits = true;
  bool no_digits = true;
  bool is_ascii = true;
  for (std::size_t i = 0; i < course.elements().size(); ++i) {
    const std::int32_t kind = column.elements[i]->record.kind;
    const bool is_fixed = kind == format_kind::fixed;
    only_digits = only_digits && (is_fixed || counts_in_digits(kind));
    no_digits = no_digits && (is_fixed || counts_in_letters(kind));
    is_ascii = is_ascii && kind != format_kind::national_character;
    CourseCursor cursor(*course.elements()[i]);
    cursor.seek(0);
    first += cursor.text();
  }
  is_ascii = is_ascii && std::none_of(first.begin(), first.end(), [](char c) { return c < 0; });
  const bool is_cut = course.is_cut_at_end();
  sources::TextShape shape;
  shape.never_empty = !first.empty() && (!is_cut || course.size_at(course.end() - 1) > 0);
  if (is_ascii && !is_cut) shape.size = first.size();
  shape.only_digits = only_digits && std::all_of(first.begin(), first.end(), is_digit);
  shape.no_digits = no_digits && std::none_of(first.begin(), first.end(), is_digit);
  return shape;
}

// What is known of an item's values, one after the other.
sources::Foresight foresight_of(const ItemGenerator& item, const ItemFacts& facts,
                                LayoutKind layout_kind) {
  sources::Foresight foresight;
  if (const ClEnumDataList* values = item.enumeration()) {
    foresight.shape.never_empty = values->count() > 0;
  } else if (const auto course = ItemCourse::of(item.column(), layout_kind)) {
    foresight.shape = shape_of(item.column(), *course);
  }
  const bool has_texts = std::any_of(facts.texts.begin(), facts.texts.end(),
                                     [](const TextRun& run) { return run.bytes > 0; });
  foresight.values = {has_texts ? facts.different : 0,
                      has_texts ? facts.distinct.value_or(sources::endless) : 0};
  if (has_texts && facts.distinct) foresight.values.least = *facts.distinct;
  foresight.all_after = facts.has_end() ? facts.end : facts.period.value_or(sources::endless);
  return foresight;
}

sources::Uniqueness uniqueness_of(const ItemFacts& facts) {
  const bool is_exact = facts.distinct && facts.period && facts.different < *facts.period;
  return {facts.different, is_exact ? facts.different : sources::endless};
}

class EngineSource : public sources::Source {
 public:
  EngineSource(std::shared_ptr<EngineRecords> records, std::size_t field, const FieldFacts& facts)
      : records_(std::move(records)), field_(field), course_(course_of(facts)) {
    if (!facts.values) return;
    const ItemFacts& item = *facts.values;
    foresight_ = foresight_of(records_->item(field), item, records_->layout_kind());
    const bool ends = item.has_end() && item.runs_empty;
    foresight_.shape.never_empty = foresight_.shape.never_empty && !ends;
    is_repeated_ = facts.is_repeated;
    if (is_repeated_) {
      foresight_.all_after = sources::product(facts.hold, foresight_.all_after);
      return;
    }
    uniqueness_ = host::uniqueness_of(item);
    if (ends) {
      foresight_.cycle = {item.end, 1};
    } else if (item.period) {
      foresight_.cycle = {0, *item.period};
    }
    is_injective_ = item.is_injective();
  }

  void append(std::uint64_t record, std::string& out) override {
    decoder_.append(records_->value(record, field_), out);
  }
  std::optional<std::uint64_t> period() const override { return std::nullopt; }
  sources::Foresight foresight() const override { return foresight_; }
  sources::Uniqueness uniqueness() const override { return uniqueness_; }
  void tell(sources::Knowledge& knowledge, sources::Thing text) const override {
    if (is_injective_) {
      knowledge.add_cycle(text, *foresight_.cycle);
    } else {
      knowledge.add({text}, sources::the_record, uniqueness_.different);
    }
  }
  std::string course(std::uint64_t) const override { return course_; }
  std::string_view doubt() const override {
    return is_repeated_ ? "repeats" : is_injective_ ? "comes again" : "may have equal values";
  }

 private:
  std::shared_ptr<EngineRecords> records_;
  std::size_t field_;
  std::string course_;
  sources::Foresight foresight_;
  sources::Uniqueness uniqueness_;
  bool is_repeated_ = false;
  bool is_injective_ = false;
  Decoder decoder_;
};

// What is known of an item's values as long as a way leads through them.
class ItemSource : public sources::Source {
 public:
  ItemSource(const ItemGenerator& item, const ItemFacts& facts, LayoutKind layout_kind)
      : period_(facts.has_end() ? facts.end : facts.period),
        foresight_(foresight_of(item, facts, layout_kind)),
        uniqueness_(host::uniqueness_of(facts)) {}

  std::optional<std::uint64_t> period() const override { return period_; }
  sources::Foresight foresight() const override { return foresight_; }
  sources::Uniqueness uniqueness() const override { return uniqueness_; }
  std::string_view doubt() const override { return "may have equal values"; }

 protected:
  Decoder decoder_;

 private:
  std::optional<std::uint64_t> period_;
  sources::Foresight foresight_;
  sources::Uniqueness uniqueness_;
};

class CourseSource : public ItemSource {
 public:
  CourseSource(const ItemGenerator& item, const ItemFacts& facts, LayoutKind layout_kind,
               ItemCourse course)
      : ItemSource(item, facts, layout_kind), course_(std::move(course)) {
    for (const auto& element : course_.elements()) cursors_.emplace_back(*element);
  }

  void append(std::uint64_t step, std::string& out) override {
    text_.clear();
    for (std::size_t i = 0; i < course_.shown_at(step); ++i) {
      cursors_[i].seek(step);
      text_ += cursors_[i].text();
    }
    decoder_.append(text_, out);
  }

 private:
  ItemCourse course_;
  std::vector<CourseCursor> cursors_;
  std::string text_;
};

class EnumerationSource : public ItemSource {
 public:
  EnumerationSource(const ItemGenerator& item, const ItemFacts& facts, LayoutKind layout_kind)
      : ItemSource(item, facts, layout_kind), cursor_(*item.enumeration()) {}

  void append(std::uint64_t index, std::string& out) override {
    cursor_.seek(static_cast<std::int32_t>(index));
    decoder_.append(cursor_.value(), out);
  }

 private:
  EnumCursor cursor_;
};

}  // namespace

std::string course_of(const FieldFacts& facts) {
  if (!facts.values) return untold;
  return facts.is_repeated ? repeated_course(facts) : plain_course(*facts.values);
}

std::string_view EngineRecords::value(std::uint64_t record, std::size_t field) {
  if (latest_ != record) {
    if (record != next_) run_.seek(record);
    latest_.reset();
    if (const auto code = run_.next(values_); code != 0) {
      throw BadValue(error_message(code, layout_kind_));
    }
    latest_ = record;
    next_ = record + 1;
  }
  return values_[field];
}

std::unique_ptr<sources::Source> make_engine_source(std::shared_ptr<EngineRecords> records,
                                                    std::size_t field, const FieldFacts& facts) {
  return std::make_unique<EngineSource>(std::move(records), field, facts);
}

std::unique_ptr<sources::Source> make_course_source(const ItemGenerator& item,
                                                    LayoutKind layout_kind) {
  if (!item.cycle()) return nullptr;
  const ItemFacts facts = item.facts();
  if (!facts.has_end() && !facts.period) return nullptr;
  if (item.enumeration() != nullptr) {
    return std::make_unique<EnumerationSource>(item, facts, layout_kind);
  }
  return std::make_unique<CourseSource>(item, facts, layout_kind,
                                        *ItemCourse::of(item.column(), layout_kind));
}

}  // namespace korvex::host
