#include "host/imports/reference_numbers.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "host/guesses/meaning.h"
#include "host/layout/own_text.h"
#include "host/ways/mixing.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 9> last_words = {
    "no", "nr", "number", "num", "nummer", "ref", "reference", "code", "sku"};
constexpr int longest_code = 40;
constexpr std::size_t prefix_letters = 3;
constexpr std::size_t most_digits = 6;
constexpr std::size_t fewest_digits = 3;
constexpr std::uint64_t repeating_numbers = 300;

bool asks_for_more(const ColumnTask& task) {
  const ColumnFacts& facts = task.facts;
  return task.column.type != ColumnType::text || !choices_of(task).empty() ||
         !facts.regular.empty() || !facts.like.empty() || !facts.excluded.empty() ||
         !facts.json_type.empty() || facts.is_bounded() ||
         facts.letter_case == ColumnFacts::LetterCase::lower;
}

// The first letters of the first word in front of `no`.
std::string prefix_of(const std::vector<std::string>& words) {
  const std::string& word = words.front();
  std::string prefix;
  for (const char letter : word.substr(0, prefix_letters)) {
    if (letter < 'a' || letter > 'z') return {};
    prefix += static_cast<char>(letter - 'a' + 'A');
  }
  const bool is_bare = words.size() == 1 && word != "sku";
  return is_bare ? std::string() : prefix + "-";
}

}  // namespace

std::optional<GuessedText> guess_reference_numbers(std::string_view name, const ColumnTask& task) {
  const std::vector<std::string> words = name_words(name);
  const bool is_reference =
      !words.empty() && std::count(last_words.begin(), last_words.end(), words.back()) > 0;
  // A long text that is called code may be a program.
  const bool is_long = task.column.length == 0 || task.column.length > longest_code;
  if (!is_reference || asks_for_more(task)) return std::nullopt;
  if (words.back() == "code" && is_long && !task.is_unique) return std::nullopt;
  const std::string prefix = prefix_of(words);
  const std::size_t limit = text_limit(task);
  if (limit < prefix.size() + fewest_digits) return std::nullopt;
  const std::size_t digits = std::min(most_digits, limit - prefix.size());
  if (static_cast<int>(prefix.size() + digits) < task.facts.least_length.value_or(0)) {
    return std::nullopt;
  }
  GuessedText guess;
  guess.what = "numbers";
  if (task.is_unique) {
    auto values = counted_texts({prefix, '0', '9', digits, ""}, task);
    if (!values || values->period < static_cast<std::uint64_t>(task.records)) return std::nullopt;
    guess.values = std::move(*values);
  } else {
    std::vector<std::string> texts;
    for (std::uint64_t i = 0; i < repeating_numbers; ++i) {
      std::string number = std::to_string(ways::absorb(i, digits));
      texts.push_back(prefix + number.substr(number.size() - std::min(digits, number.size())));
    }
    guess.values = listed(std::move(texts), false);
  }
  guess.values.attributes = text_attributes(limit);
  return guess;
}

}  // namespace korvex::host
