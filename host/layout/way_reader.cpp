#include <array>

#include "host/layout/item_reader.h"
#include "host/layout/own_text.h"

namespace korvex::host {

namespace {

// Where the way goes, which needs a period.
constexpr std::array<std::string_view, 6> way_keys = {"order",   "joint", "within",
                                                      "weights", "skew",  "group"};
// What goes with every source that has values at all.
constexpr std::array<std::string_view, 5> other_keys = {"empty", "empty_with", "when", "salt",
                                                        "hidden"};

using ParseNumber = ways::Result<ways::Fraction> (*)(std::string_view);

std::optional<ways::Fraction> read_number(TableReader& reader, std::string_view key,
                                          const toml::node& node, ParseNumber parse,
                                          std::string_view expected) {
  const auto text = number_text(node);
  if (!text) {
    reader.report_type(key, node, expected);
    return std::nullopt;
  }
  const auto number = parse(*text);
  if (number) return *number;
  const std::string given = node.is_string() ? describe(node) : *text;
  reader.report(place_of(node), std::string(key) + " is " + given + ": " + number.reason() +
                                    ", expected " + std::string(expected));
  return std::nullopt;
}

void read_weights(TableReader& reader, WayRules& way) {
  const toml::node* node = reader.find("weights");
  if (node == nullptr) return;
  way.weights_place = place_of(*node);
  const toml::array* weights = node->as_array();
  if (weights == nullptr || weights->empty()) {
    reader.report_type("weights", *node, "an array of numbers, one for each value");
    return;
  }
  for (const toml::node& weight : *weights) {
    const auto number =
        read_number(reader, "weights", weight, ways::parse_fraction, "a number from 0 on");
    if (number) way.weights.push_back(*number);
  }
}

void read_skew(TableReader& reader, WayRules& way) {
  const toml::node* node = reader.find("skew");
  if (node == nullptr) return;
  const std::string expected = "a number above 0, up to " + std::to_string(ways::Skew::most);
  const auto number = read_number(reader, "skew", *node, ways::parse_fraction, expected);
  if (!number) return;
  const auto skew = ways::Skew::make(*number);
  if (skew) {
    way.skew = *skew;
  } else {
    reader.report_type("skew", *node, expected);
  }
}

// A key that says more of one order, and implies it.
void require_order(TableReader& reader, std::string_view key, Order order, WayRules& way) {
  if (!reader.has(key)) return;
  if (!reader.has("order")) way.order = order;
  if (way.order == order) return;
  reader.report(reader.place(key),
                std::string(key) + " is given together with order \"" +
                    std::string(order_names[static_cast<std::size_t>(way.order)]) +
                    "\", expected order \"" +
                    std::string(order_names[static_cast<std::size_t>(order)]) + '"');
}

// A draw has no last value, after which there could be none.
void refuse_end(TableReader& reader, Order order) {
  const toml::node* exceeded = reader.find("exceeded");
  const bool has_end =
      exceeded != nullptr && exceeded->value_or(std::string_view()) == "initialize";
  if (!has_end || order == Order::forward || order == Order::shuffled) return;
  reader.report(place_of(*exceeded), "exceeded is given together with order \"" +
                                         std::string(order_names[static_cast<std::size_t>(order)]) +
                                         "\", expected order \"forward\" or \"shuffled\"");
}

void read_order(TableReader& reader, WayRules& way) {
  for (const std::string_view key : way_keys) {
    if (!way.is_given() && key != "group" && reader.has(key)) way.place = reader.place(key);
  }
  const auto order = reader.choice("order", order_names);
  way.order = static_cast<Order>(order.value_or(0));
  way.joint = placed_text(reader, "joint");
  way.within = placed_text(reader, "within");
  if (reader.has("order") && !order) return;
  require_order(reader, "joint", Order::shuffled, way);
  require_order(reader, "within", Order::shuffled, way);
  require_order(reader, "weights", Order::random, way);
  require_order(reader, "skew", Order::zipf, way);
  refuse_end(reader, way.order);
  if (way.joint && way.within) {
    reader.report(way.within->place,
                  "within is given together with joint, expected one of the two");
  }
}

// `when = { ITEM = ["text", ...] }`: all of the conditions must hold.
void read_when(TableReader& reader, EmptinessRules& emptiness, std::vector<LayoutError>& errors) {
  const toml::table* table = reader.table("when");
  if (table == nullptr) return;
  if (table->empty()) {
    reader.report_type("when", *table, "a table such as { ITEM = [\"text\"] }");
  }
  Layout any_text;
  any_text.is_utf8 = true;
  TableReader conditions(*table, "when", errors);
  for (const auto& [key, node] : *table) {
    Condition condition;
    const toml::source_position& begin = key.source().begin;
    condition.item = {std::string(key.str()), {begin.line, begin.column}};
    condition.texts = placed_texts(conditions, any_text, key.str());
    emptiness.when.push_back(std::move(condition));
  }
}

}  // namespace

void know_way_keys(TableReader& reader) {
  reader.know(way_keys);
  reader.know(other_keys);
}

void read_way(TableReader& reader, const ValueType& type, ItemValues& values,
              std::vector<LayoutError>& errors) {
  know_way_keys(reader);
  const auto reject = [&](std::string_view key, std::string_view expected) {
    reader.report(reader.place(key), std::string(key) + " is given together with type \"" +
                                         std::string(type.name) + "\", expected " +
                                         std::string(expected));
  };
  for (const std::string_view key : way_keys) {
    if (!reader.has(key)) continue;
    values.own_keys.push_back({std::string(key), reader.place(key), std::string(key)});
    if (type.period == Period::none) reject(key, "a type with a known period");
  }
  for (const std::string_view key : other_keys) {
    if (!reader.has(key)) continue;
    values.own_keys.push_back({std::string(key), reader.place(key), std::string(key)});
    if (type.source == ValueSource::initial) reject(key, "another type");
  }
  read_order(reader, values.way);
  read_weights(reader, values.way);
  read_skew(reader, values.way);
  values.group = placed_text(reader, "group");
  values.salt = placed_text(reader, "salt");
  values.is_hidden = reader.boolean("hidden").value_or(false);
  if (const toml::node* node = reader.find("empty")) {
    values.emptiness.share =
        read_number(reader, "empty", *node, ways::parse_share, "a share from 0 to 1");
  }
  values.emptiness.with = placed_text(reader, "empty_with");
  read_when(reader, values.emptiness, errors);
}

}  // namespace korvex::host
