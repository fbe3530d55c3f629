#pragma once

#include <string>
#include <string_view>

namespace korvex::platform {

enum class StoreStatus { ok, key_missing, value_missing, failure };

// A per-user store of named texts, one key a host program:
// ${XDG_CONFIG_HOME:-$HOME/.config}/<key>/Korvex.conf, a line `Name=Value` each.
//
// Without a folder for the user's configuration, or with a key that is no plain name of a folder,
// every operation fails.
//
// Reading opens the file again each time, so what a user edits counts at once. Writing replaces the
// file in one step under a lock, and keeps every line that it does not change. Safe between
// processes; one object is used by one thread.
class SettingsStore {
 public:
  // `key` is the name of the host's folder; see host_key().
  explicit SettingsStore(std::string_view key);

  // Empty when every operation fails.
  const std::string& path() const { return path_; }

  StoreStatus read(std::string_view name, std::string& value) const;

  // A value with a line end in it is refused.
  StoreStatus write(std::string_view name, std::string_view value) const;

 private:
  std::string folder_;
  std::string path_;
};

// $KORVEX_HOST_KEY where that is the plain name of a folder, else the short name of the running
// program.
std::string host_key();

}  // namespace korvex::platform
