#include "generate/log_file.h"

#include "format/error_codes.h"
#include "format/file_failure.h"
#include "platform/file.h"
#include "platform/path.h"

namespace korvex {

std::string log_path(const std::string& work_folder, const std::string& data_path) {
  return platform::join_path(work_folder, std::string(platform::stem(data_path)) + ".log");
}

std::int32_t write_log(const std::string& path, const GenerationLog& log) {
  platform::File file;
  if (file.create(path) != platform::FileCause::none) return error::cannot_open;
  const LogHeader header = {log.records, log.level,
                            static_cast<std::int32_t>(log.item_numbers.size()), 0};
  platform::FileCause cause = file.write(&header, sizeof header);
  if (cause == platform::FileCause::none) {
    cause = file.write(log.item_numbers.data(), log.item_numbers.size() * sizeof(std::int32_t));
  }
  if (cause == platform::FileCause::none) cause = file.close();
  if (cause == platform::FileCause::none) return 0;
  file.remove(path);
  return write_failure(cause);
}

std::int32_t clear_log(const std::string& path) {
  platform::File file;
  if (file.create(path) != platform::FileCause::none) return error::cannot_open;
  file.remove(path);
  return error::no_data_file;
}

}  // namespace korvex
