#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/layout/source_place.h"
#include "host/sources/template_text.h"
#include "host/ways/fraction.h"
#include "host/ways/group_sizes.h"
#include "host/ways/zipf.h"

// What a layout says of values beyond what the module knows: sources of the program's own, and ways
// through any source. All texts are UTF-8.
namespace korvex::sources {
enum class Fold;
}

namespace korvex::host {

// Values in the layout, or in a file: its lines, or a column of its table.
struct ListValues {
  std::vector<PlacedText> values;
  std::string file;
  SourcePlace file_place;
  std::optional<PlacedText> column;
};

// A column of a built-in set. The language is empty where the layout leaves it out.
struct BuiltinValues {
  PlacedText set;
  PlacedText language;
};

// Texts of other items, put together.
struct TemplateValues {
  struct Part {
    sources::TemplatePart part;
    SourcePlace place;  // of the item
  };
  std::vector<Part> parts;
};

// An item of another layout: a record of it for each record of this one.
struct KeyValues {
  std::string layout;  // the path
  SourcePlace layout_place;
  PlacedText item;
  std::optional<ways::GroupBounds> each;  // so many records of this layout to each of the other
  SourcePlace each_place;
};

// The place of a record among those with the same key.
struct LineValues {
  PlacedText of;
};

// The value of another item and a distance that is drawn evenly, in days, seconds or numbers.
struct OffsetValues {
  PlacedText of;
  PlacedText from;
  PlacedText to;
};

// What is made of the records of another layout that belong to each of this one.
struct ChildrenValues {
  sources::Fold fold = {};
  std::string layout;  // the path
  SourcePlace layout_place;
  PlacedText key;                  // the item of that layout that leads to this one
  std::optional<PlacedText> item;  // none: the records are counted
};

using OwnValues = std::variant<std::monostate, ListValues, BuiltinValues, TemplateValues, KeyValues,
                               LineValues, OffsetValues, ChildrenValues>;

enum class Order { forward, shuffled, random, zipf };

// As layouts name them.
inline constexpr std::array<std::string_view, 4> order_names = {"forward", "shuffled", "random",
                                                                "zipf"};

// Which value a record takes.
struct WayRules {
  Order order = Order::forward;
  std::optional<PlacedText> joint;      // shuffled: together with all items of that name
  std::optional<PlacedText> within;     // shuffled: in each group of that key
  std::vector<ways::Fraction> weights;  // random: one for each value
  ways::Skew skew;                      // zipf
  SourcePlace place;                    // of the first of these keys; line 0 without any
  SourcePlace weights_place;

  bool is_given() const { return place.line > 0; }
};

// A value only where another item has one of some texts.
struct Condition {
  PlacedText item;
  std::vector<PlacedText> texts;
};

// Which records have no value.
struct EmptinessRules {
  std::optional<ways::Fraction> share;
  std::optional<PlacedText> with;
  std::vector<Condition> when;

  bool is_given() const { return share || with || !when.empty(); }
};

// A key of [item.values] that the module knows nothing of.
struct OwnKey {
  std::string key;
  SourcePlace place;
  std::string text;  // as it is named in messages: `order`, or `type "list"`
};

}  // namespace korvex::host
