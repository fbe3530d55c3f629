#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/interruption.h"
#include "platform/process.h"
#include "platform/quiet_write.h"
#include "platform/user_interface.h"

namespace korvex::platform {

namespace {

class ConsoleProgress : public ProgressSink {
 public:
  ConsoleProgress() : drawing_(::isatty(STDERR_FILENO) == 1) {}

  ~ConsoleProgress() override {
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

  bool cancel_requested() override { return InterruptionWatch::take() != 0 || is_interrupted(); }

 private:
  const InterruptionWatch watch_{SIGINT};
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
    if (wait_until_ready(STDIN_FILENO, POLLIN)) std::getline(std::cin, line);
    return is_yes(line) ? Answer::yes : Answer::no;
  }
  const char* prepared = std::getenv("KORVEX_ANSWER");
  return prepared != nullptr && std::string_view(prepared) == "yes" ? Answer::yes : Answer::no;
}

std::unique_ptr<ProgressSink> ConsoleInterface::open_progress(void*, bool) {
  return std::make_unique<ConsoleProgress>();
}

std::error_code ConsoleInterface::open_editor(const std::string& path) {
  return run_editor(path, EditorWait::on_terminal);
}

}  // namespace korvex::platform
