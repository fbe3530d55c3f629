#include "host/generated_records.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "host/interrupt.h"
#include "host/layout_messages.h"

namespace korvex::host {

namespace {

constexpr std::size_t block_size = 256 * 1024;
// Larger than a block of the generator, so that it need not wait for the reader in its midst.
constexpr int pipe_size = 1024 * 1024;
constexpr const char* signal_message = "generating ended by signal ";

[[noreturn]] void report(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

std::string descriptor_path(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

// The process that generates. Messages go to a file of their own: those of a run that is ended on
// purpose are not for the user.
[[noreturn]] void generate(CreateData create_data, const char* control_path, int messages) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // An interrupt at the terminal reaches both processes; the other one decides.
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) ::signal(number, SIG_IGN);
  ::dup2(messages, STDERR_FILENO);
  ::_exit(create_data(control_path, 0, nullptr, 0) < 0 ? 1 : 0);
}

}  // namespace

GeneratedRecords::GeneratedRecords(const Layout& layout, CreateData create_data) {
  messages_ = ::memfd_create("korvex-messages", MFD_CLOEXEC);
  if (messages_ < 0) report("messages");
  start(layout, create_data);
}

void GeneratedRecords::start(const Layout& layout, CreateData create_data) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) report("pipe");
  pipe_ = ends[0];
  ::fcntl(pipe_, F_SETPIPE_SZ, pipe_size);
  Layout into_pipe = layout;
  into_pipe.data = descriptor_path(ends[1]);
  const std::int32_t code = control_file_.write(into_pipe, ControlForm::short_form);
  if (code == 0) child_ = ::fork();
  if (child_ == 0) generate(create_data, control_file_.path().c_str(), messages_);
  ::close(ends[1]);
  if (code != 0) throw GenerationFailed(layout.work + ": " + numbered_message(code, layout));
  if (child_ < 0) report("fork");
}

GeneratedRecords::~GeneratedRecords() {
  if (child_ > 0) {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  if (pipe_ >= 0) ::close(pipe_);
  if (messages_ >= 0) ::close(messages_);
}

bool GeneratedRecords::next(std::string_view& line) {
  if (place_ == text_.size() && !fill()) return false;
  const std::size_t end = text_.find('\n', place_);
  line = std::string_view(text_).substr(place_, end - place_);
  place_ = end + 1;
  return true;
}

// Whole lines are converted at once: neither a comma nor a line feed is ever part of a double-byte
// character.
bool GeneratedRecords::fill() {
  for (;;) {
    if (read_some() == 0) {
      wait_for_end();
      return false;
    }
    const std::size_t last = raw_.rfind('\n');
    if (last == std::string::npos) continue;
    convert_whole_lines(last + 1);
    return true;
  }
}

void GeneratedRecords::convert_whole_lines(std::size_t size) {
  decoder_.decode(std::string_view(raw_).substr(0, size), text_);
  raw_.erase(0, size);
  place_ = 0;
}

// Answers how many bytes came, 0 at the end.
std::size_t GeneratedRecords::read_some() {
  struct pollfd waiting = {pipe_, POLLIN, 0};
  for (;;) {
    InterruptWatch::check();
    const int ready = ::poll(&waiting, 1, InterruptWatch::wait_slice_ms);
    if (ready < 0 && errno != EINTR) report("pipe");
    if (ready <= 0) continue;
    const std::size_t before = raw_.size();
    raw_.resize(before + block_size);
    const ssize_t count = ::read(pipe_, raw_.data() + before, block_size);
    raw_.resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) report("pipe");
  }
}

void GeneratedRecords::wait_for_end() {
  int status = 0;
  while (::waitpid(child_, &status, 0) < 0) {
    if (errno != EINTR) report("generator");
  }
  child_ = -1;
  if (WIFSIGNALED(status))
    throw GenerationFailed(signal_message + std::to_string(WTERMSIG(status)));
  if (WEXITSTATUS(status) != 0) throw GenerationFailed(read_messages());
}

std::string GeneratedRecords::read_messages() const {
  std::string text;
  std::array<char, 4096> block;
  ::lseek(messages_, 0, SEEK_SET);
  for (;;) {
    const ssize_t count = ::read(messages_, block.data(), block.size());
    if (count <= 0) break;
    text.append(block.data(), static_cast<std::size_t>(count));
  }
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

}  // namespace korvex::host
