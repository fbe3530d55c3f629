#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/user_interface.h"

namespace korvex::test {

// A user interface that answers from a script and keeps what it was told.
class ScriptedInterface : public platform::UserInterface {
 public:
  struct Message {
    platform::MessageKind kind;
    std::string text;
  };

  platform::Answer show_message(platform::MessageKind kind,
                                const platform::MessageText& text) override {
    messages.push_back({kind, text.utf8()});
    if (answers.empty()) return platform::Answer::ok;
    const platform::Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::unique_ptr<platform::ProgressSink> open_progress(void* parent,
                                                        bool cancel_allowed) override {
    progress_parent = parent;
    offered_cancel = cancel_allowed;
    return std::make_unique<Progress>(*this);
  }

  std::error_code open_editor(const std::string& path) override {
    opened_files.push_back(path);
    return editor_error;
  }

  std::optional<std::string> choose_file(const platform::FileQuestion& question) override {
    asked_folder = question.folder;
    return chosen_file;
  }

  // The script. Questions get the answers in order, then `ok`.
  std::deque<platform::Answer> answers;
  int cancel_at_poll = 0;  // 0: never
  std::error_code editor_error;
  std::optional<std::string> chosen_file;

  // What happened.
  std::vector<Message> messages;
  std::vector<int> percentages;
  std::vector<std::string> opened_files;
  std::string asked_folder;
  void* progress_parent = nullptr;
  bool offered_cancel = false;
  int polls = 0;
  int open_progresses = 0;

 private:
  class Progress : public platform::ProgressSink {
   public:
    explicit Progress(ScriptedInterface& owner) : owner_(owner) { ++owner_.open_progresses; }
    ~Progress() override { --owner_.open_progresses; }
    void show(int percent) override { owner_.percentages.push_back(percent); }
    bool cancel_requested() override { return ++owner_.polls == owner_.cancel_at_poll; }

   private:
    ScriptedInterface& owner_;
  };
};

}  // namespace korvex::test
