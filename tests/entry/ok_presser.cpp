// Stands in for the dialogs module and hands everything on to the real one, but presses OK in every
// dialog that opens, so that a program without a person in front of it can be tested.

#include <dlfcn.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <cstdlib>

#include "dialogs/dialogs_plugin.h"

namespace {

constexpr int interval = 20;  // milliseconds

const korvex_dialogs* real = nullptr;

const char* open_display() {
  if (const char* failure = real->open_display()) return failure;
  static auto* const presser = new QTimer(qApp);
  if (presser->isActive()) return nullptr;
  QObject::connect(presser, &QTimer::timeout, [] {
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->accept();
  });
  presser->start(interval);
  return nullptr;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) const korvex_dialogs* korvex_dialogs_table(
    std::int32_t abi) {
  void* module = ::dlopen(KORVEX_DIALOGS_MODULE, RTLD_NOW | RTLD_NODELETE);
  if (module == nullptr) return nullptr;
  const auto table =
      reinterpret_cast<korvex_dialogs_function>(::dlsym(module, KORVEX_DIALOGS_SYMBOL));
  // A module of another version is the real one, asked for that version.
  const bool is_other = std::getenv("KORVEX_OTHER_ABI") != nullptr;
  real = table(is_other ? abi + 1 : abi);
  if (real == nullptr) return nullptr;
  static korvex_dialogs pressing;
  pressing = *real;
  pressing.open_display = open_display;
  return &pressing;
}
