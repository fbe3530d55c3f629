#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"
#include "values/error_codes.h"

namespace korvex {

inline constexpr std::array<std::string_view, 9> default_format_examples = {
    "%D", "%U", "%s", "%S", "%N", "%YMD", "%YMA", "%T", "%TS"};
inline constexpr std::size_t max_format_examples = 100;

// The user's settings that hold the examples, and the most characters that each takes.
inline constexpr std::array<std::string_view, 3> format_example_values = {"ListFmt1", "ListFmt2",
                                                                          "ListFmt3"};
inline constexpr std::size_t max_example_piece_size = 1023;

// The list of formats that a user may pick from: the default ones, which cannot be deleted, and
// after them the user's own, which are kept in the settings store. Positions count from 0.
class FormatExamples {
 public:
  FormatExamples();

  // Appends the user's examples, up to the first setting that is missing, empty or unreadable or
  // until the list is full.
  void load(const platform::SettingsStore& store);

  // Writes the user's examples over the three settings, one that is not needed as an empty text.
  // Examples that do not fit are left out; one with a comma will be read back as two. -61,
  // and the settings before the one that failed are then written.
  ErrorCode save(const platform::SettingsStore& store) const;

  const std::vector<std::string>& entries() const { return entries_; }
  bool contains(std::string_view format) const;

  bool can_add() const { return entries_.size() < max_format_examples; }
  bool has_user_examples() const { return entries_.size() > default_format_examples.size(); }
  bool can_delete() const { return has_user_examples(); }

  // Appends a checked format; a full list refuses it.
  bool add(std::string_view format);

  // Deletes one of the user's examples. False for any other position, such as -1 for none.
  bool erase(std::int32_t position);

 private:
  std::array<std::string, format_example_values.size()> pieces() const;

  std::vector<std::string> entries_;
};

}  // namespace korvex
