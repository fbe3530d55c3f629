#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/ways/group_shape.h"
#include "host/ways/key.h"
#include "host/ways/numbers.h"
#include "host/ways/refusal.h"
#include "host/ways/shuffle.h"

namespace korvex::ways {

// How records are given to parents: so many to each.
struct GroupBounds {
  std::uint64_t least = 0;
  std::uint64_t most = 0;
  Shape shape = Shape::even;
  Skew skew;
  // Parents have their records in their own order, so that every group comes after those of all
  // parents before its own. All blocks then have their sizes in the order of their table.
  bool keeps_order = false;
};

// A record's parent, its place among that parent's records, from 0, and how many these are.
struct Member {
  std::uint64_t parent = 0;
  std::uint64_t place = 0;
  std::uint64_t count = 0;

  bool operator==(const Member&) const = default;
};

// The records of a parent, which are together.
struct Members {
  std::uint64_t first = 0;  // no record when there are none
  std::uint64_t count = 0;

  bool operator==(const Members&) const = default;
};

// Gives each of some parents a number of records between two bounds, in any shape, so that they
// have all records together, exactly. Every record knows its parent and every parent its records,
// without a look at others: parents are in blocks of at least 1,024, all blocks have nearly the
// same number of records, and the sizes within a block are those of one of four tables, drawn into
// another order for every block. So a billion parents take no more memory (70 KB) than a thousand.
//
// Made in up to 1 ms. A question, by record or by parent, takes some 60 ns; less for records in a
// row, for which the latest answer is kept: so one object is of one thread.
class GroupSizes {
 public:
  // Up to `most_records` of both. Refused when the bounds are in the wrong order, or when there are
  // too few or too many records for them.
  static Result<GroupSizes> make(KeyFor<Use::each> key, std::uint64_t records,
                                 std::uint64_t parents, const GroupBounds& bounds);

  std::uint64_t records() const { return records_; }
  std::uint64_t parents() const { return parents_; }

  // How many records the largest group has, and how many parents have any: exactly, unless there
  // are 2,048 parents or more.
  Count largest() const;
  Count parents_with_records() const;

  // Of a record below their number.
  Member member(std::uint64_t record) const;

  // Of a parent below their number.
  Members members(std::uint64_t parent) const;

 private:
  // The records before each slot of a block, and at the end those of all.
  using Sums = std::vector<std::uint64_t>;

  // One of some parents in a row, and of their records.
  struct Block {
    std::uint64_t number = 0;
    std::uint64_t first_parent = 0;
    std::uint64_t parents = 0;
    std::uint64_t first_record = 0;
    std::uint64_t records = 0;
    bool has_more_parents = false;
    bool has_more_records = false;
  };

  GroupSizes(KeyFor<Use::each> key, std::uint64_t records, std::uint64_t parents,
             const GroupBounds& bounds);

  template <class Take>
  void for_each_table(Take take) const;
  Sums make_table(const GroupBounds& bounds, std::uint64_t parents, std::uint64_t records,
                  std::uint64_t number) const;
  std::uint64_t first_parent_of(std::uint64_t block) const;
  std::uint64_t records_before(std::uint64_t parent) const;
  std::uint64_t block_of(std::uint64_t parent) const;
  Block block(std::uint64_t number) const;
  Block block_with(std::uint64_t record) const;
  const Sums& sums_of(const Block& block) const {
    return tables_[block.has_more_parents][block.has_more_records];
  }
  std::uint64_t slot_with(const Sums& sums, std::uint64_t place) const;
  std::uint64_t parent_at(const Block& block, std::uint64_t slot) const;
  std::uint64_t slot_of(const Block& block, std::uint64_t parent) const;

  KeyFor<Use::each> key_;
  std::uint64_t records_;
  std::uint64_t parents_;
  std::uint64_t most_;
  std::uint64_t blocks_;
  std::uint64_t least_block_parents_;
  bool keeps_order_;
  mutable Orders orders_;  // of the slots of blocks, with that of the latest block
  // For the smaller and the larger number of parents of a block, the smaller and the larger number
  // of records.
  std::array<std::array<Sums, 2>, 2> tables_;
  // Of the record that was asked for last: the next one is most often there.
  mutable Block latest_;
  mutable std::uint64_t latest_slot_ = 0;
};

}  // namespace korvex::ways
