#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "host/sources/text_facts.h"

namespace korvex::sources {

class Field;

// Something that each record has one of: the text of a field, an index, a parent, its own number.
// It is known by an object of the plan, and by a number where that object stands for several.
struct Thing {
  const void* owner = nullptr;
  std::size_t part = 0;

  auto operator<=>(const Thing&) const = default;
};

// The record's own number, from which the record follows.
inline constexpr Thing the_record;

// The text that a record takes of a row, among the first records.
struct TextOfRow {
  Thing text;
  Thing row;
  std::uint64_t records = endless;
};

// What follows from what: records that agree in some things agree in another. A set of things is
// unique if the record itself follows from it.
class Dependencies {
 public:
  // Whether the rules of the thing are still to be added. True once: many fields may be made of
  // one.
  bool is_new(const Thing& thing) { return told_.insert(thing).second; }

  // `to` follows from all of `from` together, among the first `records` records.
  void add(std::vector<Thing> from, Thing to, std::uint64_t records = endless);

  // Records with the same thing are the same, or both in the cycle and whole periods apart.
  void add_cycle(Thing thing, Cycle cycle) { cycles_.push_back({thing, cycle}); }

  // The texts of a row are those that fields have in one of `rows` records of their own. The row
  // follows from enough of them.
  void add_text_of_row(const TextOfRow& text, const Field& field, std::uint64_t rows);

  // The same of rows whose texts a list has, which must outlive this object.
  void add_text_of_row(const TextOfRow& text, std::span<const std::string_view> list);

  // Among how many first records the record follows from what is known, as far as the rules tell; 0
  // when it does not follow.
  std::uint64_t records_told_by(const std::vector<Thing>& known) const;

 private:
  struct Rule {
    std::vector<Thing> from;
    Thing to;
    std::uint64_t records;
  };

  struct ThingInCycle {
    Thing thing;
    Cycle cycle;
  };

  struct PartOfRow {
    TextOfRow text;
    const Field* field = nullptr;
    std::span<const std::string_view> list = {};  // where there is no field
  };
  struct Row {
    std::uint64_t rows;
    std::vector<PartOfRow> parts;
  };

  class Reached;
  static bool tell_row(const std::vector<const PartOfRow*>& known, std::uint64_t rows);
  bool reach_rows(Reached& reached) const;

  std::set<Thing> told_;
  std::vector<Rule> rules_;
  std::map<Thing, Row> rows_;
  std::vector<ThingInCycle> cycles_;
};

}  // namespace korvex::sources
