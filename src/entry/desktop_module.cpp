#include "entry/desktop_module.h"

#include <dlfcn.h>

#include <cstdlib>
#include <memory>

#include "platform/path.h"

namespace korvex {

namespace {

constexpr const char* module_name = "libkorvex-dialogs.so";

// Beside the file that this code stands in, wherever a link to it may lie, and never in the working
// folder.
std::string module_path() {
  Dl_info place = {};
  if (::dladdr(reinterpret_cast<const void*>(&open_desktop), &place) == 0) return {};
  const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(place.dli_fname, nullptr),
                                                        std::free);
  if (resolved == nullptr) return {};
  const std::string library = resolved.get();
  return library.substr(0, library.rfind('/') + 1) + module_name;
}

const korvex_dialogs* load_module(std::string& reason) {
  const std::string path = module_path();
  // What the module's own libraries leave running must find its code until the process ends.
  void* module =
      path.empty() ? nullptr : ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (module == nullptr) {
    const char* failure = path.empty() ? nullptr : ::dlerror();
    reason = failure != nullptr ? failure : std::string(module_name) + " was not found";
    return nullptr;
  }
  const auto function =
      reinterpret_cast<korvex_dialogs_function>(::dlsym(module, KORVEX_DIALOGS_SYMBOL));
  const korvex_dialogs* table = function != nullptr ? function(KORVEX_DIALOGS_ABI) : nullptr;
  if (table == nullptr) reason = path + " belongs to another version";
  return table;
}

}  // namespace

const korvex_dialogs* load_desktop(std::string& reason) {
  static const korvex_dialogs* loaded = nullptr;
  if (loaded == nullptr) loaded = load_module(reason);
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
