#pragma once

#include <cstdint>

// The numbered failures of the module; the user sees the message number 99000 + |code|. A code that
// comes from outside may be any number of 32 bits.
namespace korvex::error {

enum Code : std::int32_t {
  none = 0,

  // Files and memory
  out_of_memory = -1,
  cannot_open = -2,
  cannot_read = -3,
  cannot_operate = -4,
  version_mismatch = -5,

  // Formats, values and settings
  no_format_for_item = -6,
  bad_attribute = -7,
  bad_value_digits = -8,
  bad_attribute_characters = -9,
  format_too_long = -10,
  too_many_fixed_parts = -11,
  too_many_variable_parts = -12,
  start_count_mismatch = -13,
  end_count_mismatch = -14,
  bad_start_sign = -15,
  bad_end_sign = -16,
  inconsistent_values = -17,
  increment_out_of_range = -18,
  attribute_format_mismatch = -19,
  bad_increment = -20,
  decimals_in_character_item = -21,
  value_length_mismatch = -22,
  decimals_prohibited = -23,
  bad_decimal_point = -24,
  value_not_numeric = -25,
  cannot_write = -26,
  disk_full = -27,
  no_data_file = -28,
  same_reference_target = -29,
  reference_attribute_differs = -31,
  reference_sign_differs = -32,
  reference_too_wide = -33,
  reference_not_set = -34,
  empty_format = -35,
  format_not_set = -36,
  start_not_set = -37,
  end_not_set = -38,
  increment_not_set = -39,
  signed_format_for_unsigned = -40,
  signed_part_not_first = -41,
  name_not_set = -42,
  name_not_selectable = -43,
  all_settings_deleted = -44,
  number_overflow = -45,
  sign_not_allowed = -46,
  example_exists = -47,
  example_is_default = -48,
  start_out_of_range = -49,
  end_out_of_range = -50,
  sign_in_fixed_part = -51,
  bad_format_digits = -52,
  variable_part_too_long = -53,
  bad_date_digits = -54,
  bad_time_digits = -55,
  bad_timestamp_digits = -56,
  other_system = -57,
  value_out_of_range = -58,
  zero_or_not_numeric = -59,
  store_value_missing = -60,
  store_failed = -61,
  store_value_empty = -62,
  store_buffer_too_small = -63,
  null_not_allowed = -65,
  not_null_without_format = -66,
  no_current_level = -68,
  reference_without_decimals = -69,
  settings_mismatch = -70,
  settings_mismatch_deleted = -71,
  no_such_name = -72,
  fixed_part_not_numeric = -73,
  no_such_reference = -74,
  invalid_items = -75,
  output_limit = -76,
  repeat_entry_missing = -78,
  cancelled = -79,

  // Dialogs, repeats and target files
  repeat_level_zero = -102,
  repeat_count_zero = -103,
  repeat_level_taken = -104,
  save_change = -105,
  examples_changed = -107,
  first_repeat_level_missing = -108,
  too_many_repeats = -109,
  repeat_exceeds_records = -110,
  target_read_denied = -111,
  target_missing = -114,
  target_in_use = -115,
  target_write_denied = -116,

  // Value lists
  enumeration_cannot_open = -121,
  enumeration_cannot_read = -122,
  enumeration_report_cannot_open = -123,
  enumeration_report_cannot_write = -124,
  enumeration_value_too_long = -125,
  enumeration_not_full_width = -126,
  enumeration_not_numeric = -127,
  enumeration_two_signs = -128,
  enumeration_inner_sign = -129,
  enumeration_sign_on_unsigned = -130,
  enumeration_two_points = -131,
  enumeration_too_many_decimals = -132,
  enumeration_too_many_integer_digits = -133,
  enumeration_decimals_not_allowed = -134,
  enumeration_bad_lines = -135,
  enumeration_empty = -136,
  enumeration_not_allowed = -137,
  enumeration_file_missing = -138,
};

// The number under which the user finds a code: 99002 for -2.
inline constexpr std::int64_t message_number_base = 99000;
constexpr std::int64_t message_number(Code code) {
  const std::int64_t wide = code;
  return message_number_base + (wide < 0 ? -wide : wide);
}

}  // namespace korvex::error

namespace korvex {

// Failures go by this type from where they arise to the C interface, where they become numbers.
using ErrorCode = error::Code;

}  // namespace korvex
