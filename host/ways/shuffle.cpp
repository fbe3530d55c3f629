#include "host/ways/shuffle.h"

#include "host/ways/numbers.h"

namespace korvex::ways {

Result<JointShuffle> JointShuffle::make(KeyFor<Use::joint> key,
                                        std::span<const std::uint64_t> periods) {
  std::vector<Part> parts;
  std::uint64_t combinations = 1;
  for (const std::uint64_t period : periods) {
    parts.push_back({combinations, period});
    const Wide product = Wide{combinations} * period;
    if (product > most_indices) {
      return Refusal{"there are more than 9,223,372,036,854,775,808 combinations of their values"};
    }
    combinations = static_cast<std::uint64_t>(product);
  }
  return JointShuffle(key, std::move(parts), combinations);
}

std::uint64_t JointShuffle::at(std::uint64_t record, std::size_t item) {
  if (latest_record_ != record) {
    latest_combination_ = shuffle_.at(record);
    latest_record_ = record;
  }
  return parts_[item].of(latest_combination_);
}

void JointShuffle::take(std::span<std::uint64_t> records, std::size_t item) {
  shuffle_.take(records);
  for (std::uint64_t& record : records) record = parts_[item].of(record);
}

}  // namespace korvex::ways
