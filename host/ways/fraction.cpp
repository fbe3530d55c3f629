#include "host/ways/fraction.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "host/ways/numbers.h"
#include "platform/text_lines.h"

namespace korvex::ways {
namespace {

// So many digits fit into a Wide with room for one more.
constexpr int most_digits = 36;

constexpr char not_a_number[] = "it is not a number such as 0.05 or 1/3";
constexpr char too_exact[] = "it has more digits than can be taken exactly";

// Reads from the front of a text.
class Scan {
 public:
  explicit Scan(std::string_view text) : rest_(text) {}

  bool is_at_end() const { return rest_.empty(); }

  bool take(std::string_view any_of) {
    if (rest_.empty() || any_of.find(rest_.front()) == std::string_view::npos) return false;
    rest_.remove_prefix(1);
    return true;
  }

  // The digits that come next, which "_" may divide; nothing when there are none.
  std::string digits() {
    std::string digits;
    while (!rest_.empty()) {
      if (platform::is_digit(rest_.front())) {
        digits += rest_.front();
      } else if (rest_.front() != '_' || digits.empty() || rest_.size() < 2 ||
                 !platform::is_digit(rest_[1])) {
        break;
      }
      rest_.remove_prefix(1);
    }
    return digits;
  }

 private:
  std::string_view rest_;
};

// Nothing when there are too many digits.
std::optional<Wide> number_of(std::string_view digits) {
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() > most_digits) return std::nullopt;
  return platform::number_of_digits<Wide>(digits);
}

Result<Fraction> reduced(Wide numerator, Wide denominator) {
  Wide a = numerator;
  Wide b = denominator;
  while (b != 0) {
    const Wide rest = a % b;
    a = b;
    b = rest;
  }
  numerator /= a;
  denominator /= a;
  if (numerator > Fraction::most || denominator > Fraction::most) return Refusal{too_exact};
  return Fraction{static_cast<std::uint64_t>(numerator), static_cast<std::uint64_t>(denominator)};
}

// An exponent as written after its "e"; nothing when there is none. Beyond a thousand, whatever its
// value, nothing but zero is a number that can be taken.
std::optional<int> read_exponent(Scan& scan) {
  constexpr Wide far = 1000;
  const bool is_negative = scan.take("-");
  if (!is_negative) scan.take("+");
  const std::string digits = scan.digits();
  if (digits.empty()) return std::nullopt;
  const int size = static_cast<int>(std::min(number_of(digits).value_or(far), far));
  return is_negative ? -size : size;
}

}  // namespace

Result<Fraction> parse_fraction(std::string_view text) {
  Scan scan(text);
  if (scan.take("-")) return Refusal{"it is below 0"};
  scan.take("+");
  std::string digits = scan.digits();
  if (digits.empty()) return Refusal{not_a_number};

  if (scan.take("/")) {
    const std::optional<Wide> numerator = number_of(digits);
    const std::string below = scan.digits();
    if (below.empty() || !scan.is_at_end()) return Refusal{not_a_number};
    const std::optional<Wide> denominator = number_of(below);
    if (!numerator || !denominator) return Refusal{too_exact};
    if (*denominator == 0) return Refusal{"it is divided by 0"};
    return reduced(*numerator, *denominator);
  }

  int exponent = 0;
  if (scan.take(".")) {
    const std::string decimals = scan.digits();
    if (decimals.empty()) return Refusal{not_a_number};
    // Zeros at the end say nothing. When all are zeros, nothing is found, and nothing is kept.
    const std::size_t kept = decimals.find_last_not_of('0') + 1;
    if (kept > most_digits) return Refusal{too_exact};
    digits.append(decimals, 0, kept);
    exponent = -static_cast<int>(kept);
  }
  if (scan.take("eE")) {
    const std::optional<int> written = read_exponent(scan);
    if (!written) return Refusal{not_a_number};
    exponent += *written;
  }
  if (!scan.is_at_end()) return Refusal{not_a_number};

  const std::optional<Wide> number = number_of(digits);
  if (!number) return Refusal{too_exact};
  if (*number == 0) return Fraction{};
  if (std::abs(exponent) > most_digits) return Refusal{too_exact};
  const Wide power = platform::power_of_ten<Wide>(std::abs(exponent));
  if (exponent <= 0) return reduced(*number, power);
  if (*number > Fraction::most / power) return Refusal{too_exact};
  return reduced(*number * power, 1);
}

Result<Fraction> parse_share(std::string_view text) {
  Result<Fraction> share = parse_fraction(text);
  if (share && share->numerator > share->denominator) return Refusal{"it is above 1"};
  return share;
}

}  // namespace korvex::ways
