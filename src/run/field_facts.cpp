#include "run/field_facts.h"

#include <algorithm>

namespace korvex {

namespace {

ByteCount held_bytes(const ItemFacts& values, Steps hold, Steps records) {
  const Steps whole = records / hold;
  const ByteCount before = values.bytes_of_cycles(whole);
  const Steps rest = records % hold;
  return rest == 0 ? before * hold
                   : before * hold + rest * (values.bytes_of_cycles(whole + 1) - before);
}

}  // namespace

std::optional<ByteCount> FieldFacts::bytes(Steps records) const {
  if (!values) return std::nullopt;
  const Steps repeated = is_repeated ? std::min(records, repeats_end) : 0;
  const Steps after = is_repeated && values->runs_empty ? 0 : records - repeated;
  return ByteCount{records} * frame_bytes + held_bytes(*values, hold, repeated) +
         values->bytes(after);
}

}  // namespace korvex
