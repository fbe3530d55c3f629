#include "host/layout/layout_paths.h"
#include "host/layout/own_text.h"
#include "host/layout/value_types.h"
#include "host/ways/numbers.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 4> key_keys = {"layout", "item", "each", "exceeded"};
constexpr std::array<std::string_view, 3> shape_names = {"constant", "even", "zipf"};

constexpr std::string_view expected_each =
    "a number of records, two of them as [0, 7], or a table such as { least = 0, most = 50, shape "
    "= "
    "\"zipf\" }";

std::optional<std::uint64_t> read_count(TableReader& reader, const toml::node* node) {
  const auto* number = node == nullptr ? nullptr : node->as_integer();
  if (number != nullptr && number->get() >= 0 &&
      static_cast<std::uint64_t>(number->get()) <= ways::most_records) {
    return static_cast<std::uint64_t>(number->get());
  }
  if (node != nullptr)
    reader.report_type("each", *node,
                       "numbers of records from 0 to " + std::to_string(ways::most_records));
  return std::nullopt;
}

void read_table(TableReader& reader, const toml::table& table, ways::GroupBounds& bounds,
                std::vector<LayoutError>& errors) {
  TableReader each(table, "each", errors);
  each.require("least", "the smallest number of records");
  each.require("most", "the largest number of records");
  bounds.least = read_count(reader, each.find("least")).value_or(0);
  bounds.most = read_count(reader, each.find("most")).value_or(ways::most_records);
  const auto shape = each.choice("shape", shape_names);
  bounds.shape = shape ? static_cast<ways::Shape>(*shape) : ways::Shape::even;
  each.reject_unknown_keys();
}

// How many records belong to each record of the other layout.
void read_each(const ValuesReading& reading, KeyValues& key) {
  TableReader& reader = reading.reader;
  const toml::node* node = reader.find("each");
  if (node == nullptr) return;
  const std::size_t errors_before = reader.error_count();
  ways::GroupBounds bounds;
  if (node->is_integer()) {
    bounds.least = bounds.most = read_count(reader, node).value_or(0);
    bounds.shape = ways::Shape::constant;
  } else if (const auto* table = node->as_table()) {
    read_table(reader, *table, bounds, reading.errors);
  } else if (const auto* pair = node->as_array(); pair != nullptr && pair->size() == 2) {
    bounds.least = read_count(reader, pair->get(0)).value_or(0);
    bounds.most = read_count(reader, pair->get(1)).value_or(ways::most_records);
  } else {
    reader.report_type("each", *node, expected_each);
  }
  if (reader.error_count() != errors_before) return;
  if (bounds.least > bounds.most) {
    reader.report(place_of(*node), "each is from " + std::to_string(bounds.least) + " to " +
                                       std::to_string(bounds.most) +
                                       ", expected the smaller number first");
    return;
  }
  for (const std::string_view key_of_way : {"order", "joint", "within", "weights", "skew"}) {
    if (!reader.has(key_of_way)) continue;
    reader.report(
        reader.place(key_of_way),
        std::string(key_of_way) + " is given together with each, expected one of the two");
  }
  key.each = bounds;
  key.each_place = place_of(*node);
  reading.values.way.place = key.each_place;
  reading.values.own_keys.push_back({"each", key.each_place, "each"});
}

void read_key(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  KeyValues key;
  reader.require("layout", "the path of the layout with the records to point to");
  key.layout = read_path(reader, "layout", reading.layout.file);
  key.layout_place = reader.place("layout");
  reader.require("item", "the name of an item of that layout");
  key.item = placed_text(reader, "item").value_or(PlacedText{"", reader.place("item")});
  read_each(reading, key);
  read_exceeded(reading);
  reading.values.own = std::move(key);
}

}  // namespace

constinit const ValueType key_type = {"key", ValueSource::own, Period::known, key_keys, read_key};

}  // namespace korvex::host
