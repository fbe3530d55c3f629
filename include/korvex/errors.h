#ifndef KORVEX_ERRORS_H
#define KORVEX_ERRORS_H

/*
 * Every failure of the library: its name, its code and its message.
 *
 * KORVEX_ERRORS(X) is X(name, code, message) for each of them. In a message "%s" stands for the
 * word for an item, which depends on the layout ("Item", "Column" or "Table"), and "%ld" for a
 * number. The user sees the message after its number, KORVEX_MESSAGE_NUMBER(code), and a colon. The
 * codes of the lines of a value list (-125 to -134) are written to the list's error file instead.
 *
 * DGCreateData returns such codes; the other functions only show the messages. A comment says what
 * a code means where its message is no help. When each of them comes, and what the user can do
 * about it, is in the document errors.md.
 */
#define KORVEX_ERRORS(X)                                                                           \
  /* Files and memory */                                                                           \
  X(out_of_memory, -1, "Failed to allocate memory area.")                                          \
  /* Any file of the call cannot be opened or created, not only the control file. */               \
  X(cannot_open, -2, "Failed to open the control file.")                                           \
  /* The control file or the settings file ends too early, or cannot be read. */                   \
  X(cannot_read, -3, "Failed to read the control file.")                                           \
  /* A negative number of records, or a file that cannot be worked on. */                          \
  X(cannot_operate, -4, "Failed to operate the control file.")                                     \
  X(version_mismatch, -5, "The versions of the Format Information files are not the same.")        \
  /* Formats, values and settings */                                                               \
  /* No item of the control file has settings. */                                                  \
  X(no_format_for_item, -6,                                                                        \
    "The format is not set to %s.\nPlease set the format.\nTo close the data generation "          \
    "screen, click Cancel.")                                                                       \
  X(bad_attribute, -7, "There are errors in the attributes.")                                      \
  X(bad_value_digits, -8,                                                                          \
    "There are errors in the number of digits in the start value, the end value, or the "          \
    "increment value.\nPlease reset these after confirming.")                                      \
  X(bad_attribute_characters, -9, "There are errors in the characters of an attribute.")           \
  X(format_too_long, -10,                                                                          \
    "The length of format exceeds the limit.\nPlease reset the format after checking the "         \
    "length.")                                                                                     \
  X(too_many_fixed_parts, -11,                                                                     \
    "The value of the fixed part exceeds the format limit.\nPlease reset the format after "        \
    "checking the length of the fixed part.")                                                      \
  X(too_many_variable_parts, -12,                                                                  \
    "The value of the variable part exceeds the format limit.\nPlease reset the format "           \
    "after checking the length of the variable part.")                                             \
  X(start_count_mismatch, -13,                                                                     \
    "The number of the variable part of the start value and the variable part set in the "         \
    "format do not match.")                                                                        \
  X(end_count_mismatch, -14,                                                                       \
    "The number of the variable part of the end value and the variable part set in the "           \
    "format do not match.")                                                                        \
  X(bad_start_sign, -15,                                                                           \
    "There is an error in the sign of the start value.\nPlease reset the start value.")            \
  X(bad_end_sign, -16,                                                                             \
    "There is an error in the sign of the end value.\nPlease reset the end value.")                \
  X(inconsistent_values, -17,                                                                      \
    "The start value, the end value, and the increment value are inconsistent.")                   \
  X(increment_out_of_range, -18,                                                                   \
    "The increment value exceeds the range that can be set.\nPlease reset the increment "          \
    "value.")                                                                                      \
  X(attribute_format_mismatch, -19, "The settings and the attribute of the format do not match.")  \
  X(bad_increment, -20,                                                                            \
    "There are errors in the increment value.\nPlease reset the increment value.")                 \
  X(decimals_in_character_item, -21, "Cannot set a value including a decimal part as a string.")   \
  X(value_length_mismatch, -22,                                                                    \
    "The number of digits set in the format and the length of the start value or the end "         \
    "value do not match.\nPlease reset the start value or the end value as appropriate for "       \
    "the format.")                                                                                 \
  X(decimals_prohibited, -23, "The attribute prohibits setting a decimal part.")                   \
  X(bad_decimal_point, -24, "There is an error in the location of the decimal point.")             \
  X(value_not_numeric, -25,                                                                        \
    "There is no value set.\nPlease set the start value and end value as numeric.")                \
  /* A full disk has a code of its own, the next one. */                                           \
  X(cannot_write, -26, "Failed to write to the file.")                                             \
  X(disk_full, -27, "Insufficient disk capacity.")                                                 \
  /* The settings file does not exist, or has nothing for the level. */                            \
  X(no_data_file, -28, "Failed to create the data file.")                                          \
  X(same_reference_target, -29, "Selection %s and Reference %s specify the same target.")          \
  X(fixed_part_in_date, -30,                                                                       \
    "Cannot set fixed characters in the format if the attribute is a Date type.")                  \
  X(reference_attribute_differs, -31,                                                              \
    "Cannot reference the data because the attribute is different.")                               \
  X(reference_sign_differs, -32,                                                                   \
    "Cannot reference the data because the attribute of the sign addition is different.")          \
  X(reference_too_wide, -33,                                                                       \
    "Cannot reference the data because the number of digits is too large.")                        \
  X(reference_not_set, -34, "Please specify Reference %s.")                                        \
  X(empty_format, -35, "There are errors in the setting of the format.\nPlease reset the format.") \
  X(format_not_set, -36, "The format is not set.\nPlease set the format.")                         \
  X(start_not_set, -37, "The start value is not set.\nPlease set the start value.")                \
  X(end_not_set, -38, "The end value is not set.\nPlease set the end value.")                      \
  X(increment_not_set, -39, "The increment value is not set.\nPlease set the increment value.")    \
  X(signed_format_for_unsigned, -40, "Cannot set the signed format to unsigned format %s.")        \
  X(signed_part_not_first, -41, "Cannot set the format because it has no sign.")                   \
  X(name_not_set, -42, "The name of %s was not set.\nPlease set the name of %s.")                  \
  X(name_not_selectable, -43,                                                                      \
    "The specified %s is a %s that is not selected, is restricted, or does not "                   \
    "exist.\nClick 'Browse' to select from the list.")                                             \
  X(all_settings_deleted, -44,                                                                     \
    "All of the information in the format was deleted.\nDelete the Format Information file?")      \
  X(number_overflow, -45,                                                                          \
    "Cannot create the numeric data because the range exceeds the maximum.\nThe maximum "          \
    "value is a number with 18 digits.")                                                           \
  X(sign_not_allowed, -46,                                                                         \
    "Cannot set the sign for numeric data with an attribute of 'Numeric without "                  \
    "Sign'.\nPlease reset the format after verifying that the sign is or is not needed.")          \
  X(example_exists, -47, "This format is already set as an example format.")                       \
  X(example_is_default, -48, "Cannot delete default format examples.")                             \
  X(start_out_of_range, -49, "The start value is out of range.\nPlease reset the start value.")    \
  X(end_out_of_range, -50, "The end value is out of range.\nPlease reset the end value.")          \
  X(sign_in_fixed_part, -51, "Cannot set a sign for fixed characters.")                            \
  X(bad_format_digits, -52,                                                                        \
    "There is an error in the number of digits of the format. One character is required to "       \
    "store the sign when the attribute has a sign. The maximum number of digits is one "           \
    "less than the attribute length.")                                                             \
  X(variable_part_too_long, -53,                                                                   \
    "The number of digits of the variable area in the form exceeds the limit.")                    \
  X(bad_date_digits, -54,                                                                          \
    "There are errors in the number of the digits of the DATE that is set as the start "           \
    "value or the end value.")                                                                     \
  X(bad_time_digits, -55,                                                                          \
    "There are errors in the number of digits of TIME that is set as the start value or "          \
    "the end value. Please reset these time values.")                                              \
  X(bad_timestamp_digits, -56,                                                                     \
    "There are errors in the number of the digits of TIME AND DATE that are set as the "           \
    "start value or the end value. Please reset these date values.")                               \
  /* The settings belong to another kind of layout. */                                             \
  X(other_system, -57, "The creating system information does not match the current system.")       \
  X(value_out_of_range, -58,                                                                       \
    "The start value or the end value is out of range. Please set these values within the "        \
    "range.")                                                                                      \
  X(zero_or_not_numeric, -59, "0 or a value other than a numeric was set.")                        \
  X(store_value_missing, -60, "The registry key value does not exist.")                            \
  X(store_failed, -61, "Cannot read the registry key value.")                                      \
  X(store_value_empty, -62, "There is no information in the registry key.")                        \
  X(store_buffer_too_small, -63, "Insufficient space to store the registry key information.")      \
  X(quotation_in_fixed_part, -64,                                                                  \
    "Cannot set a double quotation in a fixed part when a double quotation is designated "         \
    "as the quotation mark.")                                                                      \
  X(null_not_allowed, -65,                                                                         \
    "Cannot set a NULL value to %s that has an attribute of NOT NULL. Please reset the "           \
    "format or reference other %s.")                                                               \
  X(not_null_without_format, -66,                                                                  \
    "%s that has an attribute of NOT NULL is set to no format.\nIs this correct? %s Name: ")       \
  X(no_format, -67, "%s is set to no format. OK?")                                                 \
  X(no_current_level, -68,                                                                         \
    "An error has occurred while accessing the internal information.\nPlease close this "          \
    "process using Cancel Process.")                                                               \
  X(reference_without_decimals, -69,                                                               \
    "Cannot refer to %s because it does not have a decimal part.")                                 \
  X(settings_mismatch, -70,                                                                        \
    "There is a difference between %s information and the format information.")                    \
  X(settings_mismatch_deleted, -71,                                                                \
    "The content of %s information and the content of format information are different. "          \
    "The Format Information file was deleted.")                                                    \
  X(no_such_name, -72, "The specified %s does not exist.\nPlease reset the name of %s.")           \
  X(fixed_part_not_numeric, -73, "No number is set.\nPlease check the format.")                    \
  X(no_such_reference, -74, "There is no %s to be used as a reference.")                           \
  X(invalid_items, -75, "There are some %s specified that are not valid.")                         \
  /* The file was made up to the limit: DGCreateData returns 0. */                                 \
  X(output_limit, -76,                                                                             \
    "Cannot create data output which exceeds 2GB.\nThe first 2GB of output data was "              \
    "created.")                                                                                    \
  X(level_count_mismatch, -77,                                                                     \
    "The number of level items specified in the format information file does not match the "       \
    "number of pieces of level information.")                                                      \
  X(repeat_entry_missing, -78,                                                                     \
    "The level item information corresponding to the item does not exist.")                        \
  X(cancelled, -79, "Data generation was aborted.\nThe data file was not created.")                \
  /* Dialogs, repeats and target files */                                                          \
  X(column_not_registered, -101, "%s could not be registered.\nDGListCtrlColumnInit")              \
  X(repeat_level_zero, -102, "0 cannot be specified as a repeat level.\nSpecify another level.")   \
  X(repeat_count_zero, -103,                                                                       \
    "0 cannot be specified as the number of repeats. Specify another number.")                     \
  X(repeat_level_taken, -104,                                                                      \
    "Repeat is already specified for the same level. Specify another level.")                      \
  X(save_change, -105, "The format information has been changed.\nSave the change?")               \
  X(cancel_change, -106, "The format information has been changed.\nCancel the change?")           \
  X(examples_changed, -107,                                                                        \
    "The format example list has been changed.\nClick OK to save the change.")                     \
  X(first_repeat_level_missing, -108,                                                              \
    "The starting %s of the repeat is not specified.\n1 must be specified as the level of "        \
    "the starting %s of the repeat.")                                                              \
  X(too_many_repeats, -109,                                                                        \
    "The specified number of repeats is larger than the upper limit.\nThe maximum value "          \
    "that can be specified as the number of repeats is %ld.")                                      \
  /* The question that DGCreateData asks with output option 2; it returns 0. */                    \
  X(repeat_exceeds_records, -110,                                                                  \
    "The number of data items that will be generated through repeat is larger than the "           \
    "specified number.%ld data items will be generated.\nDo you want to generate data "            \
    "items up to the specified number?")                                                           \
  X(target_read_denied, -111,                                                                      \
    "The target file has not been assigned the required access permissions.\nContact the "         \
    "system administrator.")                                                                       \
  X(target_folder_missing, -112, "The target folder does not exist.")                              \
  X(target_delete_denied, -113,                                                                    \
    "You do not have access to delete files created in the target folder.\nContact the "           \
    "system administrator.")                                                                       \
  X(target_missing, -114, "The target file does not exist.")                                       \
  X(target_in_use, -115,                                                                           \
    "The target file is exclusively controlled.\nClose the application that is using the "         \
    "target file, then retry.")                                                                    \
  X(target_write_denied, -116,                                                                     \
    "The target file is not assigned write access.\nAssign write access to the target "            \
    "file, then retry.")                                                                           \
  /* Value lists */                                                                                \
  X(enumeration_cannot_open, -121, "The Enumeration file could not be opened.")                    \
  X(enumeration_cannot_read, -122, "The Enumeration file could not be read.")                      \
  X(enumeration_report_cannot_open, -123,                                                          \
    "The error output file of enumeration data could not be opened.\nClose the application "       \
    "opening the error output file, then retry.")                                                  \
  X(enumeration_report_cannot_write, -124,                                                         \
    "The error output file of enumeration data could not be written.")                             \
  X(enumeration_value_too_long, -125, "Data longer than %s has been defined.")                     \
  X(enumeration_not_full_width, -126, "The word %s includes a non-full width character.")          \
  X(enumeration_not_numeric, -127, "The numeric value data %s includes a non-numeric value.")      \
  X(enumeration_two_signs, -128, "The numeric value data %s includes two signs.")                  \
  X(enumeration_inner_sign, -129, "A sign was found in the middle of the numeric value data %s.")  \
  X(enumeration_sign_on_unsigned, -130,                                                            \
    "The numeric value %s which should be unsigned, includes a sign.")                             \
  X(enumeration_two_points, -131, "The numeric value data %s includes two decimal points.")        \
  X(enumeration_too_many_decimals, -132,                                                           \
    "The numeric value %s includes a decimal part which should not be specified.")                 \
  X(enumeration_too_many_integer_digits, -133,                                                     \
    "The numeric value %s includes an integer part which should not be specified.")                \
  X(enumeration_decimals_not_allowed, -134,                                                        \
    "The numeric value %s includes a decimal part which should not be specified.")                 \
  /* The file with the name of the list and ".err" after it says which. */                         \
  X(enumeration_bad_lines, -135,                                                                   \
    "An error occurred while the Enumeration file data was checked.\nCorrect the erroneous "       \
    "data, then retry.")                                                                           \
  X(enumeration_empty, -136,                                                                       \
    "The Enumeration file does not include any data.\nSpecify the data in the Enumeration "        \
    "file.")                                                                                       \
  X(enumeration_not_allowed, -137,                                                                 \
    "This attribute does not allow use of the enumeration type.\nSelect another generation "       \
    "type.")                                                                                       \
  X(enumeration_file_missing, -138, "No enumeration file.\nSpecify a file name.")

#define KORVEX_MESSAGE_NUMBER_BASE 99000
#define KORVEX_MESSAGE_NUMBER(code) (KORVEX_MESSAGE_NUMBER_BASE - (code))

/* korvex_error_cannot_open is -2, and so on. */
enum korvex_error {
  korvex_error_none = 0,
#define KORVEX_ERROR_CODE(name, code, message) korvex_error_##name = code,
  KORVEX_ERRORS(KORVEX_ERROR_CODE)
#undef KORVEX_ERROR_CODE
};

#endif
