#include "values/error_texts.h"

#include <algorithm>
#include <array>

#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

namespace {

constexpr std::string_view enumeration_line_prefix = "%d line of a enum file ";

constexpr std::array texts = std::to_array<ErrorText>({
    {-1, "Failed to allocate memory area."},
    {-2, "Failed to open the control file."},
    {-3, "Failed to read the control file."},
    {-4, "Failed to operate the control file."},
    {-5, "The versions of the Format Information files are not the same."},
    {-6,
     "The format is not set to %s.\nPlease set the format.\nTo close the data generation screen, "
     "click Cancel."},
    {-7, "There are errors in the attributes."},
    {-8,
     "There are errors in the number of digits in the start value, the end value, or the increment "
     "value.\nPlease reset these after confirming."},
    {-9, "There are errors in the characters of an attribute."},
    {-10,
     "The length of format exceeds the limit.\nPlease reset the format after checking the length."},
    {-11,
     "The value of the fixed part exceeds the format limit.\nPlease reset the format after "
     "checking the length of the fixed part."},
    {-12,
     "The value of the variable part exceeds the format limit.\nPlease reset the format after "
     "checking the length of the variable part."},
    {-13,
     "The number of the variable part of the start value and the variable part set in the format "
     "do not match."},
    {-14,
     "The number of the variable part of the end value and the variable part set in the format do "
     "not match."},
    {-15, "There is an error in the sign of the start value.\nPlease reset the start value."},
    {-16, "There is an error in the sign of the end value.\nPlease reset the end value."},
    {-17, "The start value, the end value, and the increment value are inconsistent."},
    {-18,
     "The increment value exceeds the range that can be set.\nPlease reset the increment value."},
    {-19, "The settings and the attribute of the format do not match."},
    {-20, "There are errors in the increment value.\nPlease reset the increment value."},
    {-21, "Cannot set a value including a decimal part as a string."},
    {-22,
     "The number of digits set in the format and the length of the start value or the end value do "
     "not match.\nPlease reset the start value or the end value as appropriate for the format."},
    {-23, "The attribute prohibits setting a decimal part."},
    {-24, "There is an error in the location of the decimal point."},
    {-25, "There is no value set.\nPlease set the start value and end value as numeric."},
    {-26, "Failed to write to the file."},
    {-27, "Insufficient disk capacity."},
    {-28, "Failed to create the data file."},
    {-29, "Selection %s and Reference %s specify the same target."},
    {-30, "Cannot set fixed characters in the format if the attribute is a Date type."},
    {-31, "Cannot reference the data because the attribute is different."},
    {-32, "Cannot reference the data because the attribute of the sign addition is different."},
    {-33, "Cannot reference the data because the number of digits is too large."},
    {-34, "Please specify Reference %s."},
    {-35, "There are errors in the setting of the format.\nPlease reset the format."},
    {-36, "The format is not set.\nPlease set the format."},
    {-37, "The start value is not set.\nPlease set the start value."},
    {-38, "The end value is not set.\nPlease set the end value."},
    {-39, "The increment value is not set.\nPlease set the increment value."},
    {-40, "Cannot set the signed format to unsigned format %s."},
    {-41, "Cannot set the format because it has no sign."},
    {-42, "The name of %s was not set.\nPlease set the name of %s."},
    {-43,
     "The specified %s is a %s that is not selected, is restricted, or does not exist.\nClick "
     "'Browse' to select from the list."},
    {-44, "All of the information in the format was deleted.\nDelete the Format Information file?"},
    {-45,
     "Cannot create the numeric data because the range exceeds the maximum.\nThe maximum value is "
     "a number with 18 digits."},
    {-46,
     "Cannot set the sign for numeric data with an attribute of 'Numeric without Sign'.\nPlease "
     "reset the format after verifying that the sign is or is not needed."},
    {-47, "This format is already set as an example format."},
    {-48, "Cannot delete default format examples."},
    {-49, "The start value is out of range.\nPlease reset the start value."},
    {-50, "The end value is out of range.\nPlease reset the end value."},
    {-51, "Cannot set a sign for fixed characters."},
    {-52,
     "There is an error in the number of digits of the format. One character is required to store "
     "the sign when the attribute has a sign. The maximum number of digits is one less than the "
     "attribute length."},
    {-53, "The number of digits of the variable area in the form exceeds the limit."},
    {-54,
     "There are errors in the number of the digits of the DATE that is set as the start value or "
     "the end value."},
    {-55,
     "There are errors in the number of digits of TIME that is set as the start value or the end "
     "value. Please reset these time values."},
    {-56,
     "There are errors in the number of the digits of TIME AND DATE that are set as the start "
     "value or the end value. Please reset these date values."},
    {-57, "The creating system information does not match the current system."},
    {-58,
     "The start value or the end value is out of range. Please set these values within the range."},
    {-59, "0 or a value other than a numeric was set."},
    {-60, "The registry key value does not exist."},
    {-61, "Cannot read the registry key value."},
    {-62, "There is no information in the registry key."},
    {-63, "Insufficient space to store the registry key information."},
    {-64,
     "Cannot set a double quotation in a fixed part when a double quotation is designated as the "
     "quotation mark."},
    {-65,
     "Cannot set a NULL value to %s that has an attribute of NOT NULL. Please reset the format or "
     "reference other %s."},
    {-66, "%s that has an attribute of NOT NULL is set to no format.\nIs this correct? %s Name: "},
    {-67, "%s is set to no format. OK?"},
    {-68,
     "An error has occurred while accessing the internal information.\nPlease close this process "
     "using Cancel Process."},
    {-69, "Cannot refer to %s because it does not have a decimal part."},
    {-70, "There is a difference between %s information and the format information."},
    {-71,
     "The content of %s information and the content of format information are different. The "
     "Format Information file was deleted."},
    {-72, "The specified %s does not exist.\nPlease reset the name of %s."},
    {-73, "No number is set.\nPlease check the format."},
    {-74, "There is no %s to be used as a reference."},
    {-75, "There are some %s specified that are not valid."},
    {-76,
     "Cannot create data output which exceeds 2GB.\nThe first 2GB of output data was created."},
    {-77,
     "The number of level items specified in the format information file does not match the number "
     "of pieces of level information."},
    {-78, "The level item information corresponding to the item does not exist."},
    {-79, "Data generation was aborted.\nThe data file was not created."},
    {-101, "%s could not be registered.\nDGListCtrlColumnInit"},
    {-102, "0 cannot be specified as a repeat level.\nSpecify another level."},
    {-103, "0 cannot be specified as the number of repeats. Specify another number."},
    {-104, "Repeat is already specified for the same level. Specify another level."},
    {-105, "The format information has been changed.\nSave the change?"},
    {-106, "The format information has been changed.\nCancel the change?"},
    {-107, "The format example list has been changed.\nClick OK to save the change."},
    {-108,
     "The starting %s of the repeat is not specified.\n1 must be specified as the level of the "
     "starting %s of the repeat."},
    {-109,
     "The specified number of repeats is larger than the upper limit.\nThe maximum value that can "
     "be specified as the number of repeats is %ld."},
    {-110,
     "The number of data items that will be generated through repeat is larger than the specified "
     "number.%ld data items will be generated.\nDo you want to generate data items up to the "
     "specified number?"},
    {-111,
     "The target file has not been assigned the required access permissions.\nContact the system "
     "administrator."},
    {-112, "The target folder does not exist."},
    {-113,
     "You do not have access to delete files created in the target folder.\nContact the system "
     "administrator."},
    {-114, "The target file does not exist."},
    {-115,
     "The target file is exclusively controlled.\nClose the application that is using the target "
     "file, then retry."},
    {-116,
     "The target file is not assigned write access.\nAssign write access to the target file, then "
     "retry."},
    {-121, "The Enumeration file could not be opened."},
    {-122, "The Enumeration file could not be read."},
    {-123,
     "The error output file of enumeration data could not be opened.\nClose the application "
     "opening the error output file, then retry."},
    {-124, "The error output file of enumeration data could not be written."},
    {-125, "Data longer than %s has been defined."},
    {-126, "The word %s includes a non-full width character."},
    {-127, "The numeric value data %s includes a non-numeric value."},
    {-128, "The numeric value data %s includes two signs."},
    {-129, "A sign was found in the middle of the numeric value data %s."},
    {-130, "The numeric value %s which should be unsigned, includes a sign."},
    {-131, "The numeric value data %s includes two decimal points."},
    {-132, "The numeric value %s includes a decimal part which should not be specified."},
    {-133, "The numeric value %s includes an integer part which should not be specified."},
    {-134, "The numeric value %s includes a decimal part which should not be specified."},
    {-135,
     "An error occurred while the Enumeration file data was checked.\nCorrect the erroneous data, "
     "then retry."},
    {-136,
     "The Enumeration file does not include any data.\nSpecify the data in the Enumeration file."},
    {-137,
     "This attribute does not allow use of the enumeration type.\nSelect another generation type."},
    {-138, "No enumeration file.\nSpecify a file name."},
});

bool names_enumeration_line(ErrorCode code) {
  return code <= error::enumeration_value_too_long &&
         code >= error::enumeration_decimals_not_allowed;
}

std::string_view layout_word(ErrorCode code, LayoutKind layout) {
  if (layout == layout_kind::record_file) return "Item";
  const bool about_table =
      code == error::settings_mismatch || code == error::settings_mismatch_deleted;
  return about_table ? "Table" : "Column";
}

std::string with_word(std::string_view message, std::string_view word) {
  std::string text(message);
  for (auto place = text.find("%s"); place != std::string::npos;
       place = text.find("%s", place + word.size())) {
    text.replace(place, 2, word);
  }
  return text;
}

}  // namespace

std::span<const ErrorText> error_texts() { return texts; }

std::string error_message(ErrorCode code, LayoutKind layout) {
  const auto row = std::find_if(texts.begin(), texts.end(),
                                [code](const ErrorText& entry) { return entry.code == code; });
  return row == texts.end() ? std::string() : with_word(row->text, layout_word(code, layout));
}

void append_error_text(ErrorCode code, LayoutKind layout, std::string& text) {
  if (names_enumeration_line(code)) {
    text = enumeration_line_prefix;
  } else {
    text += std::to_string(error::message_number(code)) + ":";
  }
  text += error_message(code, layout);
}

std::string fill_number(std::string text, std::uint64_t number) {
  const auto place = std::min(text.find("%ld"), text.find("%d"));
  if (place == std::string::npos) return text;
  const std::size_t size = text[place + 1] == 'l' ? 3 : 2;
  return text.replace(place, size, std::to_string(number));
}

}  // namespace korvex
