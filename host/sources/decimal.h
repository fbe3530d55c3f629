#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::sources {

inline constexpr unsigned most_decimals = 18;

// What makes texts the same, and one of them less than another.
enum class Comparison { as_numbers, as_texts };

// An exact decimal number with up to 18 digits on either side of its point; sums of them may have
// some more.
class Decimal {
 public:
  // Reads digits with an optional sign before them and an optional point among them: "12", "-0.50",
  // "+7". Nothing for any other text.
  static std::optional<Decimal> parse(std::string_view text);

  // So many units of 10^-decimals, for up to the most decimals.
  static Decimal of_units(std::int64_t units, unsigned decimals);

  // The number in units of 10^-decimals; nothing when it has more decimals, or too many units.
  std::optional<std::int64_t> in_units(unsigned decimals) const;

  // Adds with as many decimals as the one that has more. False, and nothing is added, when the sum
  // has no room.
  bool add(const Decimal& other);

  // False, and nothing is changed, when the product has no room.
  bool multiply(std::uint64_t factor);

  bool operator<(const Decimal& other) const { return units_ < other.units_; }

  void append(std::string& out) const;

 private:
  __extension__ using Units = __int128;

  Units units_ = 0;  // of 10^-18
  unsigned decimals_ = 0;
};

}  // namespace korvex::sources
