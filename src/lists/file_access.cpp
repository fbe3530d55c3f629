#include "lists/file_access.h"

#include "platform/file.h"
#include "values/error_codes.h"

namespace korvex {

using platform::File;
using platform::FileCause;
using platform::Sharing;

ErrorCode check_file_exists(const std::string& path) {
  const FileCause cause = File().open_for_reading(path, Sharing::shared);
  return is_missing(cause) || cause == FileCause::generic ? error::target_missing : error::none;
}

ErrorCode check_file_not_in_use(const std::string& path) {
  const FileCause cause = File().open_for_reading(path, Sharing::exclusive);
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
