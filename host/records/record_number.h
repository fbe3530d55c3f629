#pragma once

#include <compare>
#include <cstdint>

#include "values/counts.h"

namespace korvex::host {

// A record's place among all records of a layout, counted from 0.
class RecordNumber {
 public:
  constexpr RecordNumber() = default;
  constexpr explicit RecordNumber(std::uint64_t number) : number_(number) {}

  constexpr std::uint64_t number() const { return number_; }

  constexpr RecordNumber& operator++() { return *this += RecordCount(1); }
  constexpr RecordNumber& operator+=(RecordCount count) {
    number_ += count.number();
    return *this;
  }
  friend constexpr RecordNumber operator+(RecordNumber record, RecordCount count) {
    return RecordNumber(record.number_ + count.number());
  }
  // A record that is so many before this one, of which there must be as many.
  friend constexpr RecordNumber operator-(RecordNumber record, RecordCount count) {
    return RecordNumber(record.number_ - count.number());
  }
  // How many records there are from the other one up to this.
  friend constexpr RecordCount operator-(RecordNumber record, RecordNumber other) {
    return RecordCount(record.number_ - other.number_);
  }
  friend constexpr auto operator<=>(RecordNumber, RecordNumber) = default;

 private:
  std::uint64_t number_ = 0;
};

// Some of the records of a layout: from the first up to the one before the end.
struct RecordRange {
  RecordNumber first;
  RecordNumber end;

  RecordCount size() const { return end - first; }
  bool operator==(const RecordRange&) const = default;
};

// All of so many records.
inline RecordRange all_of(RecordCount records) { return {{}, RecordNumber(records.number())}; }

}  // namespace korvex::host
