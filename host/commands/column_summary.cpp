#include "host/commands/column_summary.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

namespace korvex::host {

namespace {

constexpr std::size_t most_bars = 24;
constexpr double seconds_a_day = 86400;

// A moment that is not in the calendar has a place beside those that are.
double place_of_moment(const MomentNumbers& moment) {
  const std::chrono::sys_days days = std::chrono::year(moment.year) /
                                     std::chrono::month(moment.month) /
                                     std::chrono::day(moment.day);
  const double date = static_cast<double>(days.time_since_epoch().count()) * seconds_a_day;
  return date + (moment.hour * 60 + moment.minute) * 60 + moment.second;
}

std::optional<double> number_of(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

std::optional<double> ColumnSummary::place_of(std::string_view text) const {
  if (is_numeric_) return number_of(text);
  const auto moment = moment_numbers(form_, text);
  return moment ? std::optional(place_of_moment(*moment)) : std::nullopt;
}

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
  if (!is_numeric_) return left < right;
  return place_of(left).value_or(0) < place_of(right).value_or(0);
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
  if (has_scale()) bars = along_scale();
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
    const auto place = place_of(text);
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
