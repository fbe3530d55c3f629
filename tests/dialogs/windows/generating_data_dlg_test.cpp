#include "dialogs/windows/generating_data_dlg.h"

#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <chrono>
#include <ctime>
#include <stdexcept>

#include "dialogs/dialog_driver.h"
#include "dialogs/dialog_setup.h"
#include "dialogs/windows/window_interface.h"
#include "run/generate_data_file.h"
#include "values/error_codes.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds longest_wait{100};

// The time that this program worked, which other programs on a busy machine do not stretch.
milliseconds own_time() {
  return milliseconds(static_cast<long>(std::clock()) * 1000 / CLOCKS_PER_SEC);
}

void* handle_of(QWidget& window) { return reinterpret_cast<void*>(window.winId()); }

TEST(GeneratingDataDlgTest, ItsOwnerTakesNoInputUntilItIsGone) {
  QWidget owner;
  owner.show();
  {
    const ClGeneratingDataDlg window(handle_of(owner), true);
    EXPECT_FALSE(owner.isEnabled());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.control(id::cancel)->isEnabled());
  }
  EXPECT_TRUE(owner.isEnabled());
  try {
    const ClGeneratingDataDlg window(handle_of(owner), false);
    EXPECT_FALSE(owner.isEnabled());
    throw std::runtime_error("out of memory");
  } catch (const std::runtime_error&) {
    EXPECT_TRUE(owner.isEnabled());
  }
  owner.setEnabled(false);  // by somebody else, whose affair it stays
  { const ClGeneratingDataDlg window(handle_of(owner), false); }
  EXPECT_FALSE(owner.isEnabled());
}

TEST(GeneratingDataDlgTest, ShowsPercentagesAndCancelsOnlyWhereThatIsAllowed) {
  for (const bool allowed : {true, false}) {
    ClGeneratingDataDlg window(nullptr, allowed);
    EXPECT_EQ(window.control(id::cancel)->isEnabled(), allowed);
    const std::function<void()> wishes[] = {
        [&] { QTest::mouseClick(window.control(id::cancel), Qt::LeftButton); },
        [&] { QTest::keyClick(&window, Qt::Key_Escape); }, [&] { window.close(); }};
    for (const auto& wish : wishes) {
      wish();
      EXPECT_EQ(window.cancel_requested(), allowed);
      EXPECT_FALSE(window.cancel_requested());  // each wish is told once
      EXPECT_TRUE(window.isVisible());
    }
    const auto* text = window.control<QLabel>(id::progress_percentage);
    EXPECT_EQ(text->text(), " 0 %");
    for (const int percent : {1, 50, 100}) {
      window.show_percentage(percent);
      EXPECT_EQ(window.control<QProgressBar>(id::progress_bar)->value(), percent);
      EXPECT_EQ(text->text(), QString::number(percent) + "%");
    }
  }
}

// Taking input is dear: a run that asks all the time takes it rarely.
TEST(GeneratingDataDlgTest, TakesInputAtMostEvery20Milliseconds) {
  ClGeneratingDataDlg window(nullptr, true);
  QTimer always;
  QSignalSpy looks(&always, &QTimer::timeout);
  always.start(0);
  const auto begin = Clock::now();
  while (Clock::now() - begin < milliseconds(200)) window.cancel_requested();
  const auto most = (Clock::now() - begin) / milliseconds(20) + 1;
  EXPECT_GT(looks.count(), 0);
  EXPECT_LE(looks.count(), most);
}

TEST(GeneratingDataDlgTest, AClickEndsALongRun) {
  const DialogSetup setup;
  setup.write_control({.records = 2'000'000'000});
  setup.save_settings();
  WindowInterface windows;
  const platform::UserInterfaceOverride shown(windows);
  ClGenerateDataFile generator;
  generator.main.control_path = setup.control();
  generator.output_option = OutputOption::guarded;
  milliseconds clicked{};
  QObject stage;
  constexpr milliseconds into_the_run{150};
  QTimer::singleShot(into_the_run, &stage, [&] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const auto* progress = dynamic_cast<ClGeneratingDataDlg*>(window);
      if (progress != nullptr) QTest::mouseClick(progress->control(id::cancel), Qt::LeftButton);
    }
    clicked = own_time();
  });
  EXPECT_EQ(generator.run(), error::cancelled);
  EXPECT_LT(own_time() - clicked, longest_wait);
  EXPECT_EQ(setup.outputs(), Names{});
}

}  // namespace
}  // namespace korvex::test
