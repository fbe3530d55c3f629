#include "host/records/engine_uniqueness.h"

#include <algorithm>

namespace korvex::host {

namespace {

// Items that all go on from their start in the same record. Two records are the same when every
// item that runs empty has done so before both, and the others are at the same place.
class SideBySide {
 public:
  void add(const ItemFacts& item) {
    const bool ends_empty = item.runs_empty && item.has_end();
    const bool is_exact = item.is_injective();
    longest_ = std::max(longest_, item.different + (ends_empty && is_exact ? 1 : 0));
    if (ends_empty) {
      all_empty_ = std::max(all_empty_, item.end);
      if (is_exact) certainly_empty_ = std::max(certainly_empty_, item.end);
      return;
    }
    all_periods_ = common_multiple(all_periods_, item.period.value_or(endless));
    if (is_exact) certain_periods_ = common_multiple(certain_periods_, *item.period);
  }

  bool has_periods_only() const { return all_empty_ == 0; }

  Uniqueness result() const {
    return {std::max(longest_, sum(certainly_empty_, certain_periods_)),
            sum(all_empty_, all_periods_)};
  }

 private:
  std::uint64_t longest_ = 1;
  std::uint64_t all_empty_ = 0;
  std::uint64_t certainly_empty_ = 0;
  std::uint64_t all_periods_ = 1;
  std::uint64_t certain_periods_ = 1;
};

// A repeat that leaves the records of the set as they are when it turns.
struct HiddenTurn {
  std::uint64_t step = endless;  // records
  std::uint64_t times = 0;       // how often in a row
};

// Walks from the innermost level outwards: the records of the set are all different up to the first
// level that turns unseen, because the set lacks it or shows the same values again.
HiddenTurn find_turn(const std::vector<const FieldFacts*>& repeats,
                     const std::vector<const FieldFacts*>& set, bool by_period) {
  for (auto place = repeats.rbegin(); place != repeats.rend(); ++place) {
    const FieldFacts& field = **place;
    const ItemFacts& item = *field.values;
    const std::uint64_t turns = product(field.rounds, item.end);
    const bool is_in_set = std::find(set.begin(), set.end(), &field) != set.end();
    std::uint64_t seen = 1;
    if (is_in_set) seen = by_period ? item.period.value_or(endless) : item.different;
    if (seen < turns) return {product(seen, field.hold), turns / seen};
  }
  return {};
}

Uniqueness of_repeats(const std::vector<const FieldFacts*>& set,
                      const std::vector<const FieldFacts*>& repeats) {
  // After the repeats the set's items all start again, those that run empty are empty.
  const std::uint64_t end = repeats.front()->repeats_end;
  SideBySide tail_fields;
  bool some_empty = false;
  for (const FieldFacts* field : set) {
    if (!field->is_repeated) continue;
    if (field->values->runs_empty) {
      some_empty = true;
    } else {
      tail_fields.add(*field->values);
    }
  }
  const Uniqueness tail = tail_fields.result();
  Uniqueness result = {find_turn(repeats, set, false).step, find_turn(repeats, set, true).step};
  const std::uint64_t certain_end = some_empty ? sum(end, tail.different) : end;
  const std::uint64_t last = some_empty ? sum(end, tail.repeated) : end;
  if (result.different == endless) result.different = certain_end;
  result.repeated = std::min(result.repeated, last);
  return result;
}

}  // namespace

std::vector<const FieldFacts*> repeated_fields(const std::vector<FieldFacts>& all) {
  std::vector<const FieldFacts*> repeated;
  for (const FieldFacts& field : all) {
    if (field.is_repeated) repeated.push_back(&field);
  }
  std::sort(repeated.begin(), repeated.end(),
            [](const auto* left, const auto* right) { return left->level < right->level; });
  return repeated;
}

Uniqueness uniqueness_of(const std::vector<const FieldFacts*>& set,
                         const std::vector<FieldFacts>& all) {
  const std::vector<const FieldFacts*> all_repeats = repeated_fields(all);
  SideBySide plain;
  bool has_plain = false;
  bool has_repeated = false;
  for (const FieldFacts* field : set) {
    if (!field->values) return {};
    (field->is_repeated ? has_repeated : has_plain) = true;
    if (!field->is_repeated) plain.add(*field->values);
  }
  if (set.size() == 1 && has_plain && set.front()->values->distinct) {
    // One field alone: its first repetition is known exactly.
    const ItemFacts& item = *set.front()->values;
    if (!item.is_injective()) return {item.different, item.different};
  }
  const Uniqueness side_by_side = plain.result();
  if (!has_repeated) return side_by_side;
  const Uniqueness nested = of_repeats(set, all_repeats);
  if (!has_plain) return nested;
  Uniqueness both = {std::max(side_by_side.different, nested.different), endless};
  // A turn that the repeats hide may come together with the plain items' return to their start.
  const HiddenTurn turn = find_turn(all_repeats, set, true);
  if (turn.step != endless && plain.has_periods_only()) {
    const std::uint64_t meeting = common_multiple(side_by_side.repeated, turn.step);
    if (meeting != endless && meeting / turn.step < turn.times) both.repeated = meeting;
  }
  return both;
}

}  // namespace korvex::host
