#include "host/commands/show.h"

#include <array>
#include <limits>
#include <new>
#include <ostream>
#include <vector>

#include "platform/file.h"
#include "settings/settings_reader.h"
#include "values/records.h"

namespace korvex::host {

namespace {

// Offsets in the files are 32 bits.
constexpr std::uint64_t largest_file = std::numeric_limits<std::int32_t>::max();

std::string open_failure(platform::FileCause cause) {
  if (is_missing(cause)) return "there is no such file";
  switch (cause) {
    case platform::FileCause::access_denied:
      return "the file cannot be opened: access denied";
    case platform::FileCause::sharing_violation:
      return "another program holds the file";
    default:
      return "the file cannot be opened";
  }
}

// Reads the file; answers why not, or an empty text.
std::string read_file(const std::string& path, std::vector<char>& bytes) {
  platform::File file;
  const platform::FileCause cause = file.open_for_reading(path, platform::Sharing::shared);
  if (cause != platform::FileCause::none) return open_failure(cause);
  if (!file.is_regular()) return "this is not a regular file";
  std::uint64_t size = 0;
  if (file.size(size) != platform::FileCause::none) return "the file cannot be read";
  if (size > largest_file) return "the file is larger than any control, settings or log file";
  return read_front(file, size, bytes) ? "" : "the file cannot be read";
}

}  // namespace

std::string show_file(const std::string& path, std::ostream& out) {
  std::vector<char> content;
  try {
    const std::string failure = read_file(path, content);
    if (!failure.empty()) return failure;
  } catch (const std::bad_alloc&) {
    return "the file is larger than the memory";
  }
  const std::string_view bytes(content.data(), content.size());
  if (is_settings_file(bytes)) return print_settings_file(bytes, out);
  if (is_control_file(bytes)) {
    print_control_file(bytes, out);
    return {};
  }
  if (is_log_file(bytes)) {
    print_log_file(bytes, out);
    return {};
  }
  return "this is no control file, Format Information file or log file, or it is cut short";
}

}  // namespace korvex::host
