#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <string>

#include "korvex/control_file.h"
#include "values/number_of.h"

// How many records there are, and how many bytes they have.
namespace korvex {

// A number of records as a control file, a settings file or a log holds it: one that comes from
// outside may be any number of 32 bits.
enum class StoredRecords : std::int32_t {};

// A requested number of records. It may be far larger than a control file can say, because any part
// of the records can be made separately.
class RecordCount {
 public:
  // A larger number from outside is refused. Twice the product of two such numbers
  // still fits into 128 bits.
  static constexpr std::uint64_t most = 1'000'000'000'000'000'000;

  // The most that one run of the generator writes into a file.
  static constexpr std::uint64_t most_stored = KORVEX_MAX_RECORDS;

  constexpr RecordCount() = default;
  constexpr explicit RecordCount(std::uint64_t number) : number_(number) {}

  constexpr std::uint64_t number() const { return number_; }

  // Whether a control file can say it.
  constexpr bool can_be_stored() const { return number_ <= most_stored; }
  // The nearest number that a control file can say.
  constexpr StoredRecords stored() const { return StoredRecords(std::min(number_, most_stored)); }

  friend constexpr auto operator<=>(RecordCount, RecordCount) = default;

 private:
  std::uint64_t number_ = 0;
};

// Bytes of so many records, which may be more than any file can have.
__extension__ using ByteCount = unsigned __int128;

std::string decimal_text(ByteCount bytes);

}  // namespace korvex
