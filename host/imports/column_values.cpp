#include "host/imports/column_values.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "host/imports/pattern_samples.h"
#include "host/imports/range_course.h"
#include "host/imports/type_samples.h"
#include "host/layout/own_text.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::size_t samples = 200;  // of a type or pattern, for a column that repeats
constexpr std::size_t default_text = 200;
constexpr std::size_t default_item = 40;  // for a text without a limit
constexpr int text_letters = 5;           // in one directive
constexpr std::size_t text_digits = 10;   // of a text that is a number

std::string folded(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

std::optional<ColumnValues> choices(const ColumnTask& task) {
  std::vector<std::string> values = task.column.choices;
  const bool is_boolean = task.column.type == ColumnType::boolean;
  if (task.facts.choices) {
    const std::vector<std::string>& asked = *task.facts.choices;
    if (!is_boolean) values = asked;
    // `false` and `0` are the same to a database.
    if (is_boolean && asked.size() == 1) {
      const bool is_true = asked.front() == "true" || asked.front() == "1" || asked.front() == "t";
      values = {values[is_true ? 1 : 0]};
    }
  }
  std::erase_if(values, [&](const std::string& value) {
    return std::count(task.facts.excluded.begin(), task.facts.excluded.end(), value) > 0;
  });
  const std::vector<std::string> held = held_by(task);
  std::erase_if(values, [&](const std::string& value) {
    return std::binary_search(held.begin(), held.end(), value);
  });
  if (values.empty()) return std::nullopt;
  return listed(std::move(values), task.is_unique);
}

std::optional<ColumnValues> shaped(const ColumnTask& task, const TypeShape& shape) {
  const bool is_range =
      shape.kind == TypeShape::Kind::range || shape.kind == TypeShape::Kind::multirange;
  const std::size_t count =
      task.is_unique || is_range
          ? static_cast<std::size_t>(task.records)
          : std::min<std::size_t>(samples, static_cast<std::size_t>(task.records));
  std::vector<std::string> values;
  for (std::uint64_t i = 0; values.size() < std::max<std::size_t>(count, 1); ++i) {
    auto text = sample_text(shape, task.column.declared_type, task.rows_there + i);
    if (!text) return std::nullopt;
    values.push_back(std::move(*text));
  }
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  return listed(std::move(values), task.is_unique || is_range);
}

TypeShape plain_shape(std::string name) {
  return {TypeShape::Kind::plain, std::move(name), {}, {}};
}

// Texts that all patterns of a column match: those of one are made, as the others often match as
// well.
std::optional<ColumnValues> patterned(const ColumnTask& task) {
  const ColumnFacts& facts = task.facts;
  const std::string regular =
      facts.regular.empty() ? regular_of_like(facts.like.front()) : facts.regular.front();
  const std::size_t wanted = task.is_unique ? static_cast<std::size_t>(task.records) : samples;
  const std::vector<std::string> held = held_by(task);
  std::vector<std::string> texts = matching_texts(regular, wanted + held.size());
  const std::size_t limit = text_limit(task);
  std::set<std::string> taken;
  for (const std::string& text : held) taken.insert(folded(text));
  std::erase_if(texts, [&](const std::string& text) {
    return text.size() > limit || static_cast<int>(text.size()) < facts.least_length.value_or(0) ||
           !taken.insert(folded(text)).second;
  });
  texts.resize(std::min(texts.size(), wanted));
  if (texts.empty()) return std::nullopt;
  return listed(std::move(texts), task.is_unique);
}

// Letters and digits that the column does not hold, as far as they are needed: where it has room
// for a few of them only, it may hold any. Capitals count as small letters, as they do for some
// indexes.
std::vector<std::string> free_texts(const ColumnTask& task, std::size_t count) {
  const bool is_lower = task.facts.letter_case == ColumnFacts::LetterCase::lower;
  const std::string signs =
      (is_lower ? "abcdefghijklmnopqrstuvwxyz" : "ABCDEFGHIJKLMNOPQRSTUVWXYZ") +
      std::string("0123456789");
  std::set<std::string> held;
  for (const std::string& text : held_by(task)) held.insert(folded(text));
  std::vector<std::string> texts;
  std::vector<std::size_t> wheels(count);
  for (bool is_over = false; !is_over && texts.size() < static_cast<std::size_t>(task.records);) {
    std::string text;
    for (const std::size_t wheel : wheels) text += signs[wheel];
    if (!held.contains(folded(text))) texts.push_back(std::move(text));
    auto wheel = wheels.rbegin();
    for (; wheel != wheels.rend() && ++*wheel == signs.size(); ++wheel) *wheel = 0;
    is_over = wheel == wheels.rend();
  }
  return texts;
}

// Letters, as many as the column asks for: those beyond the directives stay the same. Numbers,
// where a unique column has used the letters up.
std::optional<ColumnValues> lettered(const ColumnTask& task) {
  const auto limit = static_cast<int>(std::min<std::size_t>(text_limit(task), default_text));
  const int least = std::max(task.facts.least_length.value_or(1), 1);
  if (limit < least) return std::nullopt;
  const int count = std::min(limit, text_letters);
  const bool is_lower = task.facts.letter_case == ColumnFacts::LetterCase::lower;
  const TextForm form = {
      std::string(static_cast<std::size_t>(std::max(least - count, 0)), is_lower ? 'a' : 'A'),
      is_lower ? 'a' : 'A', is_lower ? 'z' : 'Z', static_cast<std::size_t>(count), ""};
  auto made = counted_texts(form, task);
  const bool is_short = !made || made->period < static_cast<std::uint64_t>(task.records);
  if (task.is_unique && is_short && limit > text_letters &&
      least <= static_cast<int>(text_digits)) {
    made = counted_texts({"", '0', '9', std::min(text_digits, static_cast<std::size_t>(limit)), ""},
                         task);
  } else if (task.is_fresh && is_short) {
    auto free = free_texts(task, static_cast<std::size_t>(count));
    if (!free.empty() && (!made || free.size() > made->period)) {
      made = listed(std::move(free), task.is_unique);
    }
  }
  if (!made) return std::nullopt;
  made->attributes = text_attributes(task.column.length > 0
                                         ? static_cast<std::size_t>(task.column.length)
                                         : std::max(form.before.size() + form.count, default_item));
  return made;
}

// Bytes as digits, of the length that is asked for.
std::optional<ColumnValues> binary(const ColumnTask& task) {
  constexpr std::size_t digits_of_byte = 2;
  const auto least = static_cast<std::size_t>(std::max(task.facts.least_length.value_or(0), 0));
  const auto most =
      static_cast<std::size_t>(std::max(task.facts.most_length.value_or(text_digits), 1));
  const std::size_t digits_asked =
      std::clamp(text_digits, least * digits_of_byte, std::max(most, least) * digits_of_byte);
  const std::size_t counted = std::min(digits_asked, text_digits);
  auto made = counted_texts(
      {"\\x" + std::string(digits_asked - counted, '0'), '0', '9', counted, ""}, task);
  if (made) made->attributes = text_attributes(digits_asked + 2);
  return made;
}

// Texts between two others, in the order of their bytes: what begins with the lower one, or else
// with a letter between the two.
std::optional<ColumnValues> bounded_texts(const ColumnTask& task) {
  const auto text_of = [](const std::optional<ValueBound>& bound) {
    return bound && bound->text ? *bound->text : std::string();
  };
  const std::string least = text_of(task.facts.least);
  const std::string most = text_of(task.facts.most);
  const char first = least.empty() ? 'A' : least.front();
  const char last = most.empty() ? (first < 'a' ? 'Z' : 'z') : most.front();
  std::vector<std::string> values;
  for (int letter = first; letter <= last; ++letter) {
    for (const char* const rest : {"", "a", "e", "i", "o", "u"}) {
      std::string text = std::string(1, static_cast<char>(letter)) + rest;
      if (letter == first && least.size() > 1) text = least + rest;
      const bool is_below_most =
          most.empty() || text < most || (text == most && task.facts.most->is_inclusive);
      const bool is_above_least = text > least || task.facts.least->is_inclusive;
      if (text.size() <= text_limit(task) && is_below_most && is_above_least) {
        values.push_back(std::move(text));
      }
    }
  }
  const std::vector<std::string> held = held_by(task);
  std::erase_if(values, [&](const std::string& value) {
    return std::binary_search(held.begin(), held.end(), value);
  });
  if (values.empty()) return std::nullopt;
  return listed(std::move(values), task.is_unique);
}

ColumnValues words(std::size_t limit) {
  ColumnValues made;
  made.attributes = text_attributes(limit);
  made.keys = {{"type", toml_text("builtin")},
               {"set", toml_text("words.word")},
               {"language", toml_text("en")},
               {"order", toml_text("random")}};
  return made;
}

std::optional<ColumnValues> texts(const ColumnTask& task) {
  constexpr std::size_t longest_word = 16;
  const ColumnFacts& facts = task.facts;
  if (!facts.json_type.empty()) {
    return shaped(task, plain_shape("json"));
  }
  if (!facts.regular.empty() || !facts.like.empty()) return patterned(task);
  if (facts.is_bounded() && task.form == DraftForm::ways) return bounded_texts(task);
  const bool is_free =
      facts.letter_case != ColumnFacts::LetterCase::upper && facts.least_length.value_or(0) <= 1;
  const std::size_t limit = text_limit(task);
  if (task.has_readable_texts && !task.is_unique && is_free && limit >= longest_word) {
    return words(limit);
  }
  return lettered(task);
}

// A word in the quotation marks of JSON goes where no list is wanted.
std::optional<ColumnValues> json(const ColumnTask& task) {
  if (task.form == DraftForm::ways || !task.facts.json_type.empty()) {
    return shaped(task, plain_shape("json"));
  }
  auto made = counted_texts({"\"", 'A', 'Z', text_letters, "\""}, task);
  if (made) made->attributes = text_attributes(default_item);
  return made;
}

}  // namespace

std::vector<std::string> held_by(const ColumnTask& task) {
  std::vector<std::string> held;
  if (task.is_fresh && task.held) held = task.held();
  std::sort(held.begin(), held.end());
  return held;
}

// A whole day inside of each bound, so that neither its moment nor the clock matters.
ColumnValues listed(std::vector<std::string> values, bool is_unique) {
  ColumnValues made;
  std::size_t longest = 1;
  for (const std::string& value : values) longest = std::max(longest, character_count(value));
  made.attributes = text_attributes(longest);
  made.period = values.size();
  made.listed = std::move(values);
  made.keys = {{"order", order_of(is_unique)}};
  return made;
}

std::string order_of(bool is_unique) { return toml_text(is_unique ? "shuffled" : "random"); }

ItemAttributes text_attributes(std::size_t length) {
  const auto size = static_cast<std::int32_t>(length);
  return {attribute::character, Flag::off, size, size, 0};
}

const std::vector<std::string>& choices_of(const ColumnTask& task) {
  return task.facts.choices ? *task.facts.choices : task.column.choices;
}

std::size_t text_limit(const ColumnTask& task) {
  std::size_t longest = 0;
  for (const std::string& each : choices_of(task)) {
    longest = std::max(longest, character_count(each));
  }
  if (longest > 0) return longest;
  std::size_t limit =
      task.column.length > 0 ? static_cast<std::size_t>(task.column.length) : default_text;
  if (task.facts.most_length && *task.facts.most_length > 0) {
    const auto most = static_cast<std::size_t>(*task.facts.most_length);
    limit = task.column.length > 0 ? std::min(limit, most) : most;
  }
  return std::max(limit, static_cast<std::size_t>(
                             task.column.length > 0 ? 0 : task.facts.least_length.value_or(0)));
}

std::optional<ColumnValues> range_values(const ItemAttributes& item, const RangeTexts& texts,
                                         bool is_unique) {
  const auto course = RangeCourse::of(item, texts);
  if (!course) return std::nullopt;
  ColumnValues made;
  made.attributes = item;
  made.period = course->values();
  made.keys = {{"type", toml_text("range")},
               {"format", toml_text(texts.format)},
               {"start", toml_text(texts.start)},
               {"end", toml_text(texts.end)}};
  if (texts.increment != "1") made.keys.push_back({"increment", toml_text(texts.increment)});
  made.keys.push_back({"order", order_of(is_unique)});
  return made;
}

// How many of the values that are left a column draws from: a part, so that later imports find some
// after them, too.
std::uint64_t width_beside(std::uint64_t left, std::int64_t records) {
  constexpr std::uint64_t imports = 50;
  const std::uint64_t needed = std::max<std::uint64_t>(static_cast<std::uint64_t>(records), 2);
  const std::uint64_t wide = std::max(left / imports, needed * 10);
  return std::min(wide > left / 2 ? needed : wide, left);
}

std::optional<ColumnValues> counted_texts(const TextForm& form, const ColumnTask& task) {
  const bool is_number = form.lowest == '0';
  const char directive = is_number ? 'U' : form.lowest == 'a' ? 's' : 'S';
  const std::string before = form.before.empty() ? "" : "'" + form.before + "'";
  const std::string quoted_after = form.after.empty() ? "" : "'" + form.after + "'";
  RangeTexts texts = {before + "%" + std::to_string(form.count) + directive + quoted_after,
                      std::string(form.count, form.lowest), std::string(form.count, form.highest),
                      "1"};
  const ItemAttributes item = text_attributes(form.before.size() + form.count + form.after.size());
  std::optional<std::string> last;
  if (task.is_fresh && task.largest_text) last = task.largest_text(form);
  // The number that is left out is 0.
  if (last || is_number) {
    if (last) texts.start = last->substr(form.before.size(), form.count);
    const auto course = RangeCourse::of(item, texts);
    if (!course) return std::nullopt;
    texts.start = course->text(1).substr(form.before.size(), form.count);
  }
  if ((task.is_unique || task.is_fresh) && task.form == DraftForm::ways) {
    if (const auto course = RangeCourse::of(item, texts)) {
      const std::uint64_t width = width_beside(course->values(), task.records);
      texts.end = course->text(width - 1).substr(form.before.size(), form.count);
    }
  }
  if (is_number) texts.start.erase(0, texts.start.find_first_not_of('0'));
  return range_values(item, texts, task.is_unique);
}

std::optional<ColumnValues> make_values(const ColumnTask& task) {
  if (task.facts.choices || task.column.type == ColumnType::choice ||
      task.column.type == ColumnType::boolean) {
    return choices(task);
  }
  if (auto made = make_numbers(task)) return made;
  switch (task.column.type) {
    case ColumnType::text:
    case ColumnType::binary:
      return texts(task);
    case ColumnType::date:
    case ColumnType::timestamp:
      return make_moments(task);
    case ColumnType::time:
    case ColumnType::interval:
      return make_times(task);
    case ColumnType::uuid:
      return counted_texts({"00000000-0000-4000-8000-", '0', '9', 12, ""}, task);
    case ColumnType::hex_binary:
      return binary(task);
    case ColumnType::json:
      return json(task);
    case ColumnType::unknown:
      if (task.shape == nullptr) return texts(task);
      return shaped(task, *task.shape);
    default:
      return std::nullopt;
  }
}

}  // namespace korvex::host
