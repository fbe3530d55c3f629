#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

#include "host/layout/layout.h"
#include "host/records/value_rule.h"
#include "host/sources/field.h"

namespace korvex::host {

// How much is done to find values that don't fit before the first record is written.
enum class Trial {
  begin,     // the first records are made: what does not fit is most often wrong from the start
  thorough,  // unless it is known that all fit, many are
};

// An item that may have values that do not fit, in records that were not tried.
struct UntoldFit {
  std::string layout;  // its file
  std::string item;

  auto operator<=>(const UntoldFit&) const = default;
};

// Finds out whether the values of an item can all be made and fit it. A hidden item takes whatever
// can be made. What it is made of must outlive it.
class ValueTrial {
 public:
  ValueTrial(const LayoutItem& item, const Layout& layout, sources::Field& field, Trial trial);

  // Makes records until one has a value that does not fit, unless it is known that all do: says
  // which, and what is wrong.
  std::optional<std::string> find_misfit();

  // Once no misfit was found: whether there is none for certain.
  bool all_fit() const { return all_fit_; }

  // Tells the field what follows for its texts, to be called when all fit.
  void tell_limits();

 private:
  std::uint64_t records_tried() const;
  std::optional<std::string> fault_of_reached_end() const;

  const LayoutItem& item_;
  const Layout& layout_;
  sources::Field& field_;
  Trial trial_;
  std::optional<ValueRule> rule_;
  bool all_fit_ = false;
};

}  // namespace korvex::host
