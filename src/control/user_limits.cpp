#include "control/user_limits.h"

#include <optional>

#include "values/error_codes.h"

namespace korvex {

namespace {

// All digits, in 64-bit arithmetic that wraps; nothing at the first other character.
std::optional<std::uint64_t> read_digits(std::string_view text) {
  std::uint64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
  }
  return value;
}

std::uint64_t read_limit(const platform::SettingsStore& store, std::string_view name,
                         std::uint64_t default_value) {
  std::string text;
  if (read_store_value(store, name, limit_buffer_size, text) == 0) {
    if (const auto value = read_digits(text)) return *value;
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
