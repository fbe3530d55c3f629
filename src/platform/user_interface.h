#pragma once

#include <memory>
#include <string>

namespace korvex::platform {

enum class MessageKind { information, plain, warning, stop, question, warning_question };

enum class Answer { ok, yes, no };

// Shows how far a run is and carries the user's wish to end it. One run at a time; used from the
// thread that generates.
class ProgressSink {
 public:
  virtual ~ProgressSink() = default;
  virtual void show(int percent) = 0;
  // Asked after every record, so it must be cheap. Answers each request once.
  virtual bool cancel_requested() = 0;
};

// Everything that the module says to the person in front of it. Texts are code page 932, except
// that paths stand in them as they are.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  // Shows a message until it is answered: `yes` or `no` for the two questions, else `ok`.
  virtual Answer show_message(MessageKind kind, const std::string& text) = 0;

  // Opens the progress display of one run; destroying the sink closes it. `parent` is the host's
  // window or null. Without `cancel_allowed` the display offers no way to cancel.
  virtual std::unique_ptr<ProgressSink> open_progress(void* parent, bool cancel_allowed) = 0;

  virtual void show_wait_cursor(bool on) = 0;

  // Opens a text file in the user's editor, without waiting for it. 0, or the system's error
  // number.
  virtual int open_editor(const std::string& path) = 0;
};

// The interface of this process: the console, unless an override is alive. This build has no other;
// with KORVEX_UI=desktop it says so.
UserInterface& user_interface();

// Replaces the interface for its own lifetime. Not thread-safe: for tests.
class UserInterfaceOverride {
 public:
  explicit UserInterfaceOverride(UserInterface& replacement);
  ~UserInterfaceOverride();
  UserInterfaceOverride(const UserInterfaceOverride&) = delete;
  UserInterfaceOverride& operator=(const UserInterfaceOverride&) = delete;

 private:
  UserInterface* previous_;
};

}  // namespace korvex::platform
