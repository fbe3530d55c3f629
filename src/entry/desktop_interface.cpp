#include "entry/desktop_interface.h"

#include <cstdlib>
#include <string_view>

#include "platform/path.h"
#include "platform/plugin_loader.h"
#include "platform/printable_text.h"
#include "platform/process.h"
#include "platform/quiet_write.h"
#include "platform/user_interface.h"

namespace korvex {

namespace {

std::string_view variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool is_desktop_asked() { return variable("KORVEX_UI") == "desktop"; }

bool names_display() {
  return !variable("DISPLAY").empty() || !variable("WAYLAND_DISPLAY").empty() ||
         !variable("QT_QPA_PLATFORM").empty();
}

class DesktopProgress : public platform::ProgressSink {
 public:
  DesktopProgress(const korvex_dialogs& desktop, void* parent, bool cancel_allowed)
      : desktop_(desktop), window_(desktop.open_progress(parent, cancel_allowed ? 1 : 0)) {}
  ~DesktopProgress() override { desktop_.close_progress(window_); }
  DesktopProgress(const DesktopProgress&) = delete;
  DesktopProgress& operator=(const DesktopProgress&) = delete;

  void show(int percent) override { desktop_.show_percentage(window_, percent); }
  bool cancel_requested() override { return desktop_.cancel_requested(window_) != 0; }

 private:
  const korvex_dialogs& desktop_;
  void* window_;
};

class DesktopCursor : public platform::WaitCursor {
 public:
  DesktopCursor(const korvex_dialogs& desktop, void* cursor) : desktop_(desktop), cursor_(cursor) {}
  ~DesktopCursor() override { desktop_.hide_wait_cursor(cursor_); }
  DesktopCursor(const DesktopCursor&) = delete;
  DesktopCursor& operator=(const DesktopCursor&) = delete;

 private:
  const korvex_dialogs& desktop_;
  void* cursor_;
};

// The desktop from the first message or progress on, so that a call without one loads no window
// system; the console where the desktop cannot be reached.
class DesktopInterface : public platform::UserInterface {
 public:
  platform::Answer show_message(platform::MessageKind kind,
                                const platform::MessageText& text) override {
    const korvex_dialogs* desktop = open();
    if (desktop == nullptr) return console_.show_message(kind, text);
    return static_cast<platform::Answer>(
        desktop->show_message(static_cast<std::int32_t>(kind), text.utf8().c_str()));
  }

  std::unique_ptr<platform::ProgressSink> open_progress(void* parent,
                                                        bool cancel_allowed) override {
    const korvex_dialogs* desktop = open();
    if (desktop == nullptr) return console_.open_progress(parent, cancel_allowed);
    return std::make_unique<DesktopProgress>(*desktop, parent, cancel_allowed);
  }

  // On the host's own windows; why there is no desktop is said with the first message.
  std::unique_ptr<platform::WaitCursor> show_wait_cursor() override {
    std::string reason;
    const korvex_dialogs* desktop = is_out_of_reach_ ? nullptr : load_desktop(reason);
    void* cursor = desktop != nullptr ? desktop->show_wait_cursor() : nullptr;
    if (cursor == nullptr) return nullptr;
    return std::make_unique<DesktopCursor>(*desktop, cursor);
  }

  std::error_code open_editor(const std::string& path) override {
    return platform::run_editor(path, platform::EditorWait::never);
  }

 private:
  const korvex_dialogs* open() {
    if (is_out_of_reach_) return nullptr;
    std::string reason;
    const korvex_dialogs* desktop = open_desktop(reason);
    if (desktop == nullptr) {
      is_out_of_reach_ = true;
      if (is_desktop_asked()) {
        platform::print_error("The desktop cannot be used: " + platform::printable(reason) + "\n");
      }
    }
    return desktop;
  }

  platform::ConsoleInterface console_;
  bool is_out_of_reach_ = false;
};

}  // namespace

platform::UserInterface* choose_interface() {
  static DesktopInterface desktop;
  if (is_desktop_asked()) return &desktop;
  return variable("KORVEX_UI") != "console" && names_display() ? &desktop : nullptr;
}

namespace {

constexpr const char* plugin_name = "libkorvex-dialogs.so";

const korvex_dialogs* load_dialogs(std::string& reason) {
  const std::string folder = platform::library_folder(reinterpret_cast<const void*>(&open_desktop));
  if (folder.empty()) {
    reason = std::string(plugin_name) + " was not found";
    return nullptr;
  }
  return static_cast<const korvex_dialogs*>(platform::load_plugin(
      platform::join_path(folder, plugin_name), KORVEX_DIALOGS_SYMBOL, KORVEX_DIALOGS_ABI, reason));
}

}  // namespace

const korvex_dialogs* load_desktop(std::string& reason) {
  static const korvex_dialogs* loaded = nullptr;
  if (loaded == nullptr) loaded = load_dialogs(reason);
  return loaded;
}

const korvex_dialogs* open_desktop(std::string& reason) {
  const korvex_dialogs* loaded = load_desktop(reason);
  if (loaded == nullptr) return nullptr;
  const char* failure = loaded->open_display();
  if (failure == nullptr) return loaded;
  reason = failure;
  return nullptr;
}

}  // namespace korvex
