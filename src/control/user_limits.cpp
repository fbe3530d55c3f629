#include "control/user_limits.h"

#include <algorithm>

#include "platform/text_lines.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

std::uint64_t read_limit(const platform::SettingsStore& store, std::string_view name,
                         std::uint64_t default_value) {
  std::string text;
  if (read_store_value(store, name, limit_buffer_size, text) == error::none) {
    const bool is_number = std::all_of(text.begin(), text.end(), platform::is_digit);
    // In 64-bit arithmetic that wraps.
    if (is_number) return platform::number_of_digits<std::uint64_t>(text);
  }
  write_store_value(store, name, std::to_string(default_value));
  return default_value;
}

}  // namespace

ErrorCode read_store_value(const platform::SettingsStore& store, std::string_view name,
                           std::size_t capacity, std::string& value) {
  switch (store.read(name, value)) {
    case platform::StoreStatus::ok:
      break;
    case platform::StoreStatus::key_missing:
    case platform::StoreStatus::value_missing:
      return error::store_value_missing;
    default:
      return error::store_failed;
  }
  if (value.size() + 1 > capacity) return error::store_buffer_too_small;
  return value.empty() ? error::store_value_empty : error::none;
}

ErrorCode write_store_value(const platform::SettingsStore& store, std::string_view name,
                            std::string_view value) {
  return store.write(name, value) == platform::StoreStatus::ok ? error::none : error::store_failed;
}

Limits read_limits(const platform::SettingsStore& store) {
  Limits limits;
  limits.file_size_max = read_limit(store, "CheckFileSizeMax", default_file_size_max);
  // Nothing could ever be generated below a limit of 0.
  if (limits.file_size_max == 0) limits.file_size_max = default_file_size_max;
  limits.repeat_max = read_limit(store, "RepeatLevelNumMax", 0);
  return limits;
}

}  // namespace korvex
