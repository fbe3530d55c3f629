#include "host/sources/scale.h"

#include "host/sources/decimal.h"

namespace korvex::sources {
namespace {

class NumberScale : public Scale {
 public:
  explicit NumberScale(unsigned decimals) : decimals_(decimals) {}

  ScaleKind kind() const override { return ScaleKind::number; }

  std::optional<std::int64_t> read(std::string_view text) const override {
    const std::optional<Decimal> number = Decimal::parse(text);
    if (!number) return std::nullopt;
    return number->in_units(decimals_);
  }

  bool append(std::int64_t number, std::string& out) const override {
    Decimal::of_units(number, decimals_).append(out);
    return true;
  }

 private:
  unsigned decimals_;
};

}  // namespace

std::unique_ptr<Scale> number_scale(unsigned decimals) {
  return std::make_unique<NumberScale>(decimals);
}

}  // namespace korvex::sources
