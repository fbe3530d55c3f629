#pragma once

#include <chrono>

#include "dialogs/widgets/form_dialog.h"
#include "dialogs/windows/parent_window.h"

class QLabel;
class QProgressBar;

namespace korvex {

// The progress window of one run: modeless, above its owner, which takes no input until this window
// is destroyed. It stays open until then; Cancel, Escape and the close box ask the run to end,
// where that is allowed, and otherwise do nothing.
//
// The run goes on in the window's own thread, so the window handles what was clicked and typed
// whenever it is asked something, but at most every 20 ms.
class ClGeneratingDataDlg : public FormDialog {
 public:
  // `parent` is the native handle of the owner, or null for the active window.
  ClGeneratingDataDlg(void* parent, bool cancel_allowed);

  void show_percentage(int percent);

  // Answers each request once.
  bool cancel_requested();

 protected:
  void on_ok() override {}
  void on_cancel() override;

 private:
  using Clock = std::chrono::steady_clock;

  void process_input();
  void process_input_when_due();

  DisabledOwner disabled_owner_;
  QProgressBar* bar_;
  QLabel* percentage_;
  bool cancel_allowed_;
  bool cancel_requested_ = false;
  Clock::time_point last_look_;     // at the clock
  Clock::time_point last_drained_;  // of input
  int calls_between_looks_ = 1;
  int calls_left_ = 0;
};

}  // namespace korvex
