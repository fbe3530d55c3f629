#include "host/parts/part_state.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>
#include <vector>

#include "host/parts/checksum.h"
#include "host/process/signals.h"
#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::size_t read_size = 256 * 1024;

std::string fault_of(const Manifest& manifest, const Manifest& expected) {
  if (manifest.part != expected.part) {
    return "with the manifest of part " + part_text(manifest.part);
  }
  if (manifest.form != expected.form) {
    return "written as " + platform::printable(manifest.form) + ", expected " +
           platform::printable(expected.form);
  }
  if (manifest.records != expected.records) return "of another number of records";
  return manifest.fingerprint == expected.fingerprint ? "" : "of another layout";
}

bool is_newer(const std::string& path, const std::string& other) {
  struct stat first = {};
  struct stat second = {};
  const auto& calls = platform::file_calls();
  if (calls.fstatat(AT_FDCWD, path.c_str(), &first, 0) != 0) return false;
  if (calls.fstatat(AT_FDCWD, other.c_str(), &second, 0) != 0) return false;
  return std::pair(first.st_mtim.tv_sec, first.st_mtim.tv_nsec) >
         std::pair(second.st_mtim.tv_sec, second.st_mtim.tv_nsec);
}

}  // namespace

PartState state_of_part(const std::string& path, const Manifest& expected) {
  PartState state;
  const auto size = platform::size_of_file(path);
  if (!size) {
    state.fault = platform::exists(path) ? "not a file" : "missing";
    return state;
  }
  bool has_manifest = false;
  state.manifest = read_manifest(manifest_path(path), &has_manifest);
  if (!state.manifest) {
    state.fault = has_manifest ? "with a damaged manifest" : "without a manifest";
    return state;
  }
  state.fault = fault_of(*state.manifest, expected);
  if (!state.fault.empty()) return state;
  if (*size != state.manifest->bytes) {
    state.fault =
        std::to_string(*size) + " bytes long, expected " + std::to_string(state.manifest->bytes);
    return state;
  }
  const auto mark = platform::mark_of_file(path);
  if (mark && *mark != mark_of(*state.manifest)) {
    state.fault = "not the file of its manifest";
    return state;
  }
  const bool is_changed = is_newer(path, manifest_path(path));
  if (is_changed && !has_bytes_of(path, *state.manifest)) {
    state.fault = "changed after its manifest was written";
  }
  state.is_proven = mark || is_changed;
  return state;
}

bool is_complete(const std::string& path, const Manifest& expected) {
  const PartState state = state_of_part(path, expected);
  return state.fault.empty() && (state.is_proven || has_bytes_of(path, *state.manifest));
}

bool has_bytes_of(const std::string& path, const Manifest& manifest) {
  platform::File file;
  if (file.open_for_reading(path, platform::Sharing::unlocked) != platform::FileCause::none) {
    return false;
  }
  std::vector<char> block(read_size);
  Checksum checksum;
  std::size_t count = block.size();
  while (count == block.size()) {
    check_interruption();
    if (file.read(block.data(), block.size(), count) != platform::FileCause::none) return false;
    checksum.add({block.data(), count});
  }
  return checksum.bytes() == manifest.bytes && checksum.value() == manifest.checksum;
}

}  // namespace korvex::host
