#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "control/col_main.h"

namespace korvex {

// Entries of the generation type list.
enum class TypeEntry : std::int32_t {
  none = -1,
  initial_value = 0,
  range = 1,
  reference = 2,
  enumeration = 3,
};
namespace type_entry {
using enum TypeEntry;
}

// Proposed where no increment is yet.
inline constexpr const char* first_increment = "1";

// What the controls of the format dialog hold. Texts are code page 932, the path is the file
// system's bytes.
struct SetupFields {
  TypeEntry type_index = type_entry::none;
  std::string reference;         // name of the item
  std::string enumeration_name;  // file name and extension only
  std::string enumeration_path;
  std::string format;
  std::string start;
  std::string end;
  std::string increment;
  bool custom = false;
  std::optional<ExceededAction> exceeded;
};

// The fields that show an item's settings. `before` are those of the item shown until now: an item
// with the initial value keeps their choice for an exceeded end value. Nothing else of them stays,
// the path least of all, or the next item would get another one's file.
SetupFields fields_of(const ItemDisplay& display, const SetupFields& before);

// Fills in what the type just selected needs and the controls do not hold yet. The path of an
// value list stays when its name is emptied, so that confirming the same type again loses no
// file.
void confirm_type(SetupFields& fields, ClDGCol& item);

// The place of the first item with exactly this name.
std::optional<std::size_t> index_of_item(const ClDGColList& items, std::string_view name);

// Whether storing the fields would change the settings of the current item, of which there must be
// one.
bool is_changed(const SetupFields& fields, ClColMain& main);

// Which groups of controls can be used.
struct SetupEnablement {
  bool remove = false;
  bool setup = false;
  bool enumeration = false;            // file name and its choice
  std::optional<bool> browse = false;  // nothing: stays as it is
  bool reference = false;
  bool custom = false;    // the custom format tick
  bool format = false;    // format and its examples
  bool values = false;    // start, end and increment
  bool exceeded = false;  // both actions for an exceeded end value
};

// `generation_type` is that of the item's stored settings; `enumeration_name_shown` tells whether
// the file name's control holds any text.
SetupEnablement enablement(const SetupFields& fields, GenerationType generation_type,
                           bool enumeration_name_shown);

}  // namespace korvex
