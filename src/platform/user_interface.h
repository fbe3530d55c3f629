#pragma once

#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "platform/printable_text.h"

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

// The wait cursor, for its own lifetime.
class WaitCursor {
 public:
  virtual ~WaitCursor() = default;
};

// One way to narrow the files that a person chooses from.
struct FileFilter {
  std::string label;    // "Data files (*.dat)"
  std::string pattern;  // "*.dat"
};

struct FileQuestion {
  std::string title;
  std::string folder;  // where choosing begins
  std::vector<FileFilter> filters;
};

// Everything that the module says to the person in front of it.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  // Shows a message until it is answered: `yes` or `no` for the two questions, else `ok`.
  virtual Answer show_message(MessageKind kind, const MessageText& text) = 0;

  // Opens the progress display of one run; destroying the sink closes it. `parent` is the host's
  // window or null. Without `cancel_allowed` the display offers no way to cancel.
  virtual std::unique_ptr<ProgressSink> open_progress(void* parent, bool cancel_allowed) = 0;

  // Null where there is no window that it could be on.
  virtual std::unique_ptr<WaitCursor> show_wait_cursor() { return nullptr; }

  // Opens a text file in the user's editor, without waiting for it. Returns the
  // system's error, if any.
  virtual std::error_code open_editor(const std::string& path) = 0;

  // Asks for an existing file; nothing when none was chosen, as where no dialog can be shown.
  virtual std::optional<std::string> choose_file(const FileQuestion&) { return std::nullopt; }
};

// The interface of this process: an override while one is alive, else what the provider gives, else
// the console.
UserInterface& user_interface();

// Asked at every use for the interface of the process; null stands for the console.
using InterfaceProvider = UserInterface* (*)();
void set_interface_provider(InterfaceProvider provider);

// Opens a file in the user's editor, and tells the user when that cannot be started.
void open_in_editor(const std::string& path);

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

// Messages go to standard error as UTF-8. A question is asked on a terminal only; elsewhere
// KORVEX_ANSWER=yes|no answers it, "no" when unset. Progress is drawn on a terminal only.
//
// An interrupt (Ctrl-C) during a run counts as a wish to cancel whatever the run allows, so that no
// half-written file remains; it is watched for only while a run's progress is open, and only
// where the process does not look after it.
class ConsoleInterface : public UserInterface {
 public:
  Answer show_message(MessageKind kind, const MessageText& text) override;
  std::unique_ptr<ProgressSink> open_progress(void* parent, bool cancel_allowed) override;
  std::error_code open_editor(const std::string& path) override;
};

}  // namespace korvex::platform
