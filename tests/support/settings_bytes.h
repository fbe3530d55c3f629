#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "support/bytes.h"

// The records of a settings file, spelled out offset by offset.
namespace korvex::test {

inline constexpr std::size_t header_size = 44;
inline constexpr std::size_t level_size = 32;
inline constexpr std::size_t column_size = 660;
inline constexpr std::size_t previous_column_size = 388;
inline constexpr std::size_t element_size = 608;

struct ValueFields {
  std::int32_t sign = 0, position = 0, low = 0;
  std::string low_text = "";
  std::int32_t high = 0;
  std::string high_text = "";
  std::array<unsigned, 6> words = {};
};

struct ElementFields {
  std::int32_t sequence = 1, kind = 901, sign = 0, width = 1, digits = 1, decimals = 0;
  ValueFields current = {}, start = {}, end = {};
  std::string text = "U", start_text = "1", end_text = "9";
  std::int32_t span_low = 8, span_high = 0, group_start = 0;
};

struct ColumnFields {
  std::int32_t item_number = 1, element_count = 1, lead_element = 1;
  std::int32_t attribute = 4, signed_flag = 0, length = 1, digits = 1, decimals = 0;
  ValueFields increment = {};
  std::string increment_text = "1", format = "%U";
  std::int32_t exceeded_action = 0, generation_type = 2, referenced_item = 0, custom_format = 0;
  std::int32_t repeat_flag = 0, repeat_level = 0, repeat_count = 0;
  std::string enumeration_path = "";
};

inline std::string value_bytes(const ValueFields& value) {
  Bytes bytes;
  bytes.i32(value.sign).i32(value.position).i32(value.low).text(value.low_text, 12);
  bytes.i32(value.high).text(value.high_text, 12);
  for (const unsigned word : value.words) bytes.u16(word);
  return bytes;
}

inline std::string element_bytes(const ElementFields& element) {
  Bytes bytes;
  bytes.i32(element.sequence).i32(element.kind).i32(element.sign);
  bytes.i32(element.width).i32(element.digits).i32(element.decimals);
  bytes.raw(value_bytes(element.current)).raw(value_bytes(element.start));
  bytes.raw(value_bytes(element.end)).text(element.text, 132);
  bytes.text(element.start_text, 132).text(element.end_text, 132);
  bytes.i32(element.span_low).i32(element.span_high).i32(element.group_start).zeros(20);
  return bytes;
}

// Offsets 0 to 379, which both versions of the file share.
inline std::string shared_column_bytes(const ColumnFields& column) {
  Bytes bytes;
  bytes.i32(column.item_number).i32(column.element_count).i32(column.lead_element);
  bytes.i32(column.attribute).i32(column.signed_flag).i32(column.length);
  bytes.i32(column.digits).i32(column.decimals).raw(value_bytes(column.increment));
  bytes.text(column.increment_text, 24).text(column.format, 256);
  bytes.i32(column.exceeded_action).i32(column.generation_type);
  bytes.i32(column.referenced_item).i32(column.custom_format);
  return bytes;
}

inline std::string column_bytes(const ColumnFields& column) {
  Bytes bytes;
  bytes.raw(shared_column_bytes(column)).i32(column.repeat_flag).i32(column.repeat_level);
  return bytes.i32(column.repeat_count).text(column.enumeration_path, 268);
}

// The previous version's record, with something in the bytes that nobody reads.
inline std::string previous_column_bytes(const ColumnFields& column) {
  return shared_column_bytes(column) + "ignored!";
}

inline std::string level_bytes(std::int32_t level, std::size_t offset, std::int32_t records,
                               std::size_t size, std::int32_t columns,
                               std::int32_t repeat_flag = 0) {
  Bytes bytes;
  bytes.i32(level).i32(static_cast<std::int32_t>(offset)).i32(records);
  return bytes.i32(static_cast<std::int32_t>(size)).i32(columns).i32(repeat_flag).zeros(8);
}

inline std::string header_bytes(std::int32_t layout_kind, std::int32_t quotation,
                                std::int32_t levels,
                                std::string_view magic = "TAMBO DATA FORMAT V3L1") {
  return Bytes().text(magic, 24).i32(layout_kind).i32(quotation).i32(levels).zeros(8);
}

// One item with one element.
inline std::string item_bytes(std::int32_t item_number) {
  return column_bytes({.item_number = item_number}) + element_bytes({});
}

// A file of layout kind 1 with the levels 1, 2, …, each with as many one-element items as told.
inline std::string settings_bytes(const std::vector<std::int32_t>& items_of_level) {
  const std::size_t count = items_of_level.size();
  std::string table = header_bytes(1, 0, static_cast<std::int32_t>(count));
  std::string areas;
  for (std::size_t i = 0; i < count; ++i) {
    const auto level = static_cast<std::int32_t>(i) + 1;
    const auto items = static_cast<std::size_t>(items_of_level[i]);
    table += level_bytes(level, header_size + level_size * count + areas.size(), 10 * level,
                         items * (column_size + element_size), items_of_level[i]);
    for (std::int32_t item = 1; item <= items_of_level[i]; ++item) {
      areas += item_bytes(100 * level + item);
    }
  }
  return table + areas;
}

}  // namespace korvex::test
