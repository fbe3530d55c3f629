#include "host/layout/own_text.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 3> builtin_keys = {"set", "language", "exceeded"};

// Which sets and languages there are is known by who takes the values.
void read_builtin(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  reader.require("set", "a built-in set such as \"people.given\"");
  const PlacedText nothing = {"", reader.place("language")};
  reading.values.own = BuiltinValues{placed_text(reader, "set").value_or(nothing),
                                     placed_text(reader, "language").value_or(nothing)};
  read_exceeded(reading);
}

}  // namespace

constinit const ValueType builtin_type = {"builtin", ValueSource::own, Period::known, builtin_keys,
                                          read_builtin};

}  // namespace korvex::host
