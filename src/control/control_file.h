#pragma once

#include <cstddef>
#include <cstdint>

#include "values/records.h"

// The fixed-layout records of a control file, which the host writes before each call: a header,
// then one ControlItem per item or, in the short form that the generator reads, one 32-bit item
// number per item. Little-endian; texts zero-terminated in code page 932.
namespace korvex {

inline constexpr std::size_t control_path_size = 256;

struct ControlHeader {
  StoredRecords records;  // to generate; for a value update the 1-based position of the item
  LayoutKind layout_kind;
  std::int32_t null_default;
  std::int32_t host_value;
  SettingsLevel level;
  std::int32_t item_count;
  char data_path[control_path_size];
  char settings_path[control_path_size];
  char work_folder[control_path_size];
  char reserved[228];
};

struct ControlItem {
  ItemNumber item_number;
  char name[64];
  char description[28];
  Attribute attribute;
  std::int32_t signed_flag;
  std::int32_t length;
  std::int32_t digits;
  std::int32_t decimals;
  std::int32_t host_value;
  std::int32_t null_allowed;
  char reserved[12];
};

static_assert(sizeof(ControlHeader) == 1020 && offsetof(ControlHeader, data_path) == 24);
static_assert(sizeof(ControlItem) == 136 && offsetof(ControlItem, attribute) == 96);

}  // namespace korvex
