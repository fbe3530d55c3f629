#include "run/progress.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr std::int64_t small_run = 10;
constexpr std::int64_t small_margin = 3;
constexpr double margin_factor = 1.1;

}  // namespace

std::int64_t percentage_denominator(std::int64_t records, bool leaves_margin) {
  if (!leaves_margin) return records;
  return records >= small_run
             ? static_cast<std::int64_t>(static_cast<double>(records) * margin_factor)
             : records + small_margin;
}

ProgressMeter::ProgressMeter(platform::ProgressSink& sink, std::int64_t denominator)
    : sink_(sink), denominator_(denominator) {}

int ProgressMeter::percentage(std::int64_t done) const {
  return static_cast<int>(static_cast<double>(done) / static_cast<double>(denominator_) * 100);
}

void ProgressMeter::show(std::int64_t done) {
  const int percent = percentage(done);
  if (percent > shown_) {
    shown_ = percent;
    sink_.show(percent);
  }
  // One record early, because the division may round either way.
  next_ = std::max(done + 1, denominator_ * (percent + 1) / 100 - 1);
}

void ProgressMeter::finish(std::int64_t done) {
  if (denominator_ == 0 || percentage(done) != 100) sink_.show(100);
}

}  // namespace korvex
