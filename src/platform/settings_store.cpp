#include "platform/settings_store.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/path.h"

namespace korvex::platform {

namespace {

constexpr const char* file_name = "Korvex.conf";
constexpr std::size_t max_file_size = 1024 * 1024;

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string configuration_folder() {
  const std::string configured = environment("XDG_CONFIG_HOME");
  if (!configured.empty() && configured.front() == '/') return configured;
  return join_path(environment("HOME"), ".config");
}

FileCause read_whole(const std::string& path, std::string& content) {
  File file;
  FileCause cause = file.open_for_reading(path, Sharing::shared);
  if (cause != FileCause::none) return cause;
  content.resize(max_file_size);
  std::size_t count = 0;
  cause = file.read(content.data(), content.size(), count);
  content.resize(count);
  // What does not fit could not be written back.
  return cause == FileCause::none && count == max_file_size ? FileCause::generic : cause;
}

bool make_folders(const std::string& folder) {
  for (std::size_t slash = folder.find('/', 1);; slash = folder.find('/', slash + 1)) {
    const std::string part = folder.substr(0, slash);
    if (file_calls().mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) return false;
    if (slash == std::string::npos) return true;
  }
}

// Keeps other writers out while it lives.
class StoreLock {
 public:
  explicit StoreLock(const std::string& path)
      : descriptor_(
            file_calls().open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    held_ = descriptor_ >= 0 && file_calls().flock(descriptor_, LOCK_EX) == 0;
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

// The value part of the line that sets `name`; npos/0 when there is none.
struct ValuePlace {
  std::size_t offset = std::string::npos;
  std::size_t size = 0;
};

ValuePlace find_value(const std::string& content, std::string_view name) {
  for (std::size_t line = 0; line < content.size();) {
    std::size_t end = content.find('\n', line);
    if (end == std::string::npos) end = content.size();
    if (content.compare(line, name.size(), name) == 0 && content[line + name.size()] == '=') {
      const std::size_t value = line + name.size() + 1;
      return {value, end - value};
    }
    line = end + 1;
  }
  return {};
}

}  // namespace

SettingsStore::SettingsStore(std::string_view key)
    : folder_(join_path(configuration_folder(), key)), path_(join_path(folder_, file_name)) {}

StoreStatus SettingsStore::read(std::string_view name, std::string& value) const {
  std::string content;
  const FileCause cause = read_whole(path_, content);
  if (cause == FileCause::not_found || cause == FileCause::bad_path) {
    return StoreStatus::key_missing;
  }
  if (cause != FileCause::none) return StoreStatus::failure;
  const ValuePlace place = find_value(content, name);
  if (place.offset == std::string::npos) return StoreStatus::value_missing;
  value = content.substr(place.offset, place.size);
  return StoreStatus::ok;
}

StoreStatus SettingsStore::write(std::string_view name, std::string_view value) const {
  if (value.find('\n') != std::string_view::npos || !make_folders(folder_)) {
    return StoreStatus::failure;
  }
  const StoreLock lock(path_ + ".lock");
  if (!lock.held()) return StoreStatus::failure;

  std::string content;
  const FileCause cause = read_whole(path_, content);
  if (cause != FileCause::none && cause != FileCause::not_found) return StoreStatus::failure;

  const ValuePlace place = find_value(content, name);
  if (place.offset != std::string::npos) {
    content.replace(place.offset, place.size, value);
  } else {
    if (!content.empty() && content.back() != '\n') content += '\n';
    content.append(name).append("=").append(value).append("\n");
  }

  const std::string fresh = path_ + ".new";
  remove_file(fresh);
  File file;
  if (file.create_new(fresh) != FileCause::none) return StoreStatus::failure;
  const bool written = file.write(content.data(), content.size()) == FileCause::none &&
                       file.sync() == FileCause::none;
  if (file.close() != FileCause::none || !written) {
    remove_file(fresh);
    return StoreStatus::failure;
  }
  return replace_file(fresh, path_) == FileCause::none ? StoreStatus::ok : StoreStatus::failure;
}

std::string host_key() {
  const std::string chosen = environment("KORVEX_HOST_KEY");
  return chosen.empty() ? program_invocation_short_name : chosen;
}

}  // namespace korvex::platform
