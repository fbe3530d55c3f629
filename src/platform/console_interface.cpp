#include "platform/console_interface.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/process.h"
#include "platform/quiet_write.h"

namespace korvex::platform {

namespace {

// The signal may arrive in any thread of the host.
std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void note_interrupt(int) { interrupted.store(true, std::memory_order_relaxed); }

class ConsoleProgress : public ProgressSink {
 public:
  ConsoleProgress() : drawing_(::isatty(STDERR_FILENO) == 1) {
    interrupted = false;
    ::sigaction(SIGINT, nullptr, &previous_);
    handling_ = (previous_.sa_flags & SA_SIGINFO) == 0 && previous_.sa_handler == SIG_DFL;
    if (!handling_) return;
    struct sigaction action = {};
    action.sa_handler = note_interrupt;
    ::sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &action, nullptr);
  }

  ~ConsoleProgress() override {
    if (handling_) ::sigaction(SIGINT, &previous_, nullptr);
    if (drawing_) print_error("\r\033[K");
  }

  ConsoleProgress(const ConsoleProgress&) = delete;
  ConsoleProgress& operator=(const ConsoleProgress&) = delete;

  void show(int percent) override {
    if (!drawing_) return;
    std::array<char, 32> line;
    const int size = std::snprintf(line.data(), line.size(), "\rGenerating Data %3d %%", percent);
    print_error({line.data(), static_cast<std::size_t>(size)});
  }

  bool cancel_requested() override {
    return interrupted.load(std::memory_order_relaxed) && interrupted.exchange(false);
  }

 private:
  struct sigaction previous_ = {};
  bool handling_ = false;
  bool drawing_;
};

bool is_yes(std::string_view answer) {
  return !answer.empty() && (answer.front() == 'y' || answer.front() == 'Y');
}

}  // namespace

Answer ConsoleInterface::show_message(MessageKind kind, const MessageText& text) {
  print_error(text.utf8() + "\n");
  if (kind != MessageKind::question && kind != MessageKind::warning_question) return Answer::ok;

  if (::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1) {
    print_error("[y/N] ");
    std::string line;
    std::getline(std::cin, line);
    return is_yes(line) ? Answer::yes : Answer::no;
  }
  const char* prepared = std::getenv("KORVEX_ANSWER");
  return prepared != nullptr && std::string_view(prepared) == "yes" ? Answer::yes : Answer::no;
}

std::unique_ptr<ProgressSink> ConsoleInterface::open_progress(void*, bool) {
  return std::make_unique<ConsoleProgress>();
}

int ConsoleInterface::open_editor(const std::string& path) {
  return run_editor(path, EditorWait::on_terminal);
}

}  // namespace korvex::platform
