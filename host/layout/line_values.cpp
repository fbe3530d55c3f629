#include "host/layout/own_text.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 1> line_keys = {"of"};

void read_line(const ValuesReading& reading) {
  reading.reader.require("of", "the name of an item with type = \"key\" and each");
  if (const auto of = placed_text(reading.reader, "of")) reading.values.own = LineValues{*of};
}

}  // namespace

constinit const ValueType line_type = {"line", ValueSource::own, Period::none, line_keys,
                                       read_line};

}  // namespace korvex::host
