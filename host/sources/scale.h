#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::sources {

enum class ScaleKind { number, date, time, timestamp };

// Texts as whole numbers of some unit (days, seconds, hundredths), so that they can be added to.
class Scale {
 public:
  virtual ~Scale() = default;

  virtual ScaleKind kind() const = 0;

  // Nothing for a text that is none of the scale.
  virtual std::optional<std::int64_t> read(std::string_view text) const = 0;

  // False, and nothing is appended, where the scale ends before the number.
  virtual bool append(std::int64_t number, std::string& out) const = 0;
};

// Decimal numbers with so many decimals, up to 18: a text with more is none of the scale.
std::unique_ptr<Scale> number_scale(unsigned decimals);

}  // namespace korvex::sources
