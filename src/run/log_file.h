#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

// The log file begins with this record; `item_count` 32-bit item numbers follow it.
struct LogHeader {
  StoredRecords records;
  SettingsLevel level;
  std::int32_t item_count;
  std::int32_t reserved;
};
static_assert(sizeof(LogHeader) == 16);

// What a successful run tells the host.
struct GenerationLog {
  StoredRecords records{};
  SettingsLevel level{};
  std::vector<ItemNumber> item_numbers;  // in the order in which a record holds them
};

// The work folder and the data file's base name with the extension ".log".
std::string log_path(const std::string& work_folder, const std::string& data_path);

// -2 when the log cannot be created, -1, -26 or -27 when it cannot be written; no log stays
// then, also no older one, which would speak of another data file. A link at the path is replaced.
ErrorCode write_log(const std::string& path, const GenerationLog& log);

// The log of a run that found no settings: an older log goes, none stays. -28, or -2.
ErrorCode clear_log(const std::string& path);

}  // namespace korvex
