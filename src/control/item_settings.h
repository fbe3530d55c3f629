#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/col_main.h"
#include "formatlang/default_settings.h"

// Changes of the current item's settings, in memory: the settings file's records and the item's
// display together. Nothing is written to disk. After a failure the item's settings are as they
// were.
namespace korvex {

// What an item without generated values shows.
std::string_view initial_value_text(LayoutKind layout_kind);

// What an item with a value list shows.
inline constexpr std::string_view enumeration_text = "Enumeration type";

// Sets the item to the initial value. An item that may not be NULL is refused (-65).
ErrorCode set_initial_value(ClColMain& main);

// The same for any item: settings that are to be filled with something else begin like this.
ErrorCode reset_settings(ClColMain& main);

// Makes an item with the initial value take its values from a value list, which no check looks
// at here. Never fails.
void set_enumeration(ClColMain& main, const std::string& path, ExceededAction exceeded_action);

// Validates and stores a range.
ErrorCode store_format(ClColMain& main, const RangeTexts& texts, bool initializes, bool is_custom);

// Whether an item can take over another one's settings: -31, -32, -33, -69.
ErrorCode check_reference(const ItemAttributes& source, const ItemAttributes& target);

// Whether the current item can take over those of the item at `source_index`: what
// copy_settings would answer.
ErrorCode check_copy(const ClColMain& main, std::size_t source_index);

// Takes over the settings of the item at `source_index`, which must be of the same kind and no
// larger.
ErrorCode copy_settings(ClColMain& main, std::size_t source_index);

// -36 when the item has none.
ErrorCode delete_settings(ClColMain& main);

}  // namespace korvex
