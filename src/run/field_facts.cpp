#include "run/field_facts.h"

#include <algorithm>

namespace korvex {

namespace {

std::uint64_t held_bytes(const ItemFacts& values, Steps hold, Steps records) {
  const Steps whole = records / hold;
  const std::uint64_t before = values.bytes_of_cycles(whole);
  const Steps rest = records % hold;
  return rest == 0 ? before * hold
                   : before * hold + rest * (values.bytes_of_cycles(whole + 1) - before);
}

}  // namespace

std::optional<std::uint64_t> FieldFacts::bytes(Steps records) const {
  if (!values) return std::nullopt;
  const Steps repeated = is_repeated ? std::min(records, repeats_end) : 0;
  const Steps after = is_repeated && values->runs_empty ? 0 : records - repeated;
  return records * frame_bytes + held_bytes(*values, hold, repeated) + values->bytes(after);
}

}  // namespace korvex
