#pragma once

#include "platform/user_interface.h"

namespace korvex {

// Messages, files to choose and progress in windows. Needs a display that was opened; used from its
// thread. A parent is the native handle of the owner, or null for the active window.
class WindowInterface : public platform::UserInterface {
 public:
  platform::Answer show_message(platform::MessageKind kind,
                                const platform::MessageText& text) override;
  std::unique_ptr<platform::ProgressSink> open_progress(void* parent, bool cancel_allowed) override;
  std::unique_ptr<platform::WaitCursor> show_wait_cursor() override;
  std::error_code open_editor(const std::string& path) override;
  std::optional<std::string> choose_file(const platform::FileQuestion& question) override;
};

}  // namespace korvex
