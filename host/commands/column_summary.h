#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// How the values of a column are compared and drawn.
enum class ColumnScale { texts, numbers, moments };

// One bar of a small picture: from 0 to 1 of its height.
struct Bar {
  double height = 0;
  std::string label;
};

// What the values of a column have in common, of as many as are added. Keeps each different value.
class ColumnSummary {
 public:
  explicit ColumnSummary(ColumnScale scale) : scale_(scale) {}

  // In UTF-8; an empty one is none.
  void add(std::string_view value);

  std::uint64_t records() const { return records_; }
  std::uint64_t empty() const { return empty_; }
  std::size_t different() const { return counts_.size(); }
  std::string smallest() const;
  std::string largest() const;

  // Numbers and moments along their scale; texts by how often each comes, the most frequent first.
  std::vector<Bar> picture() const;

 private:
  bool is_less(const std::string& left, const std::string& right) const;
  std::vector<Bar> along_scale() const;
  std::vector<Bar> by_frequency() const;

  ColumnScale scale_;
  std::uint64_t records_ = 0;
  std::uint64_t empty_ = 0;
  std::map<std::string, std::uint64_t, std::less<>> counts_;
};

}  // namespace korvex::host
