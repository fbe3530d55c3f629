#include <algorithm>
#include <optional>
#include <utility>

#include "host/sources/record_sources.h"
#include "host/sources/uniqueness.h"
#include "platform/text_lines.h"

namespace korvex::sources {
namespace {

// Templates of templates may double a text again and again.
constexpr std::size_t most_bytes = std::size_t{1} << 24;

void append_filtered(std::string_view text, const std::vector<Filter>& filters, std::string& out) {
  if (filters.empty()) {
    out += text;
    return;
  }
  std::string changed = filtered(filters.front(), text);
  for (std::size_t i = 1; i < filters.size(); ++i) changed = filtered(filters[i], changed);
  out += changed;
}

class TemplateSource : public Source {
 public:
  explicit TemplateSource(std::vector<ComposedPart> parts) : parts_(std::move(parts)) {}

  void append(std::uint64_t record, std::string& out) override {
    const std::size_t begin = out.size();
    bool has_value = false;
    bool has_field = false;
    for (const ComposedPart& part : parts_) {
      out += part.literal;
      if (part.field == nullptr) continue;
      has_field = true;
      const std::optional<std::string_view> text = part.field->text(record);
      if (!text) continue;
      has_value = true;
      append_filtered(*text, part.filters, out);
      if (out.size() - begin > most_bytes) {
        throw BadValue("the value has more than " + std::to_string(most_bytes) + " bytes");
      }
    }
    if (has_field && !has_value) out.resize(begin);
  }

  std::optional<std::uint64_t> period() const override { return std::nullopt; }

  Shown show_texts(const TakeText& take) override {
    return is_other_field() ? parts_.front().field->show_texts(take) : Shown::nothing;
  }

  // Found out once: of templates of templates, each is asked again and again.
  TextShape shape() const override {
    if (!shape_) shape_ = find_shape();
    return *shape_;
  }
  TextFacts text_facts() const override;
  void tell(Dependencies& dependencies, Thing text) const override;
  std::string course(std::uint64_t records) const override {
    const Field* field = only_field();
    return field != nullptr ? field->course_of_texts(records) : "made of other items";
  }
  std::string_view doubt() const override { return "cannot be split into items that differ"; }

 private:
  // The field that alone decides the text, and can be told from it; null for any other template.
  const Field* only_field() const;
  TextShape find_shape() const;

  // Whether it is nothing but the text of a field.
  bool is_other_field() const {
    return parts_.size() == 1 && parts_.front().literal.empty() && parts_.front().filters.empty() &&
           parts_.front().field != nullptr;
  }

  void predict_empty(const std::vector<const Field*>& fields, TextFacts& whole) const;

  std::vector<ComposedPart> parts_;
  mutable std::optional<TextShape> shape_;
};

// What is known of the text of a part, after its filters.
struct PartShape {
  bool has_field = false;
  bool is_unchanged = false;  // the filters leave every text as it is
  TextShape text;
};

PartShape shape_of(const ComposedPart& part) {
  if (part.field == nullptr) return {};
  const TextShape& text = part.field->shape();
  // Filters leave digits alone. Of other letters they may change the size, and make digits of
  // others.
  if (part.filters.empty() || text.only_digits) return {true, true, text};
  constexpr std::uint64_t most_growth = 3;  // of characters, by one filter
  TextSize most = text.most;
  for (std::size_t i = 0; i < part.filters.size(); ++i) {
    most.characters = product(most.characters, most_growth);
    most.bytes = product(most.characters, 2);
  }
  return {.has_field = true,
          .is_unchanged = false,
          .text = {.size = {},
                   .always_made = text.always_made,
                   .lookups = text.lookups,
                   .most = smaller(most, part.most)}};
}

std::vector<PartShape> shapes_of(const std::vector<ComposedPart>& parts) {
  std::vector<PartShape> shapes;
  for (const ComposedPart& part : parts) shapes.push_back(shape_of(part));
  return shapes;
}

bool has_known_size(const PartShape& shape) {
  return !shape.has_field || (shape.text.never_empty && shape.text.size);
}

// Whether what is before the text of part i (after the begin of the whole) ends digits for
// sure.
bool ends_digits_before(const std::vector<ComposedPart>& parts,
                        const std::vector<PartShape>& shapes, std::size_t i) {
  if (!parts[i].literal.empty()) return !platform::is_digit(parts[i].literal.back());
  return i == 0 || (shapes[i - 1].text.never_empty && shapes[i - 1].text.no_digits);
}

// The same of what is after it.
bool ends_digits_after(const std::vector<ComposedPart>& parts, const std::vector<PartShape>& shapes,
                       std::size_t i) {
  if (i + 1 == parts.size()) return true;
  if (!parts[i + 1].literal.empty()) return !platform::is_digit(parts[i + 1].literal.front());
  return shapes[i + 1].text.never_empty && shapes[i + 1].text.no_digits;
}

const Field* TemplateSource::only_field() const {
  const bool is_single = parts_.size() == 1 || (parts_.size() == 2 && !parts_.back().field);
  return is_single && parts_.front().filters.empty() ? parts_.front().field : nullptr;
}

TextFacts TemplateSource::text_facts() const {
  std::vector<const Field*> fields;
  for (const ComposedPart& part : parts_) {
    if (part.field != nullptr) fields.push_back(part.field);
  }
  TextFacts text_facts;
  if (const Field* field = only_field()) {
    text_facts.values = field->text_facts().values;
    text_facts.all_after = field->text_facts().all_after;
  } else {
    text_facts.values.most = most_combinations(fields);
  }
  text_facts.cycle = Cycle();
  if (!fields.empty()) {
    text_facts.follows = fields.front()->text_facts().follows;
    predict_empty(fields, text_facts);
  }
  for (const Field* field : fields) {
    const TextFacts& part = field->text_facts();
    text_facts.cycle = part.cycle && text_facts.cycle
                           ? std::optional(common_cycle(*part.cycle, *text_facts.cycle))
                           : std::nullopt;
    if (part.follows != text_facts.follows) text_facts.follows = nullptr;
  }
  return text_facts;
}

void TemplateSource::tell(Dependencies& dependencies, Thing text) const {
  std::vector<bool> recoverable = recoverable_parts(parts_);
  if (only_field() != nullptr) recoverable.front() = true;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!recoverable[i]) continue;
    dependencies.add({text}, parts_[i].field->thing());
    parts_[i].field->tell(dependencies);
  }
}

// There is no text where no field has one, or where filters leave nothing of it.
void TemplateSource::predict_empty(const std::vector<const Field*>& fields,
                                   TextFacts& whole) const {
  whole.end = 0;
  for (const Field* field : fields) whole.end = std::max(whole.end, field->text_facts().end);
  const bool has_literal = std::any_of(
      parts_.begin(), parts_.end(), [](const ComposedPart& part) { return !part.literal.empty(); });
  for (const ComposedPart& part : parts_) {
    if (part.field == nullptr || (!has_literal && !shape_of(part).is_unchanged)) continue;
    const TextFacts& field = part.field->text_facts();
    whole.gaps = std::min(whole.gaps, sum(field.gaps, whole.end - field.end));
  }
  const bool is_single = std::all_of(fields.begin(), fields.end(),
                                     [&](const Field* field) { return field == fields.front(); });
  if (is_single) whole.least_empty = fields.front()->text_facts().least_empty;
}

// Literals make a text only beside a field that has one, or when there are no fields.
TextShape TemplateSource::find_shape() const {
  if (is_other_field()) return parts_.front().field->shape();
  constexpr TextShape nothing = {.never_empty = true,
                                 .size = 0,
                                 .only_digits = true,
                                 .no_digits = true,
                                 .only_plain = true,
                                 .always_made = true,
                                 .most = {0, 0}};
  TextShape whole = nothing;
  whole.never_empty = parts_.size() == 1 && parts_.front().field == nullptr;
  for (const ComposedPart& part : parts_) {
    const TextShape text = part.field == nullptr ? nothing : shape_of(part).text;
    whole.always_made = whole.always_made && text.always_made;
    whole.lookups = sum(whole.lookups, text.lookups);
    whole.most = sum(whole.most, sum(size_of(part.literal), text.most));
    whole.never_empty = whole.never_empty || (part.field != nullptr && text.never_empty);
    if (!text.never_empty || !text.size) whole.size.reset();
    if (whole.size) *whole.size += part.literal.size() + *text.size;
    whole.only_digits = whole.only_digits && text.only_digits &&
                        std::all_of(part.literal.begin(), part.literal.end(), platform::is_digit);
    whole.no_digits = whole.no_digits && text.no_digits &&
                      std::none_of(part.literal.begin(), part.literal.end(), platform::is_digit);
    whole.only_plain = whole.only_plain && text.only_plain &&
                       std::all_of(part.literal.begin(), part.literal.end(), is_plain);
  }
  constexpr std::uint64_t most_bytes_of_character = 4;
  whole.always_made =
      whole.always_made && whole.most.characters <= most_bytes / most_bytes_of_character;
  return whole;
}

}  // namespace

void look_at_filtered(ComposedPart& part) {
  TextSize most = {0, 0};
  const Shown shown = part.field->show_texts([&](std::string_view text) {
    std::string changed;
    append_filtered(text, part.filters, changed);
    most = larger(most, size_of(changed));
    return true;
  });
  if (shown == Shown::all) part.most = most;
}

std::vector<bool> recoverable_parts(const std::vector<ComposedPart>& parts) {
  const std::vector<PartShape> shapes = shapes_of(parts);
  const auto is_bounded = [&](std::size_t i, bool ends_digits) {
    const TextShape& text = shapes[i].text;
    return has_known_size(shapes[i]) || (text.never_empty && text.only_digits && ends_digits);
  };
  std::size_t front = 0;
  while (front < parts.size() && is_bounded(front, ends_digits_after(parts, shapes, front))) {
    ++front;
  }
  std::size_t back = parts.size();
  while (back > front && is_bounded(back - 1, ends_digits_before(parts, shapes, back - 1))) --back;

  std::vector<bool> recoverable;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    // What is left in the middle is known when it is one part alone.
    const bool is_reached = i < front || i >= back || front + 1 == back;
    recoverable.push_back(shapes[i].has_field && shapes[i].is_unchanged && is_reached);
  }
  return recoverable;
}

std::unique_ptr<Source> make_template_source(std::vector<ComposedPart> parts) {
  return std::make_unique<TemplateSource>(std::move(parts));
}

}  // namespace korvex::sources
