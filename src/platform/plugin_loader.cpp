#include "platform/plugin_loader.h"

#include <dlfcn.h>

#include <cstdlib>
#include <memory>

#include "platform/path.h"

namespace korvex::platform {

namespace {

std::string resolved_folder(const char* path) {
  const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path, nullptr), std::free);
  return resolved == nullptr ? std::string() : folder_of(resolved.get());
}

std::string last_failure(const std::string& path) {
  const char* failure = ::dlerror();
  return failure != nullptr ? failure : path + " was not found";
}

}  // namespace

const void* load_plugin(const std::string& path, const char* function, std::int32_t version,
                        std::string& reason) {
  // What the plug-in's own libraries leave running, and what it throws, must find its code until
  // the process ends.
  void* const plugin = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (plugin == nullptr) {
    reason = last_failure(path);
    return nullptr;
  }
  const auto hand_over = reinterpret_cast<PluginTable>(::dlsym(plugin, function));
  const void* const table = hand_over != nullptr ? hand_over(version) : nullptr;
  if (table == nullptr) reason = path + " belongs to another version";
  return table;
}

std::string library_folder(const void* code) {
  Dl_info place = {};
  return ::dladdr(code, &place) != 0 ? resolved_folder(place.dli_fname) : std::string();
}

std::string program_folder() { return resolved_folder("/proc/self/exe"); }

}  // namespace korvex::platform
