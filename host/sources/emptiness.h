#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/sources/text_facts.h"
#include "host/ways/fraction.h"
#include "host/ways/key.h"

namespace korvex::sources {

class Field;

// Which records of a field have no value. Of one thread. Fields that are asked must outlive it.
class Emptiness {
 public:
  virtual ~Emptiness() = default;

  virtual bool is_empty(std::uint64_t record) = 0;

  // It leaves all records empty from this one on, and at most `gaps` of those before.
  virtual std::uint64_t end() const = 0;
  virtual std::uint64_t gaps() const = 0;

  // So many of all records it leaves empty, if not more.
  virtual std::uint64_t least_empty() const = 0;

  // Of values of other records, at most, for one record.
  virtual std::uint64_t lookups() const { return 0; }

  // Of the records that it leaves empty; nothing where none is known.
  virtual std::optional<Cycle> cycle() const = 0;
};

// An exact share of all records: at most 1.
std::unique_ptr<Emptiness> empty_share(ways::KeyFor<ways::Use::empty> key, ways::Fraction share,
                                       std::uint64_t records);

// Those where another field is empty.
std::unique_ptr<Emptiness> empty_with(Field& other);

// All but those where another field has one of some texts.
std::unique_ptr<Emptiness> empty_unless(Field& other, std::vector<std::string> texts);

}  // namespace korvex::sources
