#include "host/ways/group_sizes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/ways/mixing.h"
#include "host/ways/tree.h"

namespace korvex::ways {
namespace {

constexpr KeyFor<Use::each> group_key{{0x0123456789ABCDEF}};

struct Given {
  std::uint64_t records;
  std::uint64_t parents;
  std::uint64_t least;
  std::uint64_t most;
};

const Shape shapes[] = {Shape::constant, Shape::even, Shape::zipf};

// All three shapes, with few and many parents, at both ends of the bounds and between.
TEST(GroupSizes, GiveEveryRecordOnceWithinTheBounds) {
  std::vector<Given> cases = {{3, 1, 0, 5}, {0, 10, 0, 3}, {7, 5000, 0, 1'000'000}};
  for (const std::uint64_t parents : {1U, 2U, 17U, 1023U, 2047U, 2048U, 5000U}) {
    for (const std::uint64_t extra : {0U, 1U, 20U, 35U, 50U, 69U, 70U}) {
      cases.push_back({parents * 2 + parents * extra / 10, parents, 2, 9});
    }
  }
  for (const Given& given : cases) {
    for (const Shape shape : shapes) {
      const Result<GroupSizes> made = GroupSizes::make(group_key, given.records, given.parents,
                                                       {given.least, given.most, shape, {}});
      ASSERT_TRUE(made);
      std::vector<bool> taken(given.records);
      std::uint64_t largest = 0;
      std::uint64_t with_records = 0;
      for (std::uint64_t parent = 0; parent < given.parents; ++parent) {
        const Members members = made->members(parent);
        ASSERT_GE(members.count, given.least);
        ASSERT_LE(members.count, given.most);
        largest = std::max(largest, members.count);
        with_records += members.count > 0;
        for (std::uint64_t place = 0; place < members.count; ++place) {
          const std::uint64_t record = members.first + place;
          ASSERT_LT(record, given.records);
          ASSERT_FALSE(taken[record]);
          taken[record] = true;
          ASSERT_EQ(made->member(record), (Member{parent, place, members.count}));
        }
      }
      EXPECT_EQ(std::count(taken.begin(), taken.end(), true), given.records);
      for (const auto& [told, number] :
           {std::pair(made->largest(), largest), {made->parents_with_records(), with_records}}) {
        EXPECT_LE(told.least, number);
        EXPECT_GE(told.most, number);
        EXPECT_TRUE(told.is_exact() || given.parents >= 2048);
      }
    }
  }
}

TEST(GroupSizes, AreFoundAmongABillionParentsAndMore) {
  const Given cases[] = {
      {2'500'000'000, 1'000'000'000, 0, 7}, {1'000, 1'000'000'000, 0, 2},
      {most_records, most_records, 1, 1},   {most_records, most_records - 1, 0, most_records},
      {most_records, 3, 0, most_records},   {most_records - 1, most_records / 2, 1, 3}};
  for (const Given& given : cases) {
    for (const Shape shape : shapes) {
      const Result<GroupSizes> made = GroupSizes::make(group_key, given.records, given.parents,
                                                       {given.least, given.most, shape, {}});
      ASSERT_TRUE(made);
      for (std::uint64_t i = 0; i < 2000; ++i) {
        const std::uint64_t drawn = absorb(given.parents, i) % given.records;
        const std::uint64_t record = i < 500 ? i : i < 1000 ? given.records - 1000 + i : drawn;
        const Member member = made->member(record);
        ASSERT_LT(member.parent, given.parents);
        const Members members = made->members(member.parent);
        ASSERT_EQ(members.first + member.place, record);
        ASSERT_LT(member.place, members.count);
        ASSERT_LE(members.count, given.most);
      }
      // The neighbour's records end where these begin, so that none is lost between blocks.
      std::uint64_t sum = 0;
      for (std::uint64_t parent = 0; parent < 1024 && parent < given.parents; ++parent) {
        sum += made->members(parent).count;
      }
      if (sum > 0 && sum < given.records) {
        EXPECT_EQ(made->member(sum).place, 0);
      }
    }
  }
}

std::map<std::uint64_t, std::uint64_t> frequencies(Shape shape, const Given& given) {
  const Result<GroupSizes> made = GroupSizes::make(group_key, given.records, given.parents,
                                                   {given.least, given.most, shape, {}});
  std::map<std::uint64_t, std::uint64_t> counts;
  for (std::uint64_t parent = 0; parent < given.parents; ++parent) {
    ++counts[made->members(parent).count];
  }
  return counts;
}

TEST(GroupSizes, HaveTheirShape) {
  const Given given = {35'000, 10'000, 0, 7};
  EXPECT_EQ(frequencies(Shape::constant, given),
            (std::map<std::uint64_t, std::uint64_t>{{3, 5000}, {4, 5000}}));
  for (const auto& [size, count] : frequencies(Shape::even, given)) {
    EXPECT_NEAR(static_cast<double>(count), size % 7 == 0 ? 714 : 1429, 60) << size;
  }
  // As far to both sides of the mean as the nearer bound is.
  EXPECT_EQ(frequencies(Shape::even, {60'000, 10'000, 0, 7}).begin()->first, 5);
  EXPECT_EQ(frequencies(Shape::even, {10'000, 10'000, 0, 7}).rbegin()->first, 2);
  // A few parents have most, and all numbers of records occur.
  const auto zipf = frequencies(Shape::zipf, {30'000, 10'000, 0, 1000});
  EXPECT_GT(zipf.rbegin()->first, 300);
  EXPECT_GT(zipf.at(0) + zipf.at(1), 6000);
  EXPECT_GT(zipf.size(), 20);
  // Where a bound is in the way, sizes fall from there on.
  const auto bound = frequencies(Shape::zipf, {50'000, 10'000, 0, 40});
  EXPECT_GT(bound.rbegin()->first, 38);
  EXPECT_LT(bound.rbegin()->second, bound.at(20));
}

TEST(GroupSizes, FollowEachOtherWithoutAPattern) {
  const Result<GroupSizes> made =
      GroupSizes::make(group_key, 3'500'000, 1'000'000, {0, 7, Shape::even, {}});
  std::map<std::vector<std::uint64_t>, int> runs;
  for (std::uint64_t parent = 0; parent < 30'000; parent += 3) {
    std::vector<std::uint64_t> run;
    for (std::uint64_t i = 0; i < 3; ++i) run.push_back(made->members(parent + i).count);
    ++runs[run];
  }
  EXPECT_GT(runs.size(), 480);  // of 512
}

TEST(Trees, HaveEveryRecordAfterItsParentAndTheChildrenThatTheBoundsSay) {
  const Given cases[] = {{0, 0, 1, 1},    {1, 0, 3, 3},         {2, 0, 3, 3},
                         {5000, 0, 3, 3}, {5001, 0, 1, 1},      {5000, 0, 0, 7},
                         {9000, 0, 2, 9}, {5000, 0, 100, 5000}, {20000, 0, 1, 300}};
  for (const Given& given : cases) {
    for (const Shape shape : shapes) {
      const Result<Tree> tree =
          Tree::make(group_key, given.records, {given.least, given.most, shape, {}});
      ASSERT_TRUE(tree);
      std::uint64_t next_child = 1;
      for (std::uint64_t record = 0; record < given.records; ++record) {
        const Members children = tree->children(record);
        const bool is_last = next_child + children.count == given.records;
        ASSERT_TRUE(children.count <= given.most &&
                    (children.count >= given.least || children.count == 0 || is_last));
        for (std::uint64_t child = 0; child < children.count; ++child, ++next_child) {
          ASSERT_EQ(children.first + child, next_child);
          ASSERT_EQ(tree->member(next_child)->parent, record);
          ASSERT_LT(record, next_child);
        }
      }
      ASSERT_EQ(next_child, std::max<std::uint64_t>(given.records, 1));
    }
  }
  EXPECT_EQ(Tree::make(group_key, 0, {1, 1, Shape::even, {}})->member(0), std::nullopt);
  EXPECT_LT(Tree::make(group_key, most_records, {0, 9, Shape::zipf, {}})
                ->member(most_records - 1)
                ->parent,
            most_records / 4);
  EXPECT_FALSE(Tree::make(group_key, 5, {0, 0, Shape::even, {}}));
  EXPECT_FALSE(Tree::make(group_key, 5, {3, 2, Shape::even, {}}));
}

TEST(GroupSizes, SayWhyTheyCannotBe) {
  const auto reason = [](const Given& given) {
    const Result<GroupSizes> made = GroupSizes::make(group_key, given.records, given.parents,
                                                     {given.least, given.most, Shape::even, {}});
    return made ? std::string() : made.reason();
  };
  EXPECT_EQ(reason({10, 5, 3, 2}), "the least, 3, is above the most, 2");
  EXPECT_EQ(reason({2999, 1000, 3, 9}),
            "1,000 parents with at least 3 records each need 3,000 records, but there are 2,999");
  EXPECT_EQ(reason({9001, 1000, 3, 9}),
            "1,000 parents with at most 9 records each take 9,000 records, but there are 9,001");
  EXPECT_EQ(
      reason({most_records, most_records, 0, 0}),
      "1,000,000,000,000,000,000 parents with at most 0 records each take 0 records, but there "
      "are 1,000,000,000,000,000,000");
  EXPECT_NE(reason({1, 0, 0, 9}), "");
  EXPECT_EQ(reason({0, 0, 3, 9}), "");
}

}  // namespace
}  // namespace korvex::ways
