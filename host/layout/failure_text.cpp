#include "host/layout/failure_text.h"

#include <cerrno>
#include <system_error>

#include "entry/failure_report.h"
#include "platform/file.h"
#include "values/error_codes.h"
#include "values/error_texts.h"

namespace korvex::host {

namespace {

// Those that leave open why; "Insufficient disk capacity" may be a quota's.
bool is_about_a_file(ErrorCode code) {
  const auto is_within = [code](ErrorCode first, ErrorCode last) {
    return code <= first && code >= last;
  };
  return is_within(error::cannot_open, error::cannot_operate) ||
         is_within(error::cannot_write, error::disk_full) ||
         is_within(error::enumeration_cannot_open, error::enumeration_report_cannot_write);
}

}  // namespace

std::string reason_of(ErrorCode code, int error_number) {
  if (error_number == 0 || !is_about_a_file(code)) return {};
  return "reason: " + (error_number == EWOULDBLOCK ? "another program holds the file"
                                                   : std::generic_category().message(error_number));
}

std::string with_reason(std::string message, ErrorCode code) {
  const std::string reason = reason_of(code, platform::last_file_error());
  return reason.empty() ? message : message + "\n" + reason;
}

std::string failure_text(ErrorCode code, const ClColMain& main, ListLine bad_line) {
  return with_reason(describe_failure(code, main, bad_line).text.utf8(), code);
}

std::string numbered_message(ErrorCode code, const Layout& layout) {
  std::string text;
  append_error_text(code, layout.kind, text);
  return with_reason(text, code);
}

}  // namespace korvex::host
