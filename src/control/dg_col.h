#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/runtime_class.h"
#include "values/records.h"

namespace korvex {

// What the dialogs show of an item's settings.
struct ItemDisplay {
  std::string generation_text;
  std::string start;
  std::string end;
  std::string increment;
  std::string enumeration_name;  // file name and extension only
  std::string enumeration_path;
  bool is_repeated = false;
  RepeatLevel repeat_level{};
  std::int32_t repeat_count = 0;
  GenerationType generation_type = generation_type::none;
  ItemNumber referenced_item = ItemNumber::none;
  ExceededAction exceeded_action = exceeded_action::initialize;
  bool is_custom = false;
};

// One item (or column) of the control file. Owns its display copy, which is made when it is first
// asked for: a generation run over very many items never needs it.
class ClDGCol : public platform::Object {
 public:
  ItemAttributes attributes() const { return {attribute, signed_flag, length, digits, decimals}; }
  ItemDisplay& display();

  std::string name;
  std::string description;
  ItemNumber item_number = ItemNumber::none;
  Attribute attribute = attribute::none;
  Flag signed_flag = Flag::off;
  std::int32_t length = 0;
  std::int32_t digits = 0;
  std::int32_t decimals = 0;
  Flag null_allowed = Flag::off;
  bool is_left_out = false;  // of generation and count, because it has no settings

 private:
  std::unique_ptr<ItemDisplay> display_;
};

inline const platform::RuntimeClass<ClDGCol> dg_col_class("ClDGCol");

// The items in file order.
using ClDGColList = platform::ObjectList<ClDGCol>;

}  // namespace korvex
