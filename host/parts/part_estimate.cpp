#include "host/parts/part_estimate.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "host/parts/file_comparison.h"

namespace korvex::host {

namespace {

constexpr std::uint64_t measured_places = 16;
constexpr RecordCount measured_records(1000);

// Records that were not measured may be longer.
constexpr double margin = 1.1;

}  // namespace

PartEstimate::PartEstimate(PreparedLayout& prepared, const OutputForm& form)
    : stream_(stream_of(prepared, form)), records_(prepared.layout().records) {
  std::uint64_t measured = 0;
  std::uint64_t bytes = 0;
  const auto begin = std::chrono::steady_clock::now();
  for (std::uint64_t place = 1; place <= measured_places; ++place) {
    RecordRange range = records_of({place, measured_places}, records_);
    range.end = std::min(range.end, range.first + measured_records);
    measured += range.size().number();
    bytes += size_of(*stream_, {range, false});
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  if (measured == 0) return;
  const double share = static_cast<double>(records_.number()) / static_cast<double>(measured);
  seconds_ = time.count() * share;
  bytes_ = static_cast<ByteCount>(std::ceil(static_cast<double>(bytes) * share));
  const auto size = stream_->size(all_of(records_));
  is_exact_ = size.has_value();
  if (size) bytes_ = *size;
}

ByteCount PartEstimate::size_before(RecordNumber record) const {
  return stream_->size({{}, record}).value_or(0);
}

ByteCount PartEstimate::largest_part(std::uint64_t parts) const {
  if (!is_exact_) {
    return static_cast<ByteCount>(
        std::ceil(margin * static_cast<double>(bytes_) / static_cast<double>(parts)));
  }
  ByteCount largest = 0;
  ByteCount before = 0;
  for (std::uint64_t number = 1; number <= parts; ++number) {
    const ByteCount end = size_before(records_of({number, parts}, records_).end);
    largest = std::max(largest, end - before);
    before = end;
  }
  return largest;
}

double PartEstimate::seconds(std::uint64_t parts) const {
  return seconds_ / static_cast<double>(parts);
}

std::uint64_t PartEstimate::parts_below(std::uint64_t bytes, std::uint64_t most) const {
  const ByteCount fewest = (bytes_ + bytes - 1) / bytes;
  if (fewest > most) return most + 1;
  std::uint64_t parts = std::max<std::uint64_t>(1, static_cast<std::uint64_t>(fewest));
  // Parts differ in size; a few more make all of them small enough.
  constexpr std::uint64_t step = 64;
  while (parts <= most && largest_part(parts) > bytes)
    parts += std::max(parts / step, std::uint64_t{1});
  return parts;
}

}  // namespace korvex::host
