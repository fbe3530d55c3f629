#include <cassert>
#include <utility>

#include "host/sources/record_sources.h"
#include "host/sources/saturating.h"
#include "host/ways/draw.h"
#include "platform/printable_text.h"

namespace korvex::sources {
namespace {

class OffsetSource : public Source {
 public:
  OffsetSource(Field& of, std::unique_ptr<Scale> scale, ways::Key key, Distance distance)
      : of_(of), scale_(std::move(scale)), key_(key), distance_(distance) {
    assert(distance.least <= distance.most);
  }

  void append(std::uint64_t record, std::string& out) override {
    const std::optional<std::string_view> text = of_.text(record);
    if (!text) return;
    if (!append_sum(*text, ways::draw_between(key_, record, distance_.least, distance_.most),
                    out)) {
      throw BadValue("nothing can be added to the value \"" + platform::printable(*text) +
                     "\" of the other item, or the sum is too large");
    }
  }

  std::optional<std::uint64_t> period() const override { return std::nullopt; }

  TextShape shape() const override {
    const TextShape of = of_.shape();
    const TextShape unknown = {.never_empty = of.never_empty, .size = {}};
    if (!of.always_made || !of.extremes || of.extremes->scale != scale_->kind()) return unknown;
    Extremes sums = {.scale = scale_->kind()};
    // A clock goes round.
    const bool are_known = sums.scale == ScaleKind::time
                               ? scale_->append(0, sums.least) && scale_->append(-1, sums.most)
                               : append_sum(of.extremes->least, distance_.least, sums.least) &&
                                     append_sum(of.extremes->most, distance_.most, sums.most);
    if (!are_known) return unknown;
    TextShape shape = shape_within(std::move(sums));
    shape.never_empty = of.never_empty;
    shape.lookups = of.lookups;
    return shape;
  }

  TextFacts text_facts() const override {
    const TextFacts& of = of_.text_facts();
    TextFacts text_facts;
    text_facts.end = of.end;
    text_facts.gaps = of.gaps;
    text_facts.least_empty = of.least_empty;
    const std::uint64_t others =
        static_cast<std::uint64_t>(distance_.most) - static_cast<std::uint64_t>(distance_.least);
    text_facts.values.most = product(of.values.most, sum(others, 1));
    if (is_fixed()) {
      text_facts.cycle = of.cycle;
      text_facts.follows = of.follows;
    }
    return text_facts;
  }

  std::string course(std::uint64_t) const override {
    return is_fixed() ? "at a distance from another item"
                      : "drawn, at a distance from another item";
  }

  // Two texts of the other field may be one number, so that its text does not even follow from a
  // fixed distance.
  std::string_view doubt() const override {
    return is_fixed() ? "may be the same for several values" : "is drawn between two ends";
  }

 private:
  // False, and nothing is appended, where there is no sum.
  bool append_sum(std::string_view text, std::int64_t number, std::string& out) const {
    const std::optional<std::int64_t> from = scale_->read(text);
    return from && !__builtin_add_overflow(*from, number, &number) && scale_->append(number, out);
  }

  bool is_fixed() const { return distance_.least == distance_.most; }

  Field& of_;
  std::unique_ptr<Scale> scale_;
  ways::Key key_;
  Distance distance_;
};

}  // namespace

std::unique_ptr<Source> make_offset_source(Field& of, std::unique_ptr<Scale> scale,
                                           ways::KeyFor<ways::Use::order> key, Distance distance) {
  return std::make_unique<OffsetSource>(of, std::move(scale), key, distance);
}

}  // namespace korvex::sources
