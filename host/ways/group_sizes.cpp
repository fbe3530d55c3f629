#include "host/ways/group_sizes.h"

#include <algorithm>
#include <cassert>
#include <string>

namespace korvex::ways {
namespace {

constexpr std::uint64_t block_parents = 1024;

// Keeps the order of a table apart from the orders of blocks, whose round is their number.
constexpr std::uint64_t table_round = ~std::uint64_t{0};

std::string text(Wide number) {
  std::string digits;
  do digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(number % 10)));
  while ((number /= 10) != 0);
  for (std::size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, ",");
  return digits;
}

}  // namespace

Result<GroupSizes> GroupSizes::make(KeyFor<Use::each> key, std::uint64_t records,
                                    std::uint64_t parents, const GroupBounds& bounds) {
  assert(records <= most_records && parents <= most_records);
  if (bounds.least > bounds.most) {
    return Refusal{"the least, " + text(bounds.least) + ", is above the most, " +
                   text(bounds.most)};
  }
  const Wide least = Wide{bounds.least} * parents;
  const Wide most = Wide{bounds.most} * parents;
  if (records < least) {
    return Refusal{text(parents) + " parents with at least " + text(bounds.least) +
                   " records each need " + text(least) + " records, but there are " +
                   text(records)};
  }
  if (records > most) {
    return Refusal{text(parents) + " parents with at most " + text(bounds.most) +
                   " records each take " + text(most) + " records, but there are " + text(records)};
  }
  return GroupSizes(key, records, parents, bounds);
}

GroupSizes::GroupSizes(KeyFor<Use::each> key, std::uint64_t records, std::uint64_t parents,
                       const GroupBounds& bounds)
    : key_(key),
      records_(records),
      parents_(parents),
      most_(std::min(bounds.most, records)),
      blocks_(std::max<std::uint64_t>(1, parents / block_parents)),
      least_block_parents_(parents / blocks_),
      keeps_order_(bounds.keeps_order),
      orders_(key) {
  for (std::uint64_t i = 0; i < tables_.size(); ++i) {
    const std::uint64_t block_size = least_block_parents_ + i;
    if (block_size == 0 || block_size > parents) continue;
    // A block's first record is a multiple of a fraction, rounded down, so that the number of its
    // records takes at most the two values next to its exact part.
    const Wide part = Wide{records} * block_size / parents;
    for (std::uint64_t j = 0; j < tables_[i].size(); ++j) {
      const Wide block_records = part + j;
      if (block_records > Wide{most_} * block_size) continue;
      tables_[i][j] =
          make_table(bounds, block_size, static_cast<std::uint64_t>(block_records), 2 * i + j);
    }
  }
}

GroupSizes::Sums GroupSizes::make_table(const GroupBounds& bounds, std::uint64_t parents,
                                        std::uint64_t records, std::uint64_t number) const {
  const std::uint64_t width = most_ - bounds.least;
  const std::vector<std::uint64_t> extra =
      spread_extra(bounds.shape, bounds.skew, parents, records - bounds.least * parents, width);
  const Permutation order(key_, parents, {.round = table_round, .parent = number});
  Sums sums{0};
  for (std::uint64_t slot = 0; slot < parents; ++slot) {
    sums.push_back(sums.back() + bounds.least + extra[order.at(slot)]);
  }
  return sums;
}

// Every block has one of these tables. A single one has the first.
template <class Take>
void GroupSizes::for_each_table(Take take) const {
  for (const std::array<Sums, 2>& tables : tables_) {
    for (const Sums& sums : tables) {
      if (sums.size() > 1) take(sums);
      if (blocks_ == 1) return;
    }
  }
}

Count GroupSizes::largest() const {
  if (records_ == 0) return {0, 0};
  Count largest = {records_, 0};
  for_each_table([&](const Sums& sums) {
    std::uint64_t most = 0;
    for (std::size_t i = 1; i < sums.size(); ++i) most = std::max(most, sums[i] - sums[i - 1]);
    largest = {std::min(largest.least, most), std::max(largest.most, most)};
  });
  return largest;
}

Count GroupSizes::parents_with_records() const {
  if (records_ == 0) return {0, 0};
  Count parents = {parents_, 0};
  bool has_all = true;
  for_each_table([&](const Sums& sums) {
    std::uint64_t with_records = 0;
    for (std::size_t i = 1; i < sums.size(); ++i) with_records += sums[i] > sums[i - 1];
    has_all = has_all && with_records + 1 == sums.size();
    parents = {std::min(parents.least, with_records), std::max(parents.most, with_records)};
  });
  if (has_all) return {parents_, parents_};
  return {parents.least * blocks_, std::min({parents.most * blocks_, parents_, records_})};
}

std::uint64_t GroupSizes::first_parent_of(std::uint64_t block) const {
  return static_cast<std::uint64_t>(Wide{block} * parents_ / blocks_);
}

// Of those that begin a block. Where each has at least some records, these are whole numbers, so
// that rounding leaves each block as many.
std::uint64_t GroupSizes::records_before(std::uint64_t parent) const {
  return static_cast<std::uint64_t>(Wide{parent} * records_ / parents_);
}

// The last block that begins no later than with that parent.
std::uint64_t GroupSizes::block_of(std::uint64_t parent) const {
  return static_cast<std::uint64_t>(((Wide{parent} + 1) * blocks_ - 1) / parents_);
}

GroupSizes::Block GroupSizes::block(std::uint64_t number) const {
  const std::uint64_t first_parent = first_parent_of(number);
  const std::uint64_t end_parent = first_parent_of(number + 1);
  const std::uint64_t parents = end_parent - first_parent;
  const std::uint64_t first_record = records_before(first_parent);
  const std::uint64_t records = records_before(end_parent) - first_record;
  const bool has_more_parents = parents > least_block_parents_;
  return {.number = number,
          .first_parent = first_parent,
          .parents = parents,
          .first_record = first_record,
          .records = records,
          .has_more_parents = has_more_parents,
          .has_more_records = tables_[has_more_parents][0].back() != records};
}

// The parent that would have the record if all had the same part of them is in the right block,
// since there these parts and the numbers of blocks add up alike.
GroupSizes::Block GroupSizes::block_with(std::uint64_t record) const {
  return block(
      block_of(static_cast<std::uint64_t>(((Wide{record} + 1) * parents_ - 1) / records_)));
}

// The slot that has the record at a place of the block: the latest or one of the next, or searched
// for among all.
std::uint64_t GroupSizes::slot_with(const Sums& sums, std::uint64_t place) const {
  constexpr std::uint64_t near = 8;
  const std::uint64_t end = std::min<std::uint64_t>(latest_slot_ + near, sums.size() - 1);
  if (latest_slot_ < end && sums[latest_slot_] <= place) {
    for (std::uint64_t slot = latest_slot_; slot < end; ++slot) {
      if (place < sums[slot + 1]) return slot;
    }
  }
  const auto next = std::upper_bound(sums.begin(), sums.end(), place);
  return static_cast<std::uint64_t>(next - sums.begin()) - 1;
}

// Which of all parents has a slot of its block's table.
std::uint64_t GroupSizes::parent_at(const Block& block, std::uint64_t slot) const {
  if (keeps_order_) return block.first_parent + slot;
  return block.first_parent + orders_.of(block.parents, {.round = block.number}).at(slot);
}

std::uint64_t GroupSizes::slot_of(const Block& block, std::uint64_t parent) const {
  const std::uint64_t place = parent - block.first_parent;
  if (keeps_order_) return place;
  return orders_.of(block.parents, {.round = block.number}).place_of(place);
}

Member GroupSizes::member(std::uint64_t record) const {
  assert(record < records_);
  if (record - latest_.first_record >= latest_.records) latest_ = block_with(record);
  const std::uint64_t place = record - latest_.first_record;
  const Sums& sums = sums_of(latest_);
  const std::uint64_t slot = latest_slot_ = slot_with(sums, place);
  return {parent_at(latest_, slot), place - sums[slot], sums[slot + 1] - sums[slot]};
}

Members GroupSizes::members(std::uint64_t parent) const {
  assert(parent < parents_);
  const Block found = block(block_of(parent));
  const std::uint64_t slot = slot_of(found, parent);
  const Sums& sums = sums_of(found);
  return {found.first_record + sums[slot], sums[slot + 1] - sums[slot]};
}

}  // namespace korvex::ways
