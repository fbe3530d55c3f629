#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <map>
#include <string>
#include <tuple>

#include "control/col_main.h"
#include "values/records.h"

namespace korvex {

// Remembers how many values enumeration files have while a dialog is open, so that the count behind
// it need not read them again at each change. A file that was replaced or changed since is read
// again.
class EnumerationCounts {
 public:
  Result<std::int32_t> count(ClColMain& main, const FmtColRec& settings);

  void forget() { known_.clear(); }

 private:
  // The file and what its values are checked against.
  using Key =
      std::tuple<std::string, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t>;
  using Version = std::tuple<dev_t, ino_t, off_t, std::time_t, long>;
  struct Known {
    Version version;
    std::int32_t count = 0;
  };

  std::map<Key, Known> known_;
};

}  // namespace korvex
