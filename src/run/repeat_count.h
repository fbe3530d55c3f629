#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "control/col_main.h"
#include "platform/runtime_class.h"

namespace korvex {

// What the settings will produce, as far as it can be said in advance.
struct RepeatCount {
  std::uint64_t data_items = 0;
  std::uint64_t predicted_bytes = 0;  // too_large when it passes the file size limit
};

inline constexpr std::uint64_t too_large = ~std::uint64_t{0};

// Answers how many values the value list of an item's settings has, or the code of what is
// wrong with it.
using EnumerationCounter = std::function<Result<std::size_t>(ClColMain&, const FmtColRec&)>;

// Reads the file.
Result<std::size_t> count_enumeration(ClColMain& main, const FmtColRec& settings);

// Computes how many records the settings give and how large the file will be, for a control file
// that is loaded and reconciled. `repeats_only` counts the repeated items alone. -6 when no
// item has settings, or none is repeated where only these count.
Result<RepeatCount> count_data_items(ClColMain& main, bool repeats_only,
                                     const EnumerationCounter& counter = count_enumeration);

// The same from the control file at main.control_path on. Nothing when that, or its settings,
// cannot be evaluated; what has nothing to count is counted as none.
std::optional<RepeatCount> count_control_file(ClColMain& main, bool repeats_only);

// The count for a host that only wants to know whether the repeat settings can be evaluated.
class ClRepeatCalcMain : public platform::Object {
 public:
  // Set main.control_path before. Whether the count was computed.
  bool run();

  ClColMain main;
  std::uint64_t data_items = 0;
};

inline const platform::RuntimeClass<ClRepeatCalcMain> repeat_calc_main_class("ClRepeatCalcMain");

}  // namespace korvex
