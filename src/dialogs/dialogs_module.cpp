#include <string>

#include "dialogs/dialogs_plugin.h"
#include "dialogs/windows/data_generation_dlg.h"
#include "dialogs/windows/display.h"
#include "dialogs/windows/item_value_update_dlg.h"
#include "dialogs/windows/parent_window.h"
#include "dialogs/windows/window_interface.h"

namespace {

using namespace korvex;

constexpr std::int32_t not_shown = -1;
constexpr std::int32_t locked = 1;

WindowInterface& interface() {
  static WindowInterface instance;
  return instance;
}

// The caller is C: an exception ends here.
template <typename Work, typename Result>
Result guarded(Work work, Result on_failure) noexcept {
  try {
    return work();
  } catch (...) {
    return on_failure;
  }
}

template <typename Work>
void guarded(Work work) noexcept {
  try {
    work();
  } catch (...) {
    // The window stays as it was; the run goes on.
  }
}

const char* display_failure() {
  static std::string reason;
  return guarded([]() -> const char* { return open_display(reason) ? nullptr : reason.c_str(); },
                 "out of memory");
}

template <typename Dialog>
std::int32_t run_owned(Dialog& dialog, void* parent) {
  attach_to_foreign_owner(dialog, parent);
  return dialog.run();
}

std::int32_t run_data_generation(const char* control_path, void* parent, std::int32_t run_mode,
                                 std::int32_t quotation_lock) {
  return guarded(
      [&] {
        const CallOwner owner(parent);
        ClDataGenerationDlg dialog(owner_widget(parent), control_path, RunMode{run_mode},
                                   quotation_lock == locked);
        return run_owned(dialog, parent);
      },
      not_shown);
}

std::int32_t run_item_value_update(const char* control_path, void* parent) {
  return guarded(
      [&] {
        const CallOwner owner(parent);
        ClItemValueUpdateDlg dialog(owner_widget(parent), control_path);
        return run_owned(dialog, parent);
      },
      not_shown);
}

std::int32_t show_message(std::int32_t kind, const char* text) {
  return guarded(
      [&] {
        const auto answer = interface().show_message(static_cast<platform::MessageKind>(kind),
                                                     platform::MessageText::words(text));
        return static_cast<std::int32_t>(answer);
      },
      static_cast<std::int32_t>(platform::Answer::ok));
}

void* show_wait_cursor() {
  return guarded([]() -> void* { return interface().show_wait_cursor().release(); },
                 static_cast<void*>(nullptr));
}

void hide_wait_cursor(void* cursor) {
  guarded([&] { delete static_cast<platform::WaitCursor*>(cursor); });
}

void* open_progress(void* parent, std::int32_t is_cancel_allowed) {
  return guarded(
      [&]() -> void* {
        return interface().open_progress(parent, is_cancel_allowed != 0).release();
      },
      static_cast<void*>(nullptr));
}

platform::ProgressSink* sink(void* progress) {
  return static_cast<platform::ProgressSink*>(progress);
}

void show_percentage(void* progress, std::int32_t percent) {
  if (progress != nullptr) guarded([&] { sink(progress)->show(percent); });
}

std::int32_t cancel_requested(void* progress) {
  if (progress == nullptr) return 0;
  return guarded([&] { return sink(progress)->cancel_requested() ? 1 : 0; }, 0);
}

void close_progress(void* progress) {
  guarded([&] { delete sink(progress); });
}

constexpr korvex_dialogs functions = {
    .open_display = display_failure,
    .run_data_generation = run_data_generation,
    .run_item_value_update = run_item_value_update,
    .show_message = show_message,
    .show_wait_cursor = show_wait_cursor,
    .hide_wait_cursor = hide_wait_cursor,
    .open_progress = open_progress,
    .show_percentage = show_percentage,
    .cancel_requested = cancel_requested,
    .close_progress = close_progress,
};

}  // namespace

extern "C" __attribute__((visibility("default"))) const korvex_dialogs* korvex_dialogs_table(
    std::int32_t abi) {
  platform::set_interface_provider([]() -> platform::UserInterface* { return &interface(); });
  return abi == KORVEX_DIALOGS_ABI ? &functions : nullptr;
}
