#include "run/log_file.h"

#include <new>

#include "platform/path.h"
#include "platform/replacing_file.h"
#include "values/error_codes.h"
#include "values/file_failure.h"

namespace korvex {

using platform::FileCause;
using platform::ReplacingFile;

std::string log_path(const std::string& work_folder, const std::string& data_path) {
  return platform::join_path(work_folder, std::string(platform::stem(data_path)) + ".log");
}

namespace {

constexpr platform::Replacing over_old_log = {
    .link = platform::Replacing::Link::replaced, .holds_old = true, .removes_old = true};

FileCause write_log_to(ReplacingFile& file, const GenerationLog& log) {
  const LogHeader header = {log.records, log.level,
                            static_cast<std::int32_t>(log.item_numbers.size()), 0};
  FileCause cause = file.write(&header, sizeof header);
  if (cause == FileCause::none) {
    cause = file.write(log.item_numbers.data(), log.item_numbers.size() * sizeof(ItemNumber));
  }
  return cause == FileCause::none ? file.finish() : cause;
}

}  // namespace

ErrorCode write_log(const std::string& path, const GenerationLog& log) {
  try {
    ReplacingFile file;
    if (file.create(path, over_old_log) != FileCause::none) return error::cannot_open;
    const FileCause cause = write_log_to(file, log);
    return cause == FileCause::none ? error::none : write_failure(cause);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode clear_log(const std::string& path) {
  ReplacingFile file;
  return file.create(path, over_old_log) == FileCause::none ? error::no_data_file
                                                            : error::cannot_open;
}

}  // namespace korvex
