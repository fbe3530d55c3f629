#pragma once

#include <vector>

#include "support/bytes.h"
#include "values/attributes.h"

// A control file, spelled out offset by offset.
namespace korvex::test {

inline constexpr std::size_t control_header_size = 1020;
inline constexpr std::size_t control_item_size = 136;

struct ControlHead {
  std::int32_t records = 10, layout_kind = 1, null_default = 0, host_value = 0, level = 1;
  std::string data_path = "", settings_path = "", work_folder = "";
};

struct ControlItemFields {
  std::int32_t item_number = 1;
  std::string name = "ITEM", description = "";
  std::int32_t attribute = 4, signed_flag = 0, length = 9, digits = 5, decimals = 0;
  std::int32_t host_value = 0, null_allowed = 0;
};

inline ControlItemFields control_fields(std::int32_t number, const std::string& name,
                                        const std::string& description, const ItemAttributes& item,
                                        std::int32_t null_allowed = 0) {
  return {number,
          name,
          description,
          number_of(item.attribute),
          number_of(item.signed_flag),
          item.length,
          item.digits,
          item.decimals,
          0,
          null_allowed};
}

// The bytes that nobody reads are not zero.
inline std::string control_header(const ControlHead& fields, std::int32_t item_count) {
  Bytes bytes;
  bytes.i32(fields.records).i32(fields.layout_kind).i32(fields.null_default);
  bytes.i32(fields.host_value).i32(fields.level).i32(item_count);
  bytes.text(fields.data_path, 256).text(fields.settings_path, 256).text(fields.work_folder, 256);
  return bytes.raw(std::string(228, 'r'));
}

inline std::string control_item(const ControlItemFields& fields) {
  Bytes bytes;
  bytes.i32(fields.item_number).text(fields.name, 64).text(fields.description, 28);
  bytes.i32(fields.attribute).i32(fields.signed_flag).i32(fields.length).i32(fields.digits);
  bytes.i32(fields.decimals).i32(fields.host_value).i32(fields.null_allowed);
  return bytes.raw(std::string(12, 'r'));
}

inline std::string control_bytes(const ControlHead& fields,
                                 const std::vector<ControlItemFields>& items) {
  std::string bytes = control_header(fields, static_cast<std::int32_t>(items.size()));
  for (const ControlItemFields& item : items) bytes += control_item(item);
  return bytes;
}

}  // namespace korvex::test
