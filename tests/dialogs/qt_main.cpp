#include <gtest/gtest.h>

#include <QApplication>

#include "support/environment.h"
#include "support/temp_folder.h"

// Windows without a screen, and settings that are nobody's.
int main(int argc, char** argv) {
  const korvex::test::TempFolder folder;
  const korvex::test::ScopedVariable platform("QT_QPA_PLATFORM", "offscreen");
  const korvex::test::ScopedVariable config("XDG_CONFIG_HOME", folder.path());
  const korvex::test::ScopedVariable runtime("XDG_RUNTIME_DIR", folder.path());
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
