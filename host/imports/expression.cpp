#include "host/imports/expression.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "platform/text_lines.h"

namespace korvex::host {

namespace {

using Kind = Expression::Kind;

// A text may come from a file that somebody has crafted: each level is a call.
constexpr int deepest_nesting = 200;

// Words that a type's name goes on with: `timestamp without time zone`.
constexpr std::array<std::string_view, 6> type_words = {"varying", "precision", "without",
                                                        "with",    "time",      "zone"};

constexpr std::array<std::string_view, 5> present_words = {
    "current_date", "current_timestamp", "localtimestamp", "current_time", "localtime"};

std::string lowered(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return lower;
}

Expression made(Kind kind, std::string text, std::vector<Expression> parts = {}) {
  return {kind, std::move(text), std::move(parts)};
}

class Parser {
 public:
  explicit Parser(std::vector<SqlWord> words) : words_(std::move(words)) {}

  Expression parse() {
    Expression whole = disjunction();
    return at_end() && !is_lost_ ? whole : Expression{};
  }

 private:
  bool at_end() const { return place_ >= words_.size(); }
  bool is_symbol(char symbol, std::size_t ahead = 0) const {
    return place_ + ahead < words_.size() && words_[place_ + ahead].is_symbol(symbol);
  }
  bool is_keyword(std::string_view keyword, std::size_t ahead = 0) const {
    return place_ + ahead < words_.size() && words_[place_ + ahead].is_keyword(keyword);
  }
  bool is_name(std::size_t ahead = 0) const {
    return place_ + ahead < words_.size() && words_[place_ + ahead].kind == SqlWord::Kind::name;
  }
  bool take_symbol(char symbol) {
    if (!is_symbol(symbol)) return false;
    ++place_;
    return true;
  }
  bool take_keyword(std::string_view keyword) {
    if (!is_keyword(keyword)) return false;
    ++place_;
    return true;
  }
  Expression lose() {
    is_lost_ = true;
    place_ = words_.size();
    return {};
  }
  void expect(char symbol) {
    if (!take_symbol(symbol)) lose();
  }

  Expression disjunction() { return chain("OR", Kind::disjunction, &Parser::conjunction); }
  Expression conjunction() { return chain("AND", Kind::conjunction, &Parser::negation); }

  Expression chain(std::string_view word, Kind kind, Expression (Parser::*next)()) {
    if (++depth_ > deepest_nesting) return lose();
    std::vector<Expression> parts = {(this->*next)()};
    while (take_keyword(word)) parts.push_back((this->*next)());
    --depth_;
    return parts.size() == 1 ? std::move(parts.front()) : made(kind, "", std::move(parts));
  }

  Expression negation() {
    if (!take_keyword("NOT")) return comparison();
    if (++depth_ > deepest_nesting) return lose();
    Expression inner = negation();
    --depth_;
    return made(Kind::negation, "", {std::move(inner)});
  }

  // One of the operators of comparisons, which are symbols of one character each; empty for none.
  std::string take_comparison() {
    if (take_symbol('=')) {
      take_symbol('=');
      return "=";
    }
    if (take_symbol('<')) return take_symbol('>') ? "<>" : take_symbol('=') ? "<=" : "<";
    if (take_symbol('>')) return take_symbol('=') ? ">=" : ">";
    if (is_symbol('!') && is_symbol('=', 1)) {
      place_ += 2;
      return "<>";
    }
    return {};
  }

  // A pattern's operator, and whether it is turned round; empty for none. `~~` is LIKE.
  std::string take_pattern_operator(bool& is_negated) {
    for (const std::string_view word : {"LIKE", "ILIKE", "GLOB"}) {
      if (take_keyword(word)) return std::string(word);
    }
    const std::size_t begin = place_;
    is_negated = take_symbol('!');
    if (!take_symbol('~')) {
      place_ = begin;
      is_negated = false;
      return {};
    }
    const bool is_like = take_symbol('~');
    const bool is_any_case = take_symbol('*');
    return is_like ? (is_any_case ? "ILIKE" : "LIKE") : (is_any_case ? "~*" : "~");
  }

  Expression comparison() {
    Expression left = sum();
    for (;;) {
      if (take_keyword("IS")) {
        const bool is_negated = take_keyword("NOT");
        left = null_test(std::move(left), is_negated);
      } else if (is_keyword("NOT") || is_keyword("IN") || is_keyword("BETWEEN") ||
                 is_keyword("LIKE") || is_keyword("ILIKE") || is_keyword("GLOB")) {
        const bool is_negated = take_keyword("NOT");
        left = membership(std::move(left));
        if (is_negated) left = made(Kind::negation, "", {std::move(left)});
      } else if (const std::string sign = take_comparison(); !sign.empty()) {
        left = compared(std::move(left), sign);
      } else {
        bool is_negated = false;
        const std::string pattern = take_pattern_operator(is_negated);
        if (pattern.empty()) return left;
        left = made(Kind::like, pattern, {std::move(left), sum()});
        if (is_negated) left = made(Kind::negation, "", {std::move(left)});
      }
    }
  }

  Expression null_test(Expression tested, bool is_negated) {
    if (take_keyword("NULL")) {
      return made(is_negated ? Kind::is_not_null : Kind::is_null, "", {std::move(tested)});
    }
    const bool is_true = is_keyword("TRUE");
    if (!is_true && !is_keyword("FALSE")) return lose();
    ++place_;
    Expression truth = made(Kind::comparison, "=",
                            {std::move(tested), made(Kind::truth, is_true ? "true" : "false")});
    return is_negated ? made(Kind::negation, "", {std::move(truth)}) : truth;
  }

  Expression membership(Expression tested) {
    if (take_keyword("IN")) {
      std::vector<Expression> parts = {std::move(tested)};
      expect('(');
      do {
        parts.push_back(sum());
      } while (take_symbol(','));
      expect(')');
      return made(Kind::is_in, "", std::move(parts));
    }
    if (take_keyword("BETWEEN")) {
      Expression least = sum();
      if (!take_keyword("AND")) return lose();
      Expression most = sum();
      Expression copy = tested;
      return made(Kind::conjunction, "",
                  {made(Kind::comparison, ">=", {std::move(tested), std::move(least)}),
                   made(Kind::comparison, "<=", {std::move(copy), std::move(most)})});
    }
    bool is_negated = false;
    const std::string pattern = take_pattern_operator(is_negated);
    if (pattern.empty()) return lose();
    return made(Kind::like, pattern, {std::move(tested), sum()});
  }

  // `= ANY (ARRAY[...])` and `<> ALL (ARRAY[...])` are other words for IN and NOT IN.
  Expression compared(Expression left, const std::string& sign) {
    const bool is_any = sign == "=" && (is_keyword("ANY") || is_keyword("SOME"));
    const bool is_all = sign == "<>" && is_keyword("ALL");
    if (!is_any && !is_all) return made(Kind::comparison, sign, {std::move(left), sum()});
    ++place_;
    Expression list = primary();
    if (!list.is(Kind::list)) return lose();
    std::vector<Expression> parts = {std::move(left)};
    std::move(list.parts.begin(), list.parts.end(), std::back_inserter(parts));
    Expression within = made(Kind::is_in, "", std::move(parts));
    return is_any ? within : made(Kind::negation, "", {std::move(within)});
  }

  Expression sum() {
    Expression left = cast();
    for (;;) {
      std::string sign;
      for (const char symbol : {'+', '-', '*', '/', '%', '|', '&', '@', '#'}) {
        if (!is_symbol(symbol)) continue;
        sign = std::string(1, symbol);
        break;
      }
      if (sign.empty()) return left;
      while (!at_end() && words_[place_].kind == SqlWord::Kind::symbol && is_sign()) ++place_;
      left = made(Kind::call, sign, {std::move(left), cast()});
    }
  }

  // Whether the symbol goes on with an operator of several: `||`, `->>`, `@>`.
  bool is_sign() const {
    return std::string_view("+-*/%|&@#>").find(words_[place_].text.front()) !=
           std::string_view::npos;
  }

  Expression cast() {
    Expression inner = primary();
    for (;;) {
      if (is_symbol(':') && is_symbol(':', 1)) {
        place_ += 2;
        skip_type();
      } else if (take_keyword("COLLATE")) {
        skip_name();
      } else if (take_symbol('[')) {
        Expression index = disjunction();
        expect(']');
        inner = made(Kind::call, "[]", {std::move(inner), std::move(index)});
      } else {
        return inner;
      }
    }
  }

  void skip_name() {
    ++place_;
    while (take_symbol('.')) ++place_;
  }

  void skip_type() {
    skip_name();
    const auto goes_on = [&] {
      return is_name() && std::find(type_words.begin(), type_words.end(),
                                    lowered(words_[place_].text)) != type_words.end();
    };
    while (goes_on()) ++place_;
    if (take_symbol('(')) {
      while (!at_end() && !take_symbol(')')) ++place_;
    }
    while (goes_on()) ++place_;
    while (is_symbol('[') && is_symbol(']', 1)) place_ += 2;
  }

  Expression primary() {
    if (at_end() || ++depth_ > deepest_nesting) return lose();
    Expression found = unguarded_primary();
    --depth_;
    return found;
  }

  Expression unguarded_primary() {
    if (take_symbol('(')) {
      Expression inner = disjunction();
      expect(')');
      return inner;
    }
    if (is_symbol('-') || is_symbol('+')) {
      const bool is_negative = take_symbol('-');
      if (!is_negative) ++place_;
      Expression number = primary();
      if (!number.is(Kind::constant)) return lose();
      if (is_negative) number.text.insert(0, "-");
      return number;
    }
    const SqlWord word = words_[place_++];
    if (word.kind == SqlWord::Kind::text) return made(Kind::constant, word.text);
    if (word.kind == SqlWord::Kind::symbol) return lose();
    if (word.kind == SqlWord::Kind::quoted_name) return name(word.text);
    if (platform::is_digit(word.text.front())) return number(word.text);
    return named(word);
  }

  Expression number(std::string digits) {
    if (is_symbol('.') && is_name(1)) {
      digits += "." + words_[place_ + 1].text;
      place_ += 2;
    }
    return made(Kind::constant, std::move(digits));
  }

  // The last part of a qualified name counts; one in front of a parenthesis is a function's.
  Expression name(std::string text) {
    while (take_symbol('.') && !at_end()) text = words_[place_++].text;
    if (!is_symbol('(')) return made(Kind::column, std::move(text));
    return call(lowered(text));
  }

  Expression call(std::string function) {
    std::vector<Expression> parts;
    expect('(');
    while (!at_end() && !is_symbol(')')) {
      parts.push_back(disjunction());
      if (!take_symbol(',')) break;
    }
    expect(')');
    if (function == "now") return made(Kind::now, "");
    return made(Kind::call, std::move(function), std::move(parts));
  }

  Expression named(const SqlWord& word) {
    const std::string text = lowered(word.text);
    if (text == "null") return made(Kind::null_value, "");
    if (text == "true" || text == "false") return made(Kind::truth, text);
    if (std::find(present_words.begin(), present_words.end(), text) != present_words.end()) {
      return made(Kind::now, "");
    }
    if (text == "case" || text == "cast" || text == "exists" || text == "select") return lose();
    if (text == "array" && take_symbol('[')) {
      std::vector<Expression> parts;
      while (!at_end() && !is_symbol(']')) {
        parts.push_back(sum());
        if (!take_symbol(',')) break;
      }
      expect(']');
      return made(Kind::list, "", std::move(parts));
    }
    // E'\\d' is a text whose backslashes come twice.
    if (text == "e" && !at_end() && words_[place_].kind == SqlWord::Kind::text) {
      std::string plain;
      const std::string escaped = words_[place_++].text;
      for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] == '\\' && i + 1 < escaped.size()) ++i;
        plain += escaped[i];
      }
      return made(Kind::constant, std::move(plain));
    }
    // `DATE '2020-01-01'` is a cast in front.
    if (!at_end() && words_[place_].kind == SqlWord::Kind::text) {
      return made(Kind::constant, words_[place_++].text);
    }
    return name(word.text);
  }

  std::vector<SqlWord> words_;
  std::size_t place_ = 0;
  int depth_ = 0;
  bool is_lost_ = false;
};

}  // namespace

Expression read_expression(std::string_view sql, Brackets brackets) {
  return Parser(sql_words(sql, brackets)).parse();
}

}  // namespace korvex::host
