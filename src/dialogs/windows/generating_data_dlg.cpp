#include "dialogs/windows/generating_data_dlg.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "dialogs/widgets/control_ids.h"
#include "dialogs/windows/parent_window.h"
#include "ui_ClGeneratingDataDlg.h"

namespace korvex {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds input_interval{20};

// A look at the clock costs as much as half a record, so quick calls share one.
constexpr milliseconds slow_look{2};
constexpr int most_calls_between_looks = 64;

constexpr int lower_bound = 0;
constexpr int upper_bound = 100;
constexpr int complete = 100;

}  // namespace

ClGeneratingDataDlg::ClGeneratingDataDlg(void* parent, bool cancel_allowed)
    : FormDialog(owner_widget(parent)),
      disabled_owner_(parentWidget()),
      cancel_allowed_(cancel_allowed) {
  Ui::ClGeneratingDataDlg().setupUi(this);
  index_controls();
  bar_ = control<QProgressBar>(control_id::progress_bar);
  percentage_ = control<QLabel>(control_id::progress_percentage);
  bar_->setRange(lower_bound, upper_bound);
  bar_->setValue(lower_bound);
  enable(control_id::cancel, cancel_allowed);
  setEnabled(true);  // although its owner is not
  attach_to_foreign_owner(*this, parent);
  show();
  process_input();
}

void ClGeneratingDataDlg::on_cancel() { cancel_requested_ = cancel_allowed_; }

void ClGeneratingDataDlg::show_percentage(int percent) {
  process_input_when_due();
  bar_->setValue(percent);
  int shown = (percent - lower_bound) * complete / (upper_bound - lower_bound);
  if (shown != complete) shown %= complete;
  const QString text = QString::number(shown) + '%';
  if (percentage_->text() != text) percentage_->setText(text);
}

bool ClGeneratingDataDlg::cancel_requested() {
  if (--calls_left_ <= 0) process_input_when_due();
  return std::exchange(cancel_requested_, false);
}

void ClGeneratingDataDlg::process_input_when_due() {
  const Clock::time_point now = Clock::now();
  const bool is_slow = now - last_look_ > slow_look;
  calls_between_looks_ = is_slow ? 1 : std::min(calls_between_looks_ * 2, most_calls_between_looks);
  calls_left_ = calls_between_looks_;
  last_look_ = now;
  if (now - last_drained_ >= input_interval) process_input();
}

void ClGeneratingDataDlg::process_input() {
  QCoreApplication::processEvents();
  last_drained_ = Clock::now();
  last_look_ = last_drained_;
}

}  // namespace korvex
