#pragma once

#include <cstdint>

#include "host/sources/knowledge.h"
#include "host/ways/group_sizes.h"

namespace korvex::sources {

// Which parent a record belongs to, for all fields that ask it of one key. The group of the record
// that was asked for last is kept: its other records cost nothing. Of one thread.
class Groups {
 public:
  explicit Groups(const ways::GroupSizes& sizes) : sizes_(sizes) {}

  ways::Member member(std::uint64_t record) {
    if (record < first_ || record - first_ >= latest_.count) {
      latest_ = sizes_.member(record);
      first_ = record - latest_.place;
    }
    return {latest_.parent, record - first_, latest_.count};
  }

  const ways::GroupSizes& sizes() const { return sizes_; }

  Thing parent_thing() const { return {this, 0}; }
  Thing line_thing() const { return {this, 1}; }

  // A record is known by its parent and its place among that parent's records.
  void tell(Knowledge& knowledge) const {
    knowledge.add({parent_thing(), line_thing()}, the_record);
    if (sizes_.most() <= 1) knowledge.add({}, line_thing());
  }

 private:
  ways::GroupSizes sizes_;
  ways::Member latest_;
  std::uint64_t first_ = 0;
};

}  // namespace korvex::sources
