#include "host/layout/own_text.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 3> offset_keys = {"of", "from", "to"};

PlacedText read_distance(TableReader& reader, std::string_view key) {
  reader.require(key, "a number: of days, seconds or what the other item counts");
  const toml::node* node = reader.find(key);
  if (node == nullptr) return {};
  const auto text = number_text(*node);
  if (!text) reader.report_type(key, *node, "a number");
  return {text.value_or(std::string()), place_of(*node)};
}

void read_offset(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  reader.require("of", "the name of another item");
  OffsetValues offset;
  offset.of = placed_text(reader, "of").value_or(PlacedText{"", reader.place("of")});
  offset.from = read_distance(reader, "from");
  offset.to = read_distance(reader, "to");
  reading.values.own = std::move(offset);
}

}  // namespace

constinit const ValueType offset_type = {"offset", ValueSource::own, Period::none, offset_keys,
                                         read_offset};

}  // namespace korvex::host
