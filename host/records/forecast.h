#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/records/prepared_layout.h"
#include "host/sources/text_facts.h"
#include "run/field_facts.h"

namespace korvex::host {

// Whether records without a value are the same in it, as in a file, or different, as in a database.
enum class EmptyValues { same, different };

// What is known of the records of a layout before any is made, in the same form for the engine's
// items and for those with sources and ways.
class Forecast {
 public:
  // Of an item, by its place in the records.
  struct Item {
    // How many different values it has until it starts again; where that is unknown, in all records
    // that are asked for.
    sources::Count values;
    std::string course;                  // their order, in words
    std::vector<PassedEnd> passed_ends;  // parts of the format that pass their ends
  };

  // For how long records differ in a set of items.
  struct Set {
    sources::Uniqueness uniqueness;
    sources::Count combinations;  // of their values
    std::string doubts;           // why they may be the same; empty where there is no formula
  };

  // The layout must outlive it.
  explicit Forecast(const PreparedLayout& prepared);

  Item item(std::size_t i) const;
  Set set(std::span<const std::size_t> items, EmptyValues empty = EmptyValues::same) const;

  // All records of the layout.
  std::uint64_t records() const { return records_; }

  // Of the items that the engine makes, as they stand in its records.
  const std::vector<FieldFacts>& engine_fields() const { return engine_fields_; }

 private:
  // From `end` on no record has a value, and at most `gaps` of those before have none.
  struct Presence {
    std::uint64_t end = sources::endless;
    std::uint64_t gaps = sources::endless;
  };

  Set set_of_all(std::span<const std::size_t> items) const;
  Set set_of_values(std::span<const std::size_t> items) const;
  Presence presence_of(std::size_t i) const;
  std::vector<const FieldFacts*> engine_facts(std::span<const std::size_t> items) const;
  Set set_of_engine(std::vector<const FieldFacts*> facts) const;

  const PreparedLayout& prepared_;
  std::uint64_t records_;
  std::vector<FieldFacts> engine_fields_;
  // Side by side with the items; null where something else than the engine makes the field.
  std::vector<const FieldFacts*> facts_;
};

}  // namespace korvex::host
