#include "platform/settings_store.h"

#include <errno.h>
#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/interruption.h"
#include "platform/path.h"
#include "platform/replacing_file.h"
#include "platform/text_lines.h"

namespace korvex::platform {

namespace {

constexpr const char* file_name = "Korvex.conf";
constexpr std::size_t max_file_size = 1024 * 1024;

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string home_folder() {
  const std::string home = environment("HOME");
  if (!home.empty()) return home;
  struct passwd entry = {};
  struct passwd* found = nullptr;
  std::array<char, 4096> texts;
  const int result = ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
  return result == 0 && found != nullptr ? entry.pw_dir : "";
}

// Empty when the user has no folder for it.
std::string configuration_folder() {
  const std::string configured = environment("XDG_CONFIG_HOME");
  if (configured.starts_with('/')) return configured;
  const std::string home = home_folder();
  return home.starts_with('/') ? join_path(home, ".config") : "";
}

FileCause read_whole(const std::string& path, std::string& content) {
  File file;
  FileCause cause = file.open_for_reading(path, Sharing::unlocked);
  if (cause != FileCause::none) return cause;
  std::uint64_t size = 0;
  cause = file.size(size);
  // What is too large to be held could not be written back.
  if (cause != FileCause::none || size > max_file_size) return FileCause::generic;
  content.resize(size);
  std::size_t count = 0;
  cause = file.read(content.data(), content.size(), count);
  content.resize(count);
  return cause;
}

bool make_folders(const std::string& folder) {
  for (std::size_t slash = folder.find('/', 1);; slash = folder.find('/', slash + 1)) {
    const std::string part = folder.substr(0, slash);
    if (file_calls().mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) return false;
    if (slash == std::string::npos) return true;
  }
}

// How often the lock is tried, and the pause between: whoever holds it is writing a short file.
constexpr int lock_attempts = 20;
constexpr auto lock_pause = std::chrono::milliseconds(10);

// Keeps other writers out while it lives. Gives up when another process keeps it.
class StoreLock {
 public:
  explicit StoreLock(const std::string& path)
      : descriptor_(retry_interrupted([&] {
          return file_calls().open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        })) {
    for (int i = 0; descriptor_ >= 0 && !held_ && i < lock_attempts; ++i) {
      if (i > 0) std::this_thread::sleep_for(lock_pause);
      held_ = hold_file(descriptor_, Sharing::exclusive);
    }
  }
  ~StoreLock() {
    if (descriptor_ >= 0) file_calls().close(descriptor_);
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  bool held() const { return held_; }

 private:
  int descriptor_;
  bool held_ = false;
};

// The value part of the line that sets `name`, where it stands; nothing when there is none. A file
// edited elsewhere may end its lines with a carriage return as well.
std::optional<std::string_view> find_value(std::string_view content, std::string_view name) {
  while (!content.empty()) {
    std::string_view value = take_line(content);
    if (!value.starts_with(name)) continue;
    value.remove_prefix(name.size());
    if (value.starts_with('=')) return value.substr(1);
  }
  return std::nullopt;
}

}  // namespace

SettingsStore::SettingsStore(std::string_view key) {
  const std::string configuration = configuration_folder();
  if (configuration.empty() || !is_plain_name(key)) return;
  folder_ = join_path(configuration, key);
  path_ = join_path(folder_, file_name);
}

StoreStatus SettingsStore::read(std::string_view name, std::string& value) const {
  if (path_.empty()) return StoreStatus::failure;
  std::string content;
  const FileCause cause = read_whole(path_, content);
  if (is_missing(cause)) return StoreStatus::key_missing;
  if (cause != FileCause::none) return StoreStatus::failure;
  const auto found = find_value(content, name);
  if (!found) return StoreStatus::value_missing;
  value = *found;
  return StoreStatus::ok;
}

StoreStatus SettingsStore::write(std::string_view name, std::string_view value) const {
  if (path_.empty() || value.find('\n') != std::string_view::npos || !make_folders(folder_) ||
      is_write_protected(path_)) {
    return StoreStatus::failure;
  }
  const StoreLock lock(path_ + ".lock");
  if (!lock.held()) return StoreStatus::failure;

  std::string content;
  const FileCause cause = read_whole(path_, content);
  if (cause != FileCause::none && !is_missing(cause)) return StoreStatus::failure;

  if (const auto found = find_value(content, name)) {
    const auto offset = static_cast<std::size_t>(found->data() - content.data());
    content.replace(offset, found->size(), value);
  } else {
    if (!content.empty() && content.back() != '\n') content += '\n';
    content.append(name).append("=").append(value).append("\n");
  }

  ReplacingFile file;
  const bool is_written =
      file.create_as(path_ + ".new", path_, {.is_synchronised = true}) == FileCause::none &&
      file.write(content.data(), content.size()) == FileCause::none &&
      file.finish() == FileCause::none;
  return is_written ? StoreStatus::ok : StoreStatus::failure;
}

std::string host_key() {
  const std::string chosen = environment("KORVEX_HOST_KEY");
  return is_plain_name(chosen) ? chosen : program_invocation_short_name;
}

}  // namespace korvex::platform
