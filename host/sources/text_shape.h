#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/sources/decimal.h"
#include "host/sources/saturating.h"
#include "host/sources/scale.h"
#include "host/ways/numbers.h"

// What all texts of a source or a field have in common, known before any of them is made.
namespace korvex::sources {

// How large texts are at most.
struct TextSize {
  std::uint64_t characters = endless;
  std::uint64_t bytes = endless;  // in code page 932
};

// No text is larger in the code page than that says.
TextSize size_of(std::string_view text);
TextSize sum(TextSize a, TextSize b);
TextSize product(TextSize size, std::uint64_t times);
TextSize larger(TextSize a, TextSize b);
TextSize smaller(TextSize a, TextSize b);

// Every text is a value of the scale between two others; a number has no more digits before and
// after its point than these.
struct Extremes {
  ScaleKind scale = ScaleKind::number;
  std::string least = {};
  std::string most = {};
  bool are_reached = false;  // for certain, each in some record
};

// It decides whether a text that is made of several can be taken apart again, whether texts fit
// their item, and saves looks at each of them.
struct TextShape {
  bool never_empty = false;                        // every index has a text
  std::optional<std::size_t> size = std::nullopt;  // bytes, of every text
  bool only_digits = false;                        // every text consists of ASCII digits
  bool no_digits = false;                          // no text has one
  bool only_plain = false;                         // every character is_plain()
  bool always_made = false;                        // no text is a BadValue
  std::uint64_t lookups = 0;  // of values of other records, at most, for one text
  TextSize most = {};         // none is larger
  std::optional<Extremes> extremes = std::nullopt;
};

// Whether every format of records writes a character as it is.
constexpr bool is_plain(char c) {
  constexpr char delete_character = 0x7F;
  const bool is_control = (c >= 0 && c < ' ') || c == delete_character;
  return !is_control && c != ',' && c != '"' && c != '\'' && c != '\\';
}

// Those of numbers in a row; nothing once one of them is none.
class NumberExtremes {
 public:
  void add(std::string_view text);
  std::optional<Extremes> result() const;

 private:
  std::optional<Decimal> least_;
  std::optional<Decimal> most_;
  std::size_t whole_digits_ = 1;
  std::size_t decimals_ = 0;
  bool are_numbers_ = true;
};

// Of texts that can all be made, with the sizes that follow.
TextShape shape_within(Extremes extremes);

// Of whole numbers from one up to another.
TextShape shape_of_counts(std::uint64_t first, ways::Count last);

// Takes texts one after the other until it answers false.
using TakeText = std::function<bool(std::string_view)>;

// What was shown of the texts of a field.
enum class Shown {
  nothing,
  ends,  // two, between which all others are, with as many characters
  all,   // whether a record has them or not
};

}  // namespace korvex::sources
