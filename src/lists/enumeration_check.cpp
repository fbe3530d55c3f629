#include "lists/enumeration_check.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>

#include "lists/enumeration_value.h"
#include "lists/line_reader.h"
#include "platform/file.h"
#include "platform/interruption.h"
#include "platform/replacing_file.h"
#include "values/error_codes.h"
#include "values/error_texts.h"

namespace korvex {

namespace {

static_assert(LineReader::max_line_size <= ClEnumDataList::max_value_size);
static_assert(LineReader::overhang >= ClEnumDataList::overhang);

using platform::File;
using platform::FileCause;

constexpr ListLine last_line{std::numeric_limits<std::int32_t>::max()};

constexpr std::uint64_t whole_file = std::numeric_limits<std::uint64_t>::max();

// Reads the file's lines into `values`, unless that is null, up to those around the first bad line.
// `refuse` gets the code of each bad line, and answers error::none to go on or what to end with.
// Stops when `bytes_left` are used up, which it counts down.
template <typename Refuse>
ErrorCode read_values(File& file, const FmtColRec& settings, std::uint64_t& bytes_left,
                      ListLine& line, std::size_t& value_count, ClEnumDataList* values,
                      Refuse refuse) {
  const EnumerationRule rule(attributes_of(settings));
  LineReader reader(file);
  std::span<const std::string_view> lines;
  while (bytes_left > 0) {
    if (platform::is_interrupted()) return error::cancelled;
    const LineReader::Status status = reader.next(lines);
    if (status == LineReader::Status::end) return error::none;
    if (status == LineReader::Status::failed) return error::enumeration_cannot_read;
    for (const std::string_view value : lines) {
      if (line == last_line) return error::enumeration_cannot_read;
      line = ListLine{number_of(line) + 1};
      if (value.empty()) continue;
      ++value_count;
      const ErrorCode failure = rule.check(value);
      if (failure == error::none) continue;
      values = nullptr;
      const ErrorCode result = refuse(failure);
      if (result != error::none) return result;
    }
    if (values != nullptr) values->append(lines);
    const auto bytes = static_cast<std::uint64_t>(lines.back().end() - lines.front().begin());
    bytes_left -= std::min(bytes_left, bytes);
  }
  return error::none;
}

ErrorCode check_access(ClColMain& main, const std::string& path, platform::Sharing sharing) {
  main.message_context = platform::MessageText::path(path) + "\n";
  ErrorCode result = check_file_exists(path);
  if (result == error::none) result = check_file_not_in_use(path, sharing);
  if (result == error::none) result = check_file_readable(path);
  return result;
}

ErrorCode open_values(const std::string& path, File& file) {
  const FileCause cause = file.open_for_reading(path, platform::Sharing::shared);
  // A device or a pipe may never end.
  return cause == FileCause::none && file.is_regular() ? error::none
                                                       : error::enumeration_cannot_open;
}

// The ".err" file of a load: one message a bad line. No report stays, also no older one, unless it
// was kept.
class BadLineReport {
 public:
  BadLineReport(const std::string& path, LayoutKind layout_kind)
      : path_(path), layout_kind_(layout_kind) {}

  bool open() { return file_.create(path_, over_old_report) == FileCause::none; }

  bool add(ErrorCode code, ListLine line) {
    has_lines_ = true;
    std::string message;
    if (code == error::enumeration_not_allowed) {
      message = error_message(code, layout_kind_);
    } else {
      append_error_text(code, layout_kind_, message);
      message = fill_number(message, number_of(line));
    }
    message += '\n';
    return file_.write(message.data(), message.size()) == FileCause::none;
  }

  bool has_lines() const { return has_lines_; }

  // Leaves an older report as it is.
  void leave_old() { file_.leave_old(); }

  // False when it could not be written.
  bool keep() { return file_.finish() == FileCause::none; }

 private:
  static constexpr platform::Replacing over_old_report = {
      .link = platform::Replacing::Link::replaced, .holds_old = true, .removes_old = true};

  const std::string& path_;
  LayoutKind layout_kind_;
  platform::ReplacingFile file_;
  bool has_lines_ = false;
};

Result<std::size_t> load_values(ClColMain& main, const std::string& path, const FmtColRec& settings,
                                ClEnumDataList& values) {
  ErrorCode result = check_access(main, path, platform::Sharing::exclusive);
  if (result != error::none) return result;
  File file;
  result = open_values(path, file);
  if (result != error::none) return result;
  main.error_file_path = error_file_path(path);
  BadLineReport report(main.error_file_path, main.layout_kind());
  if (!report.open()) return error::enumeration_report_cannot_open;

  ListLine line = ListLine::none;
  std::size_t value_count = 0;
  std::uint64_t bytes = 0;
  if (file.size(bytes) == FileCause::none) values.reserve(bytes);
  std::uint64_t bytes_left = whole_file;
  result =
      read_values(file, settings, bytes_left, line, value_count, &values, [&](ErrorCode failure) {
        return report.add(failure, line) ? error::none : error::enumeration_report_cannot_write;
      });
  if (result == error::cancelled) report.leave_old();
  if (result != error::none) return result;
  if (report.has_lines()) {
    return report.keep() ? error::enumeration_bad_lines : error::enumeration_report_cannot_write;
  }
  if (value_count == 0) return error::enumeration_empty;
  return value_count;
}

Result<std::size_t> check_values(ClColMain& main, const std::string& path,
                                 const FmtColRec& settings, std::uint64_t& bytes_left,
                                 ListLine& line, ClEnumDataList* values,
                                 platform::Sharing sharing = platform::Sharing::exclusive) {
  line = ListLine::none;
  try {
    ErrorCode result = check_access(main, path, sharing);
    if (result != error::none) return result;
    File file;
    result = open_values(path, file);
    if (result != error::none) return result;
    std::size_t value_count = 0;
    result = read_values(file, settings, bytes_left, line, value_count, values,
                         [](ErrorCode failure) { return failure; });
    if (result != error::none) return result;
    if (value_count == 0) return error::enumeration_empty;
    return value_count;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

}  // namespace

Result<std::size_t> check_enumeration(ClColMain& main, const std::string& path,
                                      const FmtColRec& settings, ListLine& line,
                                      ClEnumDataList* values, platform::Sharing sharing) {
  std::uint64_t bytes_left = whole_file;
  return check_values(main, path, settings, bytes_left, line, values, sharing);
}

Result<std::size_t> look_into_enumeration(ClColMain& main, const std::string& path,
                                          const FmtColRec& settings, std::uint64_t most_bytes,
                                          ListLine& line, ClEnumDataList& values, bool& is_whole) {
  std::uint64_t bytes_left = most_bytes;
  const Result<std::size_t> result = check_values(main, path, settings, bytes_left, line, &values);
  is_whole = bytes_left > 0;
  return result;
}

std::string error_file_path(const std::string& path) { return path + ".err"; }

Result<std::size_t> load_enumeration(ClColMain& main, const std::string& path,
                                     const FmtColRec& settings, ClEnumDataList& values) {
  try {
    return load_values(main, path, settings, values);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

using platform::File;
using platform::FileCause;
using platform::Sharing;

ErrorCode check_file_exists(const std::string& path) {
  const FileCause cause = File().open_for_reading(path, Sharing::shared);
  return is_missing(cause) || cause == FileCause::generic ? error::target_missing : error::none;
}

ErrorCode check_file_not_in_use(const std::string& path, Sharing sharing) {
  const FileCause cause = File().open_for_reading(path, sharing);
  return cause == FileCause::sharing_violation ? error::target_in_use : error::none;
}

ErrorCode check_file_readable(const std::string& path) {
  const FileCause cause = File().open_for_reading(path, Sharing::shared);
  return cause == FileCause::access_denied ? error::target_read_denied : error::none;
}

ErrorCode check_file_writable(const std::string& path) {
  const FileCause cause = File().open_for_writing(path);
  return cause == FileCause::access_denied ? error::target_write_denied : error::none;
}

}  // namespace korvex
