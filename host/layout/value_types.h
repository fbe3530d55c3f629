#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"

namespace korvex::host {

// What the reader of a type is handed: its table, and where to put what is there.
struct ValuesReading {
  TableReader& reader;
  const Layout& layout;  // its header
  ItemValues& values;
  std::vector<LayoutError>& errors;
};

// Whether a way can lead through the values of a type: not where the record itself decides.
enum class Period { none, known };

// A type of values: the keys of [item.values] that mean something for it, and what reads them.
struct ValueType {
  std::string_view name;
  ValueSource source;
  Period period;
  std::span<const std::string_view> keys;
  void (*read)(const ValuesReading& reading);
};

// Reads the key "exceeded", which several types have.
void read_exceeded(const ValuesReading& reading);

// What the module knows.
extern const ValueType initial_type;
extern const ValueType range_type;
extern const ValueType reference_type;
extern const ValueType enumeration_type;
extern const ValueType default_type;

// What the program adds to it, each in a file of its own.
extern const ValueType list_type;
extern const ValueType builtin_type;
extern const ValueType template_type;
extern const ValueType key_type;
extern const ValueType line_type;
extern const ValueType offset_type;
extern const ValueType sum_type;
extern const ValueType count_type;
extern const ValueType least_type;
extern const ValueType most_type;

// All of them, in the order in which messages list them.
inline const std::array value_types = {
    &initial_type, &range_type,   &reference_type, &enumeration_type, &default_type,
    &list_type,    &builtin_type, &template_type,  &key_type,         &line_type,
    &offset_type,  &sum_type,     &count_type,     &least_type,       &most_type};

}  // namespace korvex::host
