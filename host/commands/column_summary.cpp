#include "host/commands/column_summary.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>

namespace korvex::host {

namespace {

constexpr std::size_t most_bars = 24;
constexpr double seconds_a_day = 86400;

template <typename Number>
std::optional<Number> number_at(std::string_view text, std::size_t begin, std::size_t size) {
  if (begin + size > text.size()) return std::nullopt;
  Number number = 0;
  const char* const end = text.data() + begin + size;
  const auto [stop, failure] = std::from_chars(text.data() + begin, end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

// Seconds of "23:59:59" from a place on.
std::optional<double> seconds_at(std::string_view text, std::size_t begin) {
  const auto hours = number_at<int>(text, begin, 2);
  const auto minutes = number_at<int>(text, begin + 3, 2);
  const auto seconds = number_at<int>(text, begin + 6, 2);
  if (!hours || !minutes || !seconds) return std::nullopt;
  return (*hours * 60 + *minutes) * 60 + *seconds;
}

// Where "2024-02-29", "2024-02-29 23:59:59" or "23:59:59" stands in time.
std::optional<double> moment_place(std::string_view text) {
  if (text.size() > 2 && text[2] == ':') return seconds_at(text, 0);
  const auto year = number_at<int>(text, 0, 4);
  const auto month = number_at<unsigned>(text, 5, 2);
  const auto day = number_at<unsigned>(text, 8, 2);
  if (!year || !month || !day) return std::nullopt;
  const std::chrono::sys_days days =
      std::chrono::year(*year) / std::chrono::month(*month) / std::chrono::day(*day);
  const double date = static_cast<double>(days.time_since_epoch().count()) * seconds_a_day;
  return date + seconds_at(text, 11).value_or(0);
}

std::optional<double> place_of(std::string_view text, ColumnScale scale) {
  if (scale == ColumnScale::moments) return moment_place(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  return number_at<double>(text, 0, text.size());
}

}  // namespace

void ColumnSummary::add(std::string_view value) {
  ++records_;
  if (value.empty()) {
    ++empty_;
    return;
  }
  const auto known = counts_.find(value);
  if (known != counts_.end()) {
    ++known->second;
  } else {
    counts_.emplace(value, 1);
  }
}

bool ColumnSummary::is_less(const std::string& left, const std::string& right) const {
  if (scale_ != ColumnScale::numbers) return left < right;
  return place_of(left, scale_).value_or(0) < place_of(right, scale_).value_or(0);
}

std::string ColumnSummary::smallest() const {
  const auto found = std::min_element(
      counts_.begin(), counts_.end(),
      [&](const auto& left, const auto& right) { return is_less(left.first, right.first); });
  return found == counts_.end() ? std::string() : found->first;
}

std::string ColumnSummary::largest() const {
  const auto found = std::max_element(
      counts_.begin(), counts_.end(),
      [&](const auto& left, const auto& right) { return is_less(left.first, right.first); });
  return found == counts_.end() ? std::string() : found->first;
}

std::vector<Bar> ColumnSummary::picture() const {
  if (counts_.empty()) return {};
  std::vector<Bar> bars;
  if (scale_ != ColumnScale::texts) bars = along_scale();
  if (bars.empty()) bars = by_frequency();
  const auto highest = std::max_element(
      bars.begin(), bars.end(),
      [](const Bar& left, const Bar& right) { return left.height < right.height; });
  const double height = highest->height;
  for (Bar& bar : bars) bar.height /= height;
  return bars;
}

// Empty when a value has no place there.
std::vector<Bar> ColumnSummary::along_scale() const {
  std::vector<std::pair<double, std::uint64_t>> places;
  for (const auto& [text, count] : counts_) {
    const auto place = place_of(text, scale_);
    if (!place || !std::isfinite(*place)) return {};
    places.emplace_back(*place, count);
  }
  const auto [first, last] = std::minmax_element(places.begin(), places.end());
  const double begin = first->first;
  const double width = last->first - begin;
  std::vector<Bar> bars(width > 0 ? std::min(most_bars, places.size()) : 1);
  for (const auto& [place, count] : places) {
    const double share = width > 0 ? (place - begin) / width : 0;
    const auto bar = static_cast<std::size_t>(share * static_cast<double>(bars.size()));
    bars[std::min(bar, bars.size() - 1)].height += static_cast<double>(count);
  }
  bars.front().label = smallest();
  bars.back().label = largest();
  return bars;
}

std::vector<Bar> ColumnSummary::by_frequency() const {
  std::vector<Bar> bars;
  for (const auto& [text, count] : counts_) bars.push_back({static_cast<double>(count), text});
  std::stable_sort(bars.begin(), bars.end(),
                   [](const Bar& left, const Bar& right) { return left.height > right.height; });
  if (bars.size() > most_bars) bars.resize(most_bars);
  return bars;
}

}  // namespace korvex::host
