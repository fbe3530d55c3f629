#pragma once

#include "platform/user_interface.h"

namespace korvex::platform {

// Messages go to standard error as UTF-8. A question is asked on a terminal only; elsewhere
// KORVEX_ANSWER=yes|no answers it, "no" when unset. Progress is drawn on a terminal only.
//
// An interrupt (Ctrl-C) during a run counts as a wish to cancel whatever the run allows, so that no
// half-written file stays behind; it is watched for only while a run's progress is open, and only
// where the process does not look after it.
class ConsoleInterface : public UserInterface {
 public:
  Answer show_message(MessageKind kind, const MessageText& text) override;
  std::unique_ptr<ProgressSink> open_progress(void* parent, bool cancel_allowed) override;
  int open_editor(const std::string& path) override;
};

}  // namespace korvex::platform
