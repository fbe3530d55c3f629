#include "generate/log_file.h"

#include <new>

#include "format/error_codes.h"
#include "format/file_failure.h"
#include "platform/file.h"
#include "platform/path.h"

namespace korvex {

using platform::File;
using platform::FileCause;

std::string log_path(const std::string& work_folder, const std::string& data_path) {
  return platform::join_path(work_folder, std::string(platform::stem(data_path)) + ".log");
}

namespace {

FileCause write_log_to(File& file, const GenerationLog& log) {
  const LogHeader header = {log.records, log.level,
                            static_cast<std::int32_t>(log.item_numbers.size()), 0};
  FileCause cause = file.write(&header, sizeof header);
  if (cause == FileCause::none) {
    cause = file.write(log.item_numbers.data(), log.item_numbers.size() * sizeof(std::int32_t));
  }
  return cause == FileCause::none ? file.close() : cause;
}

}  // namespace

std::int32_t write_log(const std::string& path, const GenerationLog& log) {
  File file;
  if (file.create(path) != FileCause::none) return error::cannot_open;
  std::int32_t result = 0;
  try {
    const FileCause cause = write_log_to(file, log);
    if (cause != FileCause::none) result = write_failure(cause);
  } catch (const std::bad_alloc&) {
    result = error::out_of_memory;
  }
  if (result != 0) file.remove(path);
  return result;
}

std::int32_t clear_log(const std::string& path) {
  File file;
  if (file.create(path) != FileCause::none) return error::cannot_open;
  file.remove(path);
  return error::no_data_file;
}

}  // namespace korvex
