#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/settings_store.h"
#include "values/error_codes.h"

namespace korvex {

inline constexpr std::uint64_t default_file_size_max = 10'000'000'000;
inline constexpr std::size_t limit_buffer_size = 1024;

// Reads a text of the user's settings store, whose size with a terminator must not exceed
// `capacity`. -60 no such value, -61 unreadable, -62 empty, -63 larger than the capacity.
ErrorCode read_store_value(const platform::SettingsStore& store, std::string_view name,
                           std::size_t capacity, std::string& value);

// -61.
ErrorCode write_store_value(const platform::SettingsStore& store, std::string_view name,
                            std::string_view value);

// The two limits that a user may set.
struct Limits {
  std::uint64_t file_size_max = default_file_size_max;  // bytes; never 0
  std::uint64_t repeat_max = 0;                         // repeated items; 0 means no limit
};

// Reads both limits; one that is missing or no number gets its default, which is written back so
// that the user finds it. A store that cannot be written changes nothing.
Limits read_limits(const platform::SettingsStore& store);

}  // namespace korvex
