#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::host {

// A number as a condition has it: with decimals, an exponent, or hexadecimal. It is exact, however
// many digits it has: a column may be bound at 0.29, or beyond all binary numbers.
class ExactNumber {
 public:
  // Nothing for a text that is no number.
  static std::optional<ExactNumber> parse(std::string_view text);

  bool operator<(const ExactNumber& other) const;

  struct Units {
    std::int64_t number = 0;
    bool is_exact = true;
  };

  // In units of 10^-decimals, towards 0; nothing when there are more than 18 digits of them.
  std::optional<Units> in_units(int decimals) const;

  bool is_negative() const { return is_negative_; }

 private:
  // 0.digits times 10 to the power of the point. The digits neither begin nor end with a zero.
  std::string digits_;
  std::int64_t point_ = 0;
  bool is_negative_ = false;
};

}  // namespace korvex::host
