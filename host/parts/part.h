#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/records/record_number.h"
#include "values/counts.h"

namespace korvex::host {

// One of the equal parts in which the records of a layout are made, on any machine and in any
// order. The parts in a row are the whole.
struct Part {
  std::uint64_t number = 1;  // from 1
  std::uint64_t parts = 1;

  bool is_first() const { return number == 1; }
  bool operator==(const Part&) const = default;
};

// No layout has more records, and more parts would be empty.
inline constexpr std::uint64_t most_parts = RecordCount::most;

// Reads `3/64`: two whole numbers, the first from 1 to the second. Nothing for any other text.
std::optional<Part> parse_part(std::string_view text);

// `3 of 64`.
std::string part_text(Part part);

// The records of a part, out of so many. Sizes of parts differ by one at most.
RecordRange records_of(Part part, RecordCount records);

// The part that a record is in.
Part part_with(RecordNumber record, std::uint64_t parts, RecordCount records);

// `data.csv.part-03-of-64`: with zeros so that names sort as the parts follow each other.
std::string part_path(const std::string& whole, Part part);

// The manifest that says that a part is complete.
std::string manifest_path(const std::string& file);

// The inverse of part_path(): the whole file and the part that a name says. Nothing for other
// names.
struct PartName {
  std::string whole;
  Part part;
};
std::optional<PartName> parse_part_path(std::string_view path);

}  // namespace korvex::host
