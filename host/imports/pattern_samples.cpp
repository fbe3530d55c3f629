#include "host/imports/pattern_samples.h"

#include <regex.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>

#include "host/ways/mixing.h"

namespace korvex::host {

namespace {

// What has no upper limit comes so often more than it must.
constexpr unsigned free_repeats = 4;
constexpr unsigned most_repeats = 200;
constexpr int deepest_group = 50;
// Tries in a row that give a text which is there already, before no others are expected.
constexpr int most_failures = 100;

const std::string lower_letters = "abcdefghijklmnopqrstuvwxyz";
const std::string upper_letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string decimal_digits = "0123456789";
const std::string word_letters = lower_letters + upper_letters + decimal_digits;

// Goes through an expression and writes what it finds, with a draw at each choice.
class Sampler {
 public:
  Sampler(std::string_view regular, std::uint64_t key) : rest_(regular), state_(key) {}

  std::optional<std::string> sample() {
    std::string text = alternatives();
    if (is_lost_ || !rest_.empty()) return std::nullopt;
    return text;
  }

 private:
  std::uint64_t draw(std::uint64_t below) {
    state_ = ways::absorb(state_, 0);
    return below == 0 ? 0 : state_ % below;
  }

  char take() {
    const char next = rest_.front();
    rest_.remove_prefix(1);
    return next;
  }

  bool take_if(char wanted) {
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::string alternatives() {
    if (++depth_ > deepest_group) is_lost_ = true;
    std::vector<std::string> texts;
    do {
      texts.push_back(sequence());
    } while (!is_lost_ && take_if('|'));
    --depth_;
    return texts[draw(texts.size())];
  }

  std::string sequence() {
    std::string text;
    while (!is_lost_ && !rest_.empty() && rest_.front() != '|' && rest_.front() != ')') {
      const std::string_view begin = rest_;
      std::string part = atom();
      const std::string_view atom_text = begin.substr(0, begin.size() - rest_.size());
      const auto [least, most] = repeats();
      const std::uint64_t count = least + draw(most - least + 1);
      for (std::uint64_t i = 0; i < count && !is_lost_; ++i) {
        // Each time with draws of its own.
        if (i > 0) {
          const std::string_view after = rest_;
          rest_ = atom_text;
          part = atom();
          rest_ = after;
        }
        text += part;
      }
    }
    return text;
  }

  struct Repeats {
    unsigned least = 1;
    unsigned most = 1;
  };

  Repeats repeats() {
    Repeats found;
    if (take_if('?'))
      found = {0, 1};
    else if (take_if('*'))
      found = {0, free_repeats};
    else if (take_if('+'))
      found = {1, free_repeats};
    else if (rest_.size() > 1 && rest_.front() == '{')
      found = counted();
    take_if('?');
    return found;
  }

  Repeats counted() {
    take();
    Repeats found;
    found.least = number();
    found.most = found.least;
    if (take_if(','))
      found.most = !rest_.empty() && rest_.front() == '}' ? found.least + free_repeats : number();
    if (!take_if('}') || found.most < found.least || found.most > most_repeats) is_lost_ = true;
    return is_lost_ ? Repeats{} : found;
  }

  unsigned number() {
    unsigned value = 0;
    const char* const end = rest_.data() + rest_.size();
    const auto [stop, failure] = std::from_chars(rest_.data(), end, value);
    if (failure != std::errc()) is_lost_ = true;
    rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
    return value;
  }

  std::string one_of(const std::string& letters) {
    if (letters.empty()) is_lost_ = true;
    return is_lost_ ? "" : std::string(1, letters[draw(letters.size())]);
  }

  std::string atom() {
    const char first = take();
    switch (first) {
      case '^':
      case '$':
        return {};
      case '.':
        return one_of(lower_letters);
      case '[':
        return one_of(bracketed());
      case '(': {
        if (take_if('?') && !take_if(':')) is_lost_ = true;
        std::string text = is_lost_ ? "" : alternatives();
        if (!take_if(')')) is_lost_ = true;
        return text;
      }
      case '\\':
        if (rest_.empty()) break;
        return one_of(escaped(take()));
      case '*':
      case '+':
      case '?':
      case '{':
        break;
      default:
        return std::string(1, first);
    }
    is_lost_ = true;
    return {};
  }

  std::string escaped(char letter) {
    if (letter == 'd') return decimal_digits;
    if (letter == 'w') return word_letters;
    if (letter == 's') return " ";
    if (std::string_view("mMyYAZbB").find(letter) != std::string_view::npos) is_lost_ = true;
    return std::string(1, letter);
  }

  // A class such as [A-Z0-9_], or one of what it leaves out.
  std::string bracketed() {
    const bool is_negated = take_if('^');
    std::string letters;
    bool is_first = true;
    while (!rest_.empty() && (is_first || rest_.front() != ']')) {
      is_first = false;
      if (rest_.starts_with("[:")) {
        letters += named_class();
        continue;
      }
      const char next = take();
      if (next == '\\' && !rest_.empty()) {
        letters += escaped(take());
      } else if (rest_.size() > 1 && rest_.front() == '-' && rest_[1] != ']') {
        take();
        const char last = take();
        for (int letter = next; letter <= last; ++letter) letters += static_cast<char>(letter);
      } else {
        letters += next;
      }
    }
    if (!take_if(']')) is_lost_ = true;
    if (!is_negated) return letters;
    std::string others;
    for (const char letter : word_letters) {
      if (letters.find(letter) == std::string::npos) others += letter;
    }
    return others;
  }

  std::string named_class() {
    const std::size_t end = rest_.find(":]");
    const std::string_view name = rest_.substr(2, end == std::string_view::npos ? 0 : end - 2);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 2);
    if (name == "alpha") return lower_letters + upper_letters;
    if (name == "digit") return decimal_digits;
    if (name == "alnum") return word_letters;
    if (name == "upper") return upper_letters;
    if (name == "lower") return lower_letters;
    if (name == "space") return " ";
    if (name == "xdigit") return decimal_digits + "abcdef";
    is_lost_ = true;
    return {};
  }

  std::string_view rest_;
  std::uint64_t state_;
  int depth_ = 0;
  bool is_lost_ = false;
};

}  // namespace

std::vector<std::string> matching_texts(const std::string& regular, std::size_t count) {
  std::vector<std::string> texts;
  std::set<std::string> known;
  int failures = 0;
  for (std::uint64_t key = 0; texts.size() < count && failures < most_failures; ++key) {
    const auto text = Sampler(regular, key).sample();
    if (!text) return {};
    const bool is_new = !text->empty() && known.insert(*text).second;
    failures = is_new ? 0 : failures + 1;
    if (is_new) texts.push_back(*text);
  }
  return texts;
}

bool is_met_by_any_word(const std::string& regular) {
  if (regular.find_first_of("^$") != std::string::npos) return false;
  regex_t compiled;
  if (regcomp(&compiled, regular.c_str(), REG_EXTENDED | REG_NOSUB) != 0) return false;
  bool is_met = true;
  for (const char* letter : {"a", "z", "A", "Z", "0", "9"}) {
    is_met = is_met && regexec(&compiled, letter, 0, nullptr, 0) == 0;
  }
  regfree(&compiled);
  return is_met;
}

std::string regular_of_glob(const std::string& pattern) {
  std::string regular = "^";
  bool is_in_brackets = false;
  for (const char letter : pattern) {
    const bool is_special = std::string_view("\\.(){}+|^$").find(letter) != std::string_view::npos;
    if (letter == '[' || letter == ']') is_in_brackets = letter == '[';
    if (is_in_brackets || letter == ']') {
      regular += letter;
    } else if (letter == '*') {
      regular += "[0-9]{1,4}";
    } else if (letter == '?') {
      regular += "[0-9]";
    } else {
      regular += (is_special ? "\\" : "") + std::string(1, letter);
    }
  }
  return regular + "$";
}

std::string regular_of_like(const std::string& pattern) {
  std::string regular = "^";
  for (const char letter : pattern) {
    const bool is_special =
        std::string_view("\\.[](){}*+?|^$").find(letter) != std::string_view::npos;
    if (letter == '%') {
      regular += "[a-z]{4,8}";
    } else if (letter == '_') {
      regular += "[a-z]";
    } else {
      regular += (is_special ? "\\" : "") + std::string(1, letter);
    }
  }
  return regular + "$";
}

// Brackets, repeats and `|` are those of other regular expressions, dots and the like are not.
std::string regular_of_similar(const std::string& pattern) {
  std::string regular;
  for (const char letter : pattern) {
    if (letter == '%') {
      regular += "[a-z]{4,8}";
    } else if (letter == '_') {
      regular += "[a-z]";
    } else {
      regular +=
          (letter == '.' || letter == '^' || letter == '$' ? "\\" : "") + std::string(1, letter);
    }
  }
  return "^(" + regular + ")$";
}

}  // namespace korvex::host
