#include <QAccessible>
#include <QDesktopServices>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>
#include <map>

#include "dialogs/dialog_driver.h"
#include "dialogs/dialog_setup.h"
#include "dialogs/rules/setup_fields.h"
#include "dialogs/widgets/item_list_ctrl.h"
#include "dialogs/widgets/placement.h"
#include "dialogs/widgets/scroll_pane.h"
#include "dialogs/windows/data_generation_dlg.h"
#include "dialogs/windows/generating_data_dlg.h"
#include "dialogs/windows/item_value_update_dlg.h"

// What holds for all windows, in the wordings of items and of columns.
namespace korvex::test {
namespace {

namespace id = control_id;
using Check = std::function<void(FormDialog&)>;

void leave(FormDialog& dialog) { dialog.done(dialog_result::cancel); }

void show_windows(std::int32_t layout_kind, const Check& check) {
  DialogSetup setup;
  setup.write(three_items(), {.layout_kind = layout_kind});
  const Step look = [&](FormDialog& dialog) {
    SCOPED_TRACE(dialog.windowTitle().toStdString() + " of kind " + std::to_string(layout_kind));
    check(dialog);
  };
  const Steps of_items[] = {
      {look, leave},
      {click(id::setup), look, leave, leave},
      {click(id::setup), click(id::select_example), look, leave, leave, leave}};
  for (const Steps& story : of_items) {
    ClDataGenerationDlg dialog(nullptr, setup.control(), run_mode::settings_only, 0);
    play(dialog, story);
  }
  const Steps of_one_item[] = {{choose(id::type, number_of(type_entry::range)), look, leave},
                               {click(id::browse_items), look, leave, leave}};
  for (const Steps& story : of_one_item) {
    ClItemValueUpdateDlg dialog(nullptr, setup.control());
    play(dialog, story);
  }
  ClGeneratingDataDlg progress(nullptr, true);
  progress.activateWindow();
  QApplication::processEvents();
  check(progress);
}

void for_each_window(const Check& check) {
  for (const LayoutKind kind : {layout_kind::record_file, layout_kind::table}) {
    show_windows(number_of(kind), check);
  }
}

template <class Widget>
std::vector<Widget*> seen(const FormDialog& dialog) {
  std::vector<Widget*> found;
  for (Widget* widget : dialog.findChildren<Widget*>()) {
    if (widget->isVisible()) found.push_back(widget);
  }
  return found;
}

int drawn_as_default(const FormDialog& dialog) {
  const auto buttons = seen<QPushButton>(dialog);
  return static_cast<int>(std::count_if(buttons.begin(), buttons.end(),
                                        [](auto* button) { return button->isDefault(); }));
}

TEST(EveryWindowTest, EnterAndSpacePressTheFocusedButtonAlone) {
  for_each_window([](FormDialog& dialog) {
    std::vector<QPushButton*> pressed;
    for (QPushButton* button : seen<QPushButton>(dialog)) {
      button->setEnabled(true);
      QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
      QObject::connect(button, &QPushButton::clicked, [&, button] { pressed.push_back(button); });
    }
    for (QPushButton* button : seen<QPushButton>(dialog)) {
      for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        pressed.clear();
        button->setFocus();
        EXPECT_TRUE(button->isDefault()) << button->text().toStdString();
        EXPECT_EQ(drawn_as_default(dialog), 1);
        QTest::keyClick(button, key);
        EXPECT_EQ(pressed, std::vector{button}) << button->text().toStdString() << " by " << key;
      }
    }
    for (QWidget* widget : seen<QWidget>(dialog)) {
      if (qobject_cast<QPushButton*>(widget) != nullptr || !widget->isEnabled()) continue;
      widget->setFocus();
      EXPECT_LE(drawn_as_default(dialog), 1) << widget->objectName().toStdString();
    }
  });
}

TEST(EveryWindowTest, EachMnemonicIsThatOfOneControl) {
  for_each_window([](FormDialog& dialog) {
    std::map<QKeySequence, std::string> owners;
    for (const QWidget* widget : seen<QWidget>(dialog)) {
      for (const char* property : {"text", "title"}) {
        const QString text = widget->property(property).toString();
        const QKeySequence mnemonic = QKeySequence::mnemonic(text);
        if (mnemonic.isEmpty()) continue;
        const auto [owner, is_new] = owners.emplace(mnemonic, text.toStdString());
        EXPECT_TRUE(is_new) << owner->second << " and " << text.toStdString();
      }
    }
  });
}

// As a screen reader hears them. The texts beside the controls are no controls.
TEST(EveryWindowTest, EachControlHasANameOfItsOwn) {
  for_each_window([](FormDialog& dialog) {
    std::map<QString, std::string> owners;
    for (QWidget* widget : seen<QWidget>(dialog)) {
      const bool is_control = widget->property("controlId").isValid() ||
                              qobject_cast<QAbstractButton*>(widget) != nullptr ||
                              qobject_cast<QGroupBox*>(widget) != nullptr ||
                              qobject_cast<QLineEdit*>(widget) != nullptr;
      if (!is_control || qobject_cast<QLabel*>(widget) != nullptr) continue;
      const std::string what = widget->objectName().toStdString();
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
      ASSERT_NE(interface, nullptr) << what;
      const QString name = interface->text(QAccessible::Name);
      EXPECT_FALSE(name.isEmpty()) << what;
      const auto [owner, is_new] = owners.emplace(name, what);
      EXPECT_TRUE(is_new) << name.toStdString() << " is " << what << " and " << owner->second;
    }
  });
}

TEST(EveryWindowTest, TheWheelChoosesOnlyInAFocusedList) {
  for_each_window([](FormDialog& dialog) {
    for (QComboBox* list : seen<QComboBox>(dialog)) {
      list->setEnabled(true);
      list->setCurrentIndex(0);
      const auto turn = [list] {
        const QPointF middle = QRectF(list->rect()).center();
        QWheelEvent event(middle, list->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(list, &event);
        return list->currentIndex();
      };
      EXPECT_EQ(list->focusPolicy(), Qt::StrongFocus);
      list->clearFocus();
      EXPECT_EQ(turn(), 0) << list->objectName().toStdString();
      list->setFocus();
      EXPECT_EQ(turn(), 1) << list->objectName().toStdString();
    }
  });
}

TEST(EveryWindowTest, FitsSmallScreensAndLargeLetters) {
  struct Case {
    double points;
    QSize screen;
  };
  const Case cases[] = {
      {9, {1920, 1040}}, {9, {960, 500}}, {9, {640, 360}}, {18, {1920, 1040}}, {18, {960, 500}}};
  const QFont font_before = QApplication::font();
  for (const Case& c : cases) {
    QFont font = font_before;
    font.setPointSizeF(c.points);
    QApplication::setFont(font);
    for_each_window([&](FormDialog& dialog) {
      dialog.fit_into(QRect(QPoint(), c.screen));
      EXPECT_LT(dialog.width(), c.screen.width()) << c.points;
      EXPECT_LT(dialog.height(), c.screen.height()) << c.points;
      for (const char* name : {"okButton", "cancelButton"}) {
        const auto* button = dialog.findChild<QPushButton*>(name);
        if (button == nullptr) continue;
        const QRect place(button->mapTo(&dialog, QPoint()), button->size());
        EXPECT_TRUE(dialog.rect().contains(place)) << name << " at " << c.points;
        EXPECT_GE(button->width(), button->minimumSizeHint().width());
      }
      // Lists give way before the window scrolls.
      for (const ScrollPane* pane : seen<ScrollPane>(dialog)) {
        if (pane->verticalScrollBar()->maximum() == 0) continue;
        for (const QAbstractItemView* list : pane->findChildren<QAbstractItemView*>()) {
          if (!list->isVisible()) continue;
          EXPECT_EQ(list->height(), list->minimumHeight()) << list->objectName().toStdString();
        }
      }
    });
  }
  QApplication::setFont(font_before);
}

TEST(EveryWindowTest, OpensAsTheUserLeftIt) {
  DialogSetup setup;
  setup.write();
  const auto list = [](FormDialog& dialog) { return dialog.control<ClItemListCtrl>(id::items); };
  const auto run = [&](const Step& step) {
    ClDataGenerationDlg dialog(nullptr, setup.control(), run_mode::settings_only, 0);
    play(dialog, {step, click(id::cancel)});
  };
  const QSize wanted(700, 480);
  const std::vector<int> widths{90, 80, 70, 60, 50, 90, 80, 70};
  run([&](FormDialog& dialog) {
    EXPECT_EQ(list(dialog)->user_widths(), std::vector<int>{});
    dialog.resize(wanted);
    list(dialog)->set_user_widths(widths);
  });
  run([&](FormDialog& dialog) {
    EXPECT_EQ(dialog.size(), wanted);
    EXPECT_EQ(list(dialog)->user_widths(), widths);
  });
  for (const char* nonsense : {"", "700", "-700x480", "700x0", "700x99999999999", "axb", "1x1x1"}) {
    write_store_value(setup.store(), "ClDataGenerationDlgSize", nonsense);
    write_store_value(setup.store(), "ClDataGenerationDlgColumns", nonsense);
    run([&](FormDialog& dialog) {
      EXPECT_GT(dialog.width(), wanted.width()) << nonsense;
      EXPECT_EQ(list(dialog)->user_widths(), std::vector<int>{}) << nonsense;
    });
  }
}

class PageOpener : public QObject {
  Q_OBJECT

 public:
  PageOpener() { QDesktopServices::setUrlHandler("file", this, "open"); }
  ~PageOpener() override { QDesktopServices::unsetUrlHandler("file"); }
  QStringList opened;

 public slots:
  void open(const QUrl& url) { opened << url.fileName(); }
};

TEST(EveryWindowTest, HelpAndF1OpenTheUsersPage) {
  PageOpener opener;
  for_each_window([&](FormDialog& dialog) {
    opener.opened.clear();
    QStringList expected = {"desktop.md"};
    if (dialog.findChild<QPushButton*>("helpButton") != nullptr) {
      click(id::help)(dialog);
      expected << "desktop.md";
    }
    QTest::keyClick(&dialog, Qt::Key_F1);
    EXPECT_EQ(opener.opened, expected);
  });
}

// Colours are the desktop's, also when it changes them while a window is open.
TEST(EveryWindowTest, TakesTheColoursOfTheDesktop) {
  const QPalette before = QApplication::palette();
  const QPalette dark(Qt::white, Qt::black, Qt::gray, Qt::darkGray, Qt::gray, Qt::white, Qt::black);
  for_each_window([&](FormDialog& dialog) {
    QApplication::setPalette(dark);
    QApplication::processEvents();
    for (const QWidget* widget : seen<QWidget>(dialog)) {
      for (const auto role : {QPalette::Base, QPalette::Window}) {
        EXPECT_EQ(widget->palette().color(role), Qt::black) << widget->objectName().toStdString();
      }
    }
    QApplication::setPalette(before);
  });
}

TEST(PlaceBesideTest, HidesAsLittleAsPossible) {
  const QRect screen(0, 0, 1000, 800);
  struct Case {
    const char* what;
    QRect seen;
    QSize window;
    QPoint place;
  };
  const Case cases[] = {
      {"right", {100, 100, 300, 200}, {500, 400}, {400, 100}},
      {"right, moved up", {100, 500, 300, 200}, {500, 400}, {400, 400}},
      {"left", {600, 100, 300, 200}, {500, 400}, {100, 100}},
      {"below", {300, 100, 400, 200}, {500, 400}, {300, 300}},
      {"above", {300, 500, 400, 200}, {500, 400}, {300, 100}},
      {"at the farther edge", {200, 100, 700, 600}, {500, 400}, {0, 100}},
      {"larger than the screen", {200, 100, 700, 600}, {1200, 900}, {0, 0}},
  };
  for (const Case& c : cases) EXPECT_EQ(place_beside(c.window, c.seen, screen), c.place) << c.what;
}

TEST(PlaceWithRoomTest, StaysInTheMiddleWhereThereIsRoom) {
  const QRect screen(0, 0, 1000, 800);
  const QRect owner(500, 100, 400, 300);
  EXPECT_EQ(place_with_room({300, 200}, owner, 100, screen), QPoint(550, 150));
  EXPECT_EQ(place_with_room({300, 200}, owner, 400, screen), QPoint(300, 150));
  EXPECT_EQ(place_with_room({600, 200}, screen, 500, screen), QPoint(0, 300));
  EXPECT_EQ(place_with_room({1200, 900}, screen, 500, screen), QPoint(0, 0));
}

}  // namespace
}  // namespace korvex::test

#include "every_window_test.moc"
