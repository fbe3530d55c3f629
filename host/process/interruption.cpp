#include "host/process/interruption.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>

#include "host/process/distinct_files.h"

namespace korvex::host {

namespace {

constexpr std::array watched_signals = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};
constexpr int signal_status = 128;

// All that the handler reads lies ready in fixed places: it may come in the middle of anything, so
// it can't allocate, lock or ask the library for more than plain system calls.
struct Slot {
  std::atomic<bool> is_used;  // the handler may run in another thread than the one that sets it
  RemovedOnInterruption::What what;
  char path[PATH_MAX];
  struct stat before;  // what was there when it began, all zero for nothing
};

constexpr int slot_count = 256;
std::array<Slot, slot_count> slots;
char last_words[256];
int held_depth = 0;

// A file that came from the caller stayed open through its start.
constexpr int most_files = 256;
bool is_own(int file) {
  const int flags = ::fcntl(file, F_GETFD);
  return flags >= 0 && (flags & FD_CLOEXEC) != 0;
}

// Whether this process writes the open file: one that is only being opened may be full of what
// another process has written, or is writing.
bool is_begun(int file, struct stat& status) {
  const int flags = ::fcntl(file, F_GETFL);
  return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY && is_own(file) &&
         ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
         (status.st_size == 0 || ::lseek(file, 0, SEEK_CUR) > 0) &&
         (::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK);
}

bool is_begun_file(const struct stat& named) {
  struct stat open = {};
  for (int file = 0; file < most_files; ++file) {
    if (is_begun(file, open) && open.st_dev == named.st_dev && open.st_ino == named.st_ino) {
      return true;
    }
  }
  return false;
}

struct FolderEntry {
  ino64_t inode;
  off64_t offset;
  unsigned short size;
  unsigned char type;
  char name[1];
};

// Hands each entry of the folder to `take`, with a descriptor of the folder.
template <typename Take>
void for_each_entry(const char* path, Take take) {
  const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  alignas(FolderEntry) char entries[4096];
  long filled = 0;
  while (folder >= 0 && (filled = ::syscall(SYS_getdents64, folder, entries, sizeof entries)) > 0) {
    for (long place = 0; place < filled;) {
      unsigned short size = 0;
      std::memcpy(&size, entries + place + offsetof(FolderEntry, size), sizeof size);
      take(folder, entries + place + offsetof(FolderEntry, name));
      place += size;
    }
  }
  ::close(folder);
}

void remove_folder(const char* path) {
  for_each_entry(path, [](int folder, const char* name) { ::unlinkat(folder, name, 0); });
  ::rmdir(path);
}

void remove_temporaries(const char* path) {
  for_each_entry(path, [](int folder, const char* name) {
    struct stat status = {};
    const bool is_temporary =
        std::strncmp(name, "DG", 2) == 0 && std::strstr(name, ".TMP") != nullptr;
    if (is_temporary && ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        is_begun_file(status)) {
      ::unlinkat(folder, name, 0);
    }
  });
}

// Giving back what a large removed file holds in memory takes the system half a second, and happens
// where it is closed last: let that be a process that nobody waits for.
void let_another_close_last() {
  // What is not our own is not ours to unlock.
  for (int file = 0; file < most_files; ++file) {
    if (is_own(file)) ::flock(file, LOCK_UN);
  }
  const pid_t parent = ::getpid();
  if (::_Fork() != 0) return;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // Nobody who shares the caller's files need wait for this process.
  for (int file = 0; file < most_files; ++file) {
    if (!is_own(file)) ::close(file);
  }
  while (::getppid() == parent) ::pause();
  ::_exit(0);
}

// Whether the file under the path was finished since the slot was taken: it is another one, or was
// written, and nobody writes it.
bool is_finished(const Slot& slot, const struct stat& now) {
  return now.st_dev != slot.before.st_dev || now.st_ino != slot.before.st_ino ||
         now.st_mtim.tv_sec != slot.before.st_mtim.tv_sec ||
         now.st_mtim.tv_nsec != slot.before.st_mtim.tv_nsec;
}

struct Removal {
  off_t size = 0;           // of a file that is gone now
  bool has_stayed = false;  // a file that is whole
};

Removal remove(const Slot& slot) {
  switch (slot.what) {
    case RemovedOnInterruption::What::folder:
      remove_folder(slot.path);
      return {};
    case RemovedOnInterruption::What::begun_temporaries:
      remove_temporaries(slot.path);
      return {};
    default:
      break;
  }
  struct stat now = {};
  if (::lstat(slot.path, &now) != 0 || !S_ISREG(now.st_mode)) return {};
  if (slot.what == RemovedOnInterruption::What::begun_file && !is_begun_file(now)) {
    return {0, is_finished(slot, now)};
  }
  ::unlink(slot.path);
  return {now.st_size, false};
}

void print_last_words() {
  const std::size_t size = ::strnlen(last_words, sizeof last_words);
  if (size == 0) return;
  // The progress stands in the line of a terminal.
  static constexpr char clear_line[] = "\r\033[K";
  ssize_t written = 0;
  if (::isatty(STDERR_FILENO) == 1) {
    written = ::write(STDERR_FILENO, clear_line, sizeof clear_line - 1);
  }
  if (written >= 0) written = ::write(STDERR_FILENO, last_words, size);
}

void end_program(int signal) {
  constexpr off_t slow_to_close = 64 * 1024 * 1024;
  bool is_slow = false;
  bool is_done = false;
  for (const Slot& slot : slots) {
    if (!slot.is_used) continue;
    const Removal removal = remove(slot);
    is_slow = is_slow || removal.size >= slow_to_close;
    is_done = is_done || removal.has_stayed;
  }
  if (!is_done) print_last_words();
  if (is_slow) let_another_close_last();
  ::_exit(signal_status + signal);
}

sigset_t watched_set() {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : watched_signals) ::sigaddset(&set, signal);
  return set;
}

}  // namespace

void watch_interruptions() {
  // A file that reaches the size limit fails to be written, which is said; a handler, other than
  // ignoring, is not passed on to the programs that are started.
  struct sigaction size_limit = {};
  size_limit.sa_handler = [](int) {};
  ::sigaction(SIGXFSZ, &size_limit, nullptr);
  for (const int signal : watched_signals) {
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = end_program;
    action.sa_mask = watched_set();
    ::sigaction(signal, &action, nullptr);
  }
}

void ignore_interruptions() {
  for (const int signal : watched_signals) ::signal(signal, SIG_IGN);
}

RemovedOnInterruption::RemovedOnInterruption(const std::string& path, What what) {
  // Of a link, what it leads to, also when that is not there yet.
  const std::string name = settled_path(path);
  for (int i = 0; i < slot_count && slot_ < 0; ++i) {
    if (!slots[static_cast<std::size_t>(i)].is_used) slot_ = i;
  }
  if (slot_ < 0 || name.size() >= PATH_MAX) {
    slot_ = -1;
    return;
  }
  Slot& slot = slots[static_cast<std::size_t>(slot_)];
  slot.what = what;
  if (::lstat(name.c_str(), &slot.before) != 0) slot.before = {};
  std::memcpy(slot.path, name.c_str(), name.size() + 1);
  slot.is_used = true;
}

RemovedOnInterruption::~RemovedOnInterruption() {
  if (slot_ >= 0) slots[static_cast<std::size_t>(slot_)].is_used = false;
}

SaidOnInterruption::SaidOnInterruption(const std::string& text) {
  const InterruptionsHeld held;
  text.copy(last_words, sizeof last_words - 1);
}

SaidOnInterruption::~SaidOnInterruption() {
  const InterruptionsHeld held;
  std::memset(last_words, 0, sizeof last_words);
}

InterruptionsHeld::InterruptionsHeld() {
  const sigset_t set = watched_set();
  if (held_depth++ == 0) ::sigprocmask(SIG_BLOCK, &set, nullptr);
}

InterruptionsHeld::~InterruptionsHeld() {
  const sigset_t set = watched_set();
  if (--held_depth == 0) ::sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

}  // namespace korvex::host
