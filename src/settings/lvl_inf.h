#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "formatlang/default_settings.h"
#include "platform/runtime_class.h"
#include "settings/col_inf.h"
#include "values/attributes.h"
#include "values/result.h"

namespace korvex {

// What the user chooses besides the texts of a range.
struct RangeChoices {
  ExceededAction exceeded_action = exceeded_action::initialize;
  Flag custom_format = Flag::off;
};

// The settings of one level: its record and either its items' settings, which it owns, or, for a
// level that this run does not touch, a view of the bytes of its data area.
//
// After a failed operation on an item nothing has changed.
class ClFmtLvlInf : public platform::Object {
 public:
  ClFmtLvlInf() = default;
  explicit ClFmtLvlInf(const FmtLvlRec& level) : record(level) {}

  // The item's settings, null when it has none. Owned by the level; valid until the next change.
  ClFmtColInf* find_column(ItemNumber item_number) const;

  // Appends settings as read from a file. Of several with one number, the first is found.
  ClFmtColInf& append(std::unique_ptr<ClFmtColInf> column);

  // Whether any item has a format element, so that the level is worth storing.
  bool has_settings() const;

  ErrorCode set_initial_value(ItemNumber item_number, const ItemAttributes& item);

  // Answers the number of directives of the format.
  Result<std::int32_t> check_and_store(ItemNumber item_number, const ItemAttributes& item,
                                       const RangeTexts& texts, const RangeChoices& choices);

  // Copies what generates the source's values. A target without settings yet takes `item`, its own
  // attributes; the repeat settings and the referenced item stay the target's.
  ErrorCode copy_settings(ItemNumber target, ItemNumber source, const ItemAttributes& item);

  // Empties the item's settings; its place in the list stays. -36 when it has none.
  ErrorCode delete_settings(ItemNumber item_number);

  FmtLvlRec record = {};
  platform::ObjectList<ClFmtColInf> columns;
  bool is_raw = false;
  std::string_view raw_data;  // into the bytes that the ClFmtCom holds

 private:
  // The item's column, made and appended if there is none.
  ClFmtColInf& find_or_append(ItemNumber item_number);

  std::unordered_map<ItemNumber, std::size_t> places_;
};

inline const platform::RuntimeClass<ClFmtLvlInf> fmt_lvl_inf_class("ClFmtLvlInf");

}  // namespace korvex
