#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <optional>

#include "dialogs/dialog_setup.h"

namespace korvex::test {
namespace {

std::optional<Qt::CursorShape> override_cursor() {
  const QCursor* cursor = QApplication::overrideCursor();
  return cursor != nullptr ? std::optional(cursor->shape()) : std::nullopt;
}

// A host with windows calls the library itself, whose settings no longer fit: that ends in a
// message, under which the host's wait cursor makes room for a pointer.
TEST(WaitCursorTest, StandsOnTheHostsWindowsAndLeavesTheHostsOwnCursor) {
  void* library = ::dlopen(KORVEX_LIBRARY, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  ASSERT_NE(library, nullptr) << ::dlerror();
  using CheckCount = std::int32_t (*)(const char*);
  const auto check = reinterpret_cast<CheckCount>(::dlsym(library, "DGCheckRepeatCnt"));
  ASSERT_NE(check, nullptr);
  const ScopedVariable desktop("KORVEX_UI", "desktop");

  DialogSetup setup;
  std::optional<Qt::CursorShape> under_message;
  int messages = 0;
  QTimer presser;
  QObject::connect(&presser, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    ++messages;
    under_message = override_cursor();
    box->accept();
  });
  presser.start(10);
  const std::optional<Qt::CursorShape> hosts_own[] = {std::nullopt, Qt::CrossCursor};
  for (const std::optional<Qt::CursorShape>& own : hosts_own) {
    setup.save_settings();
    setup.write({{.attributes = {attribute::decimal, Flag::off, 9, 9, 0}}});
    if (own) QApplication::setOverrideCursor(*own);
    under_message.reset();
    messages = 0;
    EXPECT_EQ(check(setup.control().c_str()), -1);
    EXPECT_EQ(messages, 1);
    EXPECT_EQ(under_message, Qt::ArrowCursor);
    EXPECT_EQ(override_cursor(), own);
    if (own) QApplication::restoreOverrideCursor();
  }
}

}  // namespace
}  // namespace korvex::test
