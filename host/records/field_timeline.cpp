#include "host/records/field_timeline.h"

#include <algorithm>

namespace korvex::host {

namespace {

// The bytes of the first texts of one cycle.
std::uint64_t bytes_of_cycle(const ItemSequence& sequence, std::uint64_t count) {
  std::uint64_t bytes = 0;
  for (const TextRun& run : sequence.texts) {
    const std::uint64_t taken = std::min(run.count, count);
    bytes += taken * run.bytes;
    count -= taken;
    if (count == 0) break;
  }
  return bytes;
}

// The bytes of the first texts of a sequence that starts again at its end.
std::uint64_t bytes_of_cycles(const ItemSequence& sequence, std::uint64_t count) {
  const std::uint64_t cycles = count / sequence.end;
  const std::uint64_t whole = cycles == 0 ? 0 : bytes_of_cycle(sequence, sequence.end);
  return cycles * whole + bytes_of_cycle(sequence, count % sequence.end);
}

std::uint64_t text_bytes(const ItemSequence& sequence, std::uint64_t records) {
  return sequence.runs_empty ? bytes_of_cycle(sequence, std::min(records, sequence.end))
                             : bytes_of_cycles(sequence, records);
}

std::uint64_t held_bytes(const ItemSequence& sequence, std::uint64_t hold, std::uint64_t records) {
  const std::uint64_t whole = records / hold;
  const std::uint64_t before = bytes_of_cycles(sequence, whole);
  const std::uint64_t rest = records % hold;
  return rest == 0 ? before * hold
                   : before * hold + rest * (bytes_of_cycles(sequence, whole + 1) - before);
}

}  // namespace

std::optional<std::uint64_t> FieldTimeline::bytes(std::uint64_t records) const {
  if (!sequence) return std::nullopt;
  const std::uint64_t repeated = is_repeated ? std::min(records, repeats_end) : 0;
  const std::uint64_t behind = is_repeated && sequence->runs_empty ? 0 : records - repeated;
  return records * frame_bytes + held_bytes(*sequence, hold, repeated) +
         text_bytes(*sequence, behind);
}

bool nest_repeats(const std::vector<FieldTimeline*>& repeated) {
  const bool all_known = std::all_of(repeated.begin(), repeated.end(),
                                     [](const auto* field) { return field->sequence.has_value(); });
  if (repeated.empty()) return true;
  // An innermost item of one value finishes its level with every record; the levels around it then
  // no longer wait for it.
  if (!all_known || (repeated.size() > 1 && repeated.back()->sequence->end == 1)) return false;
  std::uint64_t block = 1;
  for (auto place = repeated.rbegin(); place != repeated.rend(); ++place) {
    FieldTimeline& field = **place;
    field.hold = block;
    block = product(block, product(field.rounds, field.sequence->end));
  }
  for (FieldTimeline* field : repeated) field->repeats_end = block;
  return true;
}

}  // namespace korvex::host
