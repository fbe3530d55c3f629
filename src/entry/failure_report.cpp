#include "entry/failure_report.h"

#include "values/error_codes.h"
#include "values/error_texts.h"

namespace korvex {

namespace {

using platform::MessageText;

bool names_enumeration_file(ErrorCode code) {
  return code == error::enumeration_empty ||
         (code >= error::enumeration_decimals_not_allowed &&
          code <= error::enumeration_value_too_long) ||
         code == error::enumeration_cannot_open || code == error::enumeration_cannot_read ||
         (code >= error::target_in_use && code <= error::target_read_denied);
}

}  // namespace

FailureReport describe_failure(ErrorCode code, const ClColMain& main, ListLine line) {
  std::string words;
  main.append_error_text(code, words);
  if (line != ListLine::none) words = fill_number(words, number_of(line));
  if (code == error::too_many_repeats) {
    words = fill_number(words, main.largest_repeat_count);
  }
  const MessageText text = MessageText::words(words);
  const MessageText error_file = MessageText::path(main.error_file_path);
  FailureReport report;
  report.returned = number_of(code);
  switch (code) {
    case error::repeat_exceeds_records:
      report.is_shown = false;
      report.returned = 0;
      break;
    case error::output_limit:
      report.text =
          "The size of the data exceeds the size that Varkel can operate accurately." + text;
      report.returned = 0;
      break;
    case error::enumeration_bad_lines:
      report.kind = platform::MessageKind::warning_question;
      report.text = main.message_context + text + "\nError file " + error_file +
                    " was created. \nView the file?";
      break;
    case error::enumeration_report_cannot_write:
    case error::enumeration_report_cannot_open:
      report.text = error_file + "\n" + text;
      break;
    case error::repeat_level_taken:
      report.text = text + main.message_context;
      break;
    case error::too_many_repeats:
    case error::cancelled:
      report.text = text;
      break;
    default:
      report.text = names_enumeration_file(code) ? main.message_context + text
                                                 : "Failed to generate data.\n" + text;
  }
  return report;
}

std::int32_t report_failure(ErrorCode code, const ClColMain& main) {
  const FailureReport report = describe_failure(code, main);
  if (report.is_shown) {
    const platform::Answer answer =
        platform::user_interface().show_message(report.kind, report.text);
    if (answer == platform::Answer::yes) platform::open_in_editor(main.error_file_path);
  }
  return report.returned;
}

}  // namespace korvex
