#include "memory_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <string_view>

namespace korvex::fuzz {

namespace {

struct Node {
  std::string bytes;
  int sharers = 0;
  bool is_held_alone = false;
};

struct Descriptor {
  std::shared_ptr<Node> node;  // null for a folder
  std::size_t offset = 0;
  int lock = LOCK_UN;
};

bool is_folder(std::string_view path) { return path == "." || path == "/"; }

// Far from the system's numbers, so that mixing them up shows.
constexpr int first_descriptor = 100'000;

constexpr off_t largest_file = 64 * 1024 * 1024;

struct State {
  std::map<std::string, std::shared_ptr<Node>> files;
  std::map<int, Descriptor> open;
  int next_descriptor = first_descriptor;
};
State state;

int fail(int error_number) {
  errno = error_number;
  return -1;
}

std::shared_ptr<Node> find(const char* path) {
  const auto place = state.files.find(path);
  return place == state.files.end() ? nullptr : place->second;
}

Descriptor* find(int descriptor) {
  const auto place = state.open.find(descriptor);
  return place == state.open.end() ? nullptr : &place->second;
}

int open(const char* path, int flags, mode_t) {
  std::shared_ptr<Node> node = find(path);
  if ((flags & O_DIRECTORY) != 0) {
    if (node) return fail(ENOTDIR);
  } else if (node) {
    if ((flags & O_CREAT) != 0 && (flags & O_EXCL) != 0) return fail(EEXIST);
  } else {
    if ((flags & O_CREAT) == 0 || *path == '\0') return fail(ENOENT);
    node = std::make_shared<Node>();
    state.files[path] = node;
  }
  state.open[state.next_descriptor] = {node};
  return state.next_descriptor++;
}

void release(Descriptor& opened) {
  if (opened.lock == LOCK_EX) opened.node->is_held_alone = false;
  if (opened.lock == LOCK_SH) --opened.node->sharers;
  opened.lock = LOCK_UN;
}

int close(int descriptor) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr) return fail(EBADF);
  release(*opened);
  state.open.erase(descriptor);
  return 0;
}

ssize_t read(int descriptor, void* data, size_t size) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr || !opened->node) return fail(EBADF);
  const std::string& bytes = opened->node->bytes;
  const std::size_t begin = std::min(opened->offset, bytes.size());
  const std::size_t count = bytes.copy(static_cast<char*>(data), size, begin);
  opened->offset += count;
  return static_cast<ssize_t>(count);
}

ssize_t write(int descriptor, const void* data, size_t size) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr || !opened->node) return fail(EBADF);
  std::string& bytes = opened->node->bytes;
  if (opened->offset + size > static_cast<std::size_t>(largest_file)) return fail(ENOSPC);
  bytes.resize(std::max(bytes.size(), opened->offset + size));
  bytes.replace(opened->offset, size, static_cast<const char*>(data), size);
  opened->offset += size;
  return static_cast<ssize_t>(size);
}

off_t lseek(int descriptor, off_t offset, int whence) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr || !opened->node) return fail(EBADF);
  if (whence != SEEK_SET || offset < 0) return fail(EINVAL);
  opened->offset = static_cast<std::size_t>(offset);
  return offset;
}

void describe(const Node* node, struct stat* status) {
  *status = {};
  status->st_mode = node != nullptr ? S_IFREG | 0644 : S_IFDIR | 0755;
  if (node != nullptr) status->st_size = static_cast<off_t>(node->bytes.size());
}

int fstat(int descriptor, struct stat* status) {
  const Descriptor* opened = find(descriptor);
  if (opened == nullptr) return fail(EBADF);
  describe(opened->node.get(), status);
  return 0;
}

int describe_path(const char* path, struct stat* status) {
  const std::shared_ptr<Node> node = find(path);
  if (!node && !is_folder(path)) return fail(ENOENT);
  describe(node.get(), status);
  return 0;
}

int lstat(const char* path, struct stat* status) { return describe_path(path, status); }

int fstatat(int, const char* path, struct stat* status, int) { return describe_path(path, status); }

int fchmod(int descriptor, mode_t) { return find(descriptor) != nullptr ? 0 : fail(EBADF); }

int fchown(int descriptor, uid_t, gid_t) { return find(descriptor) != nullptr ? 0 : fail(EBADF); }

int ftruncate(int descriptor, off_t size) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr || !opened->node) return fail(EBADF);
  if (size < 0 || size > largest_file) return fail(EINVAL);
  opened->node->bytes.resize(static_cast<std::size_t>(size));
  return 0;
}

int fsync(int descriptor) { return find(descriptor) != nullptr ? 0 : fail(EBADF); }

int flock(int descriptor, int operation) {
  Descriptor* opened = find(descriptor);
  if (opened == nullptr || !opened->node) return fail(EBADF);
  release(*opened);
  Node& node = *opened->node;
  const bool is_alone = (operation & LOCK_EX) != 0;
  if (node.is_held_alone || (is_alone && node.sharers > 0)) return fail(EWOULDBLOCK);
  if (is_alone) {
    node.is_held_alone = true;
    opened->lock = LOCK_EX;
  } else {
    ++node.sharers;
    opened->lock = LOCK_SH;
  }
  return 0;
}

int rename(const char* from, const char* to) {
  const std::shared_ptr<Node> node = find(from);
  if (!node || *to == '\0') return fail(ENOENT);
  state.files.erase(from);
  state.files[to] = node;
  return 0;
}

int unlink(const char* path) { return state.files.erase(path) > 0 ? 0 : fail(ENOENT); }

ssize_t readlink(const char*, char*, size_t) { return fail(EINVAL); }

int mkdir(const char*, mode_t) { return 0; }

int fsetxattr(int, const char*, const void*, size_t, int) { return fail(ENOTSUP); }

ssize_t getxattr(const char*, const char*, void*, size_t) { return fail(ENOTSUP); }

constexpr platform::FileCalls table = {
    .open = open,
    .close = close,
    .read = read,
    .write = write,
    .write_to_device = write,
    .lseek = lseek,
    .fstat = fstat,
    .lstat = lstat,
    .fstatat = fstatat,
    .fchmod = fchmod,
    .fchown = fchown,
    .ftruncate = ftruncate,
    .fsync = fsync,
    .flock = flock,
    .rename = rename,
    .unlink = unlink,
    .readlink = readlink,
    .mkdir = mkdir,
    .fsetxattr = fsetxattr,
    .getxattr = getxattr,
};

}  // namespace

MemoryFiles::MemoryFiles() : override_(table) { state = {}; }

MemoryFiles::~MemoryFiles() { state = {}; }

void MemoryFiles::put(const std::string& path, std::string_view bytes) {
  const auto node = std::make_shared<Node>();
  node->bytes = bytes;
  state.files[path] = node;
}

std::string MemoryFiles::get(const std::string& path) const {
  const std::shared_ptr<Node> node = find(path.c_str());
  return node ? node->bytes : "";
}

bool MemoryFiles::exists(const std::string& path) const { return find(path.c_str()) != nullptr; }

std::vector<std::string> MemoryFiles::paths() const {
  std::vector<std::string> found;
  for (const auto& [path, node] : state.files) found.push_back(path);
  return found;
}

std::size_t MemoryFiles::open_descriptors() const { return state.open.size(); }

}  // namespace korvex::fuzz
