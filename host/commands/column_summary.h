#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/records/moment_form.h"
#include "values/attributes.h"

namespace korvex::host {

// One bar of a small picture: from 0 to 1 of its height.
struct Bar {
  double height = 0;
  std::string label;
};

// What the values of a column have in common, of as many as are added. Keeps each different value.
class ColumnSummary {
 public:
  explicit ColumnSummary(Attribute attribute)
      : is_numeric_(is_numeric(attribute)), form_(moment_form(attribute)) {}

  // In UTF-8, a moment as databases read it; an empty one is none.
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
  bool has_scale() const { return is_numeric_ || form_ != MomentForm::as_it_is; }
  std::optional<double> place_of(std::string_view text) const;
  std::vector<Bar> along_scale() const;
  std::vector<Bar> by_frequency() const;

  bool is_numeric_;
  MomentForm form_;
  std::uint64_t records_ = 0;
  std::uint64_t empty_ = 0;
  std::map<std::string, std::uint64_t, std::less<>> counts_;
};

}  // namespace korvex::host
