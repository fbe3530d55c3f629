#include "entry/desktop_module.h"

#include "platform/module_loader.h"
#include "platform/path.h"

namespace korvex {

namespace {

constexpr const char* module_name = "libkorvex-dialogs.so";

const korvex_dialogs* load_dialogs(std::string& reason) {
  const std::string folder = platform::library_folder(reinterpret_cast<const void*>(&open_desktop));
  if (folder.empty()) {
    reason = std::string(module_name) + " was not found";
    return nullptr;
  }
  return static_cast<const korvex_dialogs*>(platform::load_module(
      platform::join_path(folder, module_name), KORVEX_DIALOGS_SYMBOL, KORVEX_DIALOGS_ABI, reason));
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
