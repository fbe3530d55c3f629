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

class EngineSource : public sources::Source {
 public:
  EngineSource(std::shared_ptr<EngineRecords> records, std::size_t field, const FieldFacts& facts)
      : records_(std::move(records)), field_(field) {
    if (!facts.values) return;
    if (facts.values->distinct) most_texts_ = *facts.values->distinct;
    if (!facts.is_repeated) different_ = facts.values->different;
  }

  void append(std::uint64_t record, std::string& out) override {
    decoder_.append(records_->value(record, field_), out);
  }
  std::optional<std::uint64_t> period() const override { return std::nullopt; }
  std::uint64_t most_texts() const override { return most_texts_; }
  void tell(sources::Knowledge& knowledge, sources::Thing text, sources::Thing index,
            std::uint64_t records) const override {
    knowledge.add({text}, index, std::min(records, different_));
  }

 private:
  std::shared_ptr<EngineRecords> records_;
  std::size_t field_;
  std::uint64_t most_texts_ = sources::endless;
  std::uint64_t different_ = 1;
  Decoder decoder_;
};

// What is known of an item's values as long as a way leads through them.
class ItemSource : public sources::Source {
 public:
  explicit ItemSource(const ItemFacts& facts)
      : period_(facts.has_end() ? facts.end : facts.period),
        distinct_(facts.distinct.value_or(sources::endless)) {}

  std::optional<std::uint64_t> period() const override { return period_; }
  std::uint64_t most_texts() const override { return distinct_; }
  void tell(sources::Knowledge& knowledge, sources::Thing text, sources::Thing index,
            std::uint64_t records) const override {
    if (distinct_ == period_) knowledge.add({text}, index, records);
  }

 protected:
  Decoder decoder_;

 private:
  std::optional<std::uint64_t> period_;
  std::uint64_t distinct_;  // texts in a period
};

class CourseSource : public ItemSource {
 public:
  CourseSource(const ItemFacts& facts, ItemCourse course)
      : ItemSource(facts), course_(std::move(course)) {
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
  EnumerationSource(const ItemFacts& facts, const ClEnumDataList& values)
      : ItemSource(facts), cursor_(values) {}

  void append(std::uint64_t index, std::string& out) override {
    cursor_.seek(static_cast<std::int32_t>(index));
    decoder_.append(cursor_.value(), out);
  }

 private:
  EnumCursor cursor_;
};

}  // namespace

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
                                                    const ClFmtColInf& column,
                                                    std::int32_t layout_kind) {
  if (!item.cycle()) return nullptr;
  const ItemFacts facts = item.facts();
  if (!facts.has_end() && !facts.period) return nullptr;
  if (const ClEnumDataList* values = item.enumeration()) {
    return std::make_unique<EnumerationSource>(facts, *values);
  }
  return std::make_unique<CourseSource>(facts, *ItemCourse::of(column, layout_kind));
}

}  // namespace korvex::host
