#include "host/sources/knowledge.h"

#include <algorithm>

namespace korvex::sources {
namespace {

// Things that follow, and among how many records.
class Reached {
 public:
  std::uint64_t records(const Thing& thing) const {
    const auto found = find(thing);
    return found == things_.end() ? 0 : found->second;
  }

  // Whether that is more than was reached before.
  bool raise(const Thing& thing, std::uint64_t records) {
    if (records <= this->records(thing)) return false;
    const auto found = find(thing);
    if (found == things_.end()) {
      things_.emplace_back(thing, records);
    } else {
      things_[static_cast<std::size_t>(found - things_.begin())].second = records;
    }
    return true;
  }

 private:
  using Things = std::vector<std::pair<Thing, std::uint64_t>>;

  Things::const_iterator find(const Thing& thing) const {
    return std::find_if(things_.begin(), things_.end(),
                        [&](const auto& reached) { return reached.first == thing; });
  }

  Things things_;
};

}  // namespace

void Knowledge::add(std::vector<Thing> from, Thing to, std::uint64_t records) {
  rules_.push_back({std::move(from), to, records});
}

// Each pass applies all rules, until none reaches further. What a thing is reached with is the
// number of some rule, so that this ends.
std::uint64_t Knowledge::records_where(const std::vector<Thing>& known, Thing wanted) const {
  Reached reached;
  for (const Thing& thing : known) reached.raise(thing, endless);
  for (bool is_further = true; is_further;) {
    is_further = false;
    for (const Rule& rule : rules_) {
      std::uint64_t records = rule.records;
      for (const Thing& thing : rule.from) records = std::min(records, reached.records(thing));
      is_further = reached.raise(rule.to, records) || is_further;
    }
  }
  return reached.records(wanted);
}

}  // namespace korvex::sources
