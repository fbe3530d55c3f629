#pragma once

#include <cstdint>

// The numbered failures of the module. Every operation answers 0 or a positive count when it
// succeeded and one of these when it did not; the user sees the message number 99000 + |code|.
namespace korvex::error {

// Files and memory
inline constexpr std::int32_t out_of_memory = -1;
inline constexpr std::int32_t cannot_open = -2;
inline constexpr std::int32_t cannot_read = -3;
inline constexpr std::int32_t cannot_operate = -4;
inline constexpr std::int32_t version_mismatch = -5;

// Formats, values and settings
inline constexpr std::int32_t no_format_for_item = -6;
inline constexpr std::int32_t bad_attribute = -7;
inline constexpr std::int32_t bad_value_digits = -8;
inline constexpr std::int32_t bad_attribute_characters = -9;
inline constexpr std::int32_t format_too_long = -10;
inline constexpr std::int32_t too_many_fixed_parts = -11;
inline constexpr std::int32_t too_many_variable_parts = -12;
inline constexpr std::int32_t start_count_mismatch = -13;
inline constexpr std::int32_t end_count_mismatch = -14;
inline constexpr std::int32_t bad_start_sign = -15;
inline constexpr std::int32_t bad_end_sign = -16;
inline constexpr std::int32_t inconsistent_values = -17;
inline constexpr std::int32_t increment_out_of_range = -18;
inline constexpr std::int32_t attribute_format_mismatch = -19;
inline constexpr std::int32_t bad_increment = -20;
inline constexpr std::int32_t decimals_in_character_item = -21;
inline constexpr std::int32_t value_length_mismatch = -22;
inline constexpr std::int32_t decimals_prohibited = -23;
inline constexpr std::int32_t bad_decimal_point = -24;
inline constexpr std::int32_t value_not_numeric = -25;
inline constexpr std::int32_t cannot_write = -26;
inline constexpr std::int32_t disk_full = -27;
inline constexpr std::int32_t no_data_file = -28;
inline constexpr std::int32_t same_reference_target = -29;
inline constexpr std::int32_t reference_attribute_differs = -31;
inline constexpr std::int32_t reference_sign_differs = -32;
inline constexpr std::int32_t reference_too_wide = -33;
inline constexpr std::int32_t reference_not_set = -34;
inline constexpr std::int32_t empty_format = -35;
inline constexpr std::int32_t format_not_set = -36;
inline constexpr std::int32_t start_not_set = -37;
inline constexpr std::int32_t end_not_set = -38;
inline constexpr std::int32_t increment_not_set = -39;
inline constexpr std::int32_t signed_format_for_unsigned = -40;
inline constexpr std::int32_t signed_part_not_first = -41;
inline constexpr std::int32_t name_not_set = -42;
inline constexpr std::int32_t name_not_selectable = -43;
inline constexpr std::int32_t all_settings_deleted = -44;
inline constexpr std::int32_t number_overflow = -45;
inline constexpr std::int32_t sign_not_allowed = -46;
inline constexpr std::int32_t example_exists = -47;
inline constexpr std::int32_t example_is_default = -48;
inline constexpr std::int32_t start_out_of_range = -49;
inline constexpr std::int32_t end_out_of_range = -50;
inline constexpr std::int32_t sign_in_fixed_part = -51;
inline constexpr std::int32_t bad_format_digits = -52;
inline constexpr std::int32_t variable_part_too_long = -53;
inline constexpr std::int32_t bad_date_digits = -54;
inline constexpr std::int32_t bad_time_digits = -55;
inline constexpr std::int32_t bad_timestamp_digits = -56;
inline constexpr std::int32_t other_system = -57;
inline constexpr std::int32_t value_out_of_range = -58;
inline constexpr std::int32_t zero_or_not_numeric = -59;
inline constexpr std::int32_t store_value_missing = -60;
inline constexpr std::int32_t store_failed = -61;
inline constexpr std::int32_t store_value_empty = -62;
inline constexpr std::int32_t store_buffer_too_small = -63;
inline constexpr std::int32_t null_not_allowed = -65;
inline constexpr std::int32_t not_null_without_format = -66;
inline constexpr std::int32_t no_current_level = -68;
inline constexpr std::int32_t reference_without_decimals = -69;
inline constexpr std::int32_t settings_mismatch = -70;
inline constexpr std::int32_t settings_mismatch_deleted = -71;
inline constexpr std::int32_t no_such_name = -72;
inline constexpr std::int32_t fixed_part_not_numeric = -73;
inline constexpr std::int32_t no_such_reference = -74;
inline constexpr std::int32_t invalid_items = -75;
inline constexpr std::int32_t output_limit = -76;
inline constexpr std::int32_t repeat_entry_missing = -78;
inline constexpr std::int32_t cancelled = -79;

// Dialogs, repeats and target files
inline constexpr std::int32_t repeat_level_zero = -102;
inline constexpr std::int32_t repeat_count_zero = -103;
inline constexpr std::int32_t repeat_level_taken = -104;
inline constexpr std::int32_t save_change = -105;
inline constexpr std::int32_t examples_changed = -107;
inline constexpr std::int32_t first_repeat_level_missing = -108;
inline constexpr std::int32_t too_many_repeats = -109;
inline constexpr std::int32_t repeat_exceeds_records = -110;
inline constexpr std::int32_t target_read_denied = -111;
inline constexpr std::int32_t target_folder_missing = -112;
inline constexpr std::int32_t target_delete_denied = -113;
inline constexpr std::int32_t target_missing = -114;
inline constexpr std::int32_t target_in_use = -115;
inline constexpr std::int32_t target_write_denied = -116;

// Enumeration files
inline constexpr std::int32_t enumeration_cannot_open = -121;
inline constexpr std::int32_t enumeration_cannot_read = -122;
inline constexpr std::int32_t enumeration_report_cannot_open = -123;
inline constexpr std::int32_t enumeration_report_cannot_write = -124;
inline constexpr std::int32_t enumeration_value_too_long = -125;
inline constexpr std::int32_t enumeration_not_full_width = -126;
inline constexpr std::int32_t enumeration_not_numeric = -127;
inline constexpr std::int32_t enumeration_two_signs = -128;
inline constexpr std::int32_t enumeration_inner_sign = -129;
inline constexpr std::int32_t enumeration_sign_on_unsigned = -130;
inline constexpr std::int32_t enumeration_two_points = -131;
inline constexpr std::int32_t enumeration_too_many_decimals = -132;
inline constexpr std::int32_t enumeration_too_many_integer_digits = -133;
inline constexpr std::int32_t enumeration_decimals_not_allowed = -134;
inline constexpr std::int32_t enumeration_bad_lines = -135;
inline constexpr std::int32_t enumeration_empty = -136;
inline constexpr std::int32_t enumeration_not_allowed = -137;
inline constexpr std::int32_t enumeration_file_missing = -138;

// The number under which the user finds a code: 99002 for -2.
inline constexpr std::int64_t message_number_base = 99000;
constexpr std::int64_t message_number(std::int32_t code) {
  const std::int64_t wide = code;
  return message_number_base + (wide < 0 ? -wide : wide);
}

}  // namespace korvex::error
