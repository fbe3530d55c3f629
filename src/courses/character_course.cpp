#include <algorithm>
#include <array>
#include <cstring>

#include "courses/make_course.h"
#include "values/ordinals.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr unsigned letter_count = 26;
constexpr std::size_t full_width_size = 2;

// "A" to "Z" or "a" to "z".
constexpr auto letters_from(char base) {
  std::array<char, letter_count> letters = {};
  for (std::size_t i = 0; i < letters.size(); ++i) {
    letters[i] = static_cast<char>(base + static_cast<int>(i));
  }
  return letters;
}

// "AA" to "ZZ" or "aa" to "zz".
constexpr auto letter_pairs(char base) {
  std::array<char, 2 * letter_count* letter_count> pairs = {};
  for (std::size_t i = 0; i < pairs.size() / 2; ++i) {
    pairs[2 * i] = static_cast<char>(base + static_cast<int>(i / letter_count));
    pairs[2 * i + 1] = static_cast<char>(base + static_cast<int>(i % letter_count));
  }
  return pairs;
}

constexpr auto upper_letters = letters_from('A');
constexpr auto lower_letters = letters_from('a');
constexpr auto upper_pairs = letter_pairs('A');
constexpr auto lower_pairs = letter_pairs('a');

// The bytes of every full-width character in counting order.
const char* full_width_pairs() {
  static const auto pairs = [] {
    std::array<char, full_width_size* full_width_count> bytes = {};
    for (std::int32_t i = 0; i < full_width_count; ++i) {
      bytes[2 * static_cast<std::size_t>(i)] = static_cast<char>(full_width_code(i) >> 8);
      bytes[2 * static_cast<std::size_t>(i) + 1] = static_cast<char>(full_width_code(i) & 0xFF);
    }
    return bytes;
  }();
  return pairs.data();
}

// `base` is 'A' or 'a', or 0 for full-width characters.
Wheel wheel_of(char base, std::size_t size) {
  if (base == 0) return {full_width_pairs(), pair_entry, full_width_count};
  if (size == 1) {
    return {base == 'A' ? upper_letters.data() : lower_letters.data(), character_entry,
            letter_count};
  }
  return {base == 'A' ? upper_pairs.data() : lower_pairs.data(), pair_entry,
          letter_count * letter_count};
}

char base_of(FormatKind kind) {
  if (kind == format_kind::upper_letters) return 'A';
  return kind == format_kind::lower_letters ? 'a' : '\0';
}

// The places of the one character that the full-width table holds twice.
struct DoubledCharacter {
  std::int32_t first = 0;
  std::int32_t second = 0;
};

const DoubledCharacter& doubled_character() {
  static const DoubledCharacter doubled = [] {
    std::int32_t place = 0;
    while (full_width_index(full_width_code(place)) == place) ++place;
    return DoubledCharacter{full_width_index(full_width_code(place)), place};
  }();
  return doubled;
}

class CharacterCourse : public Course {
 public:
  CharacterCourse(char base, std::int64_t start, std::int64_t change, std::size_t size,
                  Steps values, bool leads)
      : base_(base), start_(start), change_(change), wheel_(wheel_of(base, size)) {
    if (leads) {
      facts_.end = values;
    } else {
      facts_.restart = facts_.period = values;
    }
    facts_.different = facts_.distinct = values;
    facts_.size = size;
    if (base == 0 && values > 1) take_out_double();
  }

  void write(Steps step, char* out) const override {
    auto ordinal = static_cast<std::uint32_t>(ordinal_at(step));
    if (base_ == 0) {
      std::memcpy(out, wheel_.entries + full_width_size * ordinal, full_width_size);
      return;
    }
    for (char* letter = out + facts_.size; letter != out; ordinal /= letter_count) {
      *--letter = static_cast<char>(base_ + ordinal % letter_count);
    }
  }

  WheelRun run(Steps step) const override {
    if ((change_ < 0 ? -change_ : change_) >= wheel_.count) return {};
    return run_on(wheel_, ordinal_at(step) % wheel_.count, change_);
  }

 private:
  std::int64_t ordinal_at(Steps step) const {
    return start_ + static_cast<std::int64_t>(step) * change_;
  }

  // Two places of the full-width table give one text.
  void take_out_double() {
    const DoubledCharacter& doubled = doubled_character();
    const Steps later = std::max(step_of(doubled.first), step_of(doubled.second));
    if (later == endless) return;
    facts_.different = later;
    --facts_.distinct;
  }

  // The step at which the course meets an ordinal.
  Steps step_of(std::int64_t ordinal) const {
    const std::int64_t distance = ordinal - start_;
    const bool is_met = distance % change_ == 0 && distance / change_ >= 0 &&
                        static_cast<Steps>(distance / change_) < facts_.distinct;
    return is_met ? static_cast<Steps>(distance / change_) : endless;
  }

  const char base_;
  const std::int64_t start_;
  const std::int64_t change_;
  const Wheel wheel_;
};

std::int64_t highest_ordinal(char base, std::size_t size) {
  if (base == 0) return full_width_count - 1;
  std::int64_t count = 1;
  for (std::size_t i = 0; i < size; ++i) count *= letter_count;
  return count - 1;
}

}  // namespace

std::unique_ptr<const Course> make_character_course(const ElementContext& context,
                                                    const FmtItemRec& settings,
                                                    std::string_view first_text) {
  constexpr std::size_t most_letters = 5;
  const char base = base_of(settings.kind);
  const std::int64_t start = settings.start.low;
  const std::int64_t end = settings.end.low;
  const std::int64_t step = context.increment.low;
  const bool has_size =
      base == 0 ? first_text.size() == full_width_size : first_text.size() <= most_letters;
  const bool counts_whole_text =
      settings.start.position == 0 && field_text(settings.start.low_text) == first_text;
  if (!has_size || !counts_whole_text || step <= 0 || end < 0 ||
      end > highest_ordinal(base, first_text.size())) {
    return nullptr;
  }
  // A text that holds anything else has no ordinal that spells it.
  const std::int64_t ordinal =
      base != 0 ? letters_to_ordinal(base, first_text) : full_width_to_ordinal(first_text);
  if (ordinal != start || start < 0 || start > highest_ordinal(base, first_text.size())) {
    return nullptr;
  }
  const std::int64_t distance = context.counts_up() ? end - start : start - end;
  auto course = std::make_unique<CharacterCourse>(base, start, context.counts_up() ? step : -step,
                                                  first_text.size(), texts_within(distance, step),
                                                  context.leads(settings));
  char spelt[Course::max_text_size];
  course->write(0, spelt);
  if (std::string_view(spelt, first_text.size()) != first_text) return nullptr;
  return course;
}

}  // namespace korvex
