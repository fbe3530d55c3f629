#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "dialogs/control_ids.h"
#include "dialogs/item_list_ctrl.h"
#include "dialogs/up_down.h"
#include "ui_ClDataGenerationDlg.h"
#include "ui_ClGeneratingDataDlg.h"
#include "ui_ClItemValueUpdateDlg.h"
#include "ui_ClSelectFormatExampleDlg.h"
#include "ui_ClSelectItemDlg.h"
#include "ui_ClSetupFormatDlg.h"

namespace korvex::test {
namespace {

struct Control {
  int id;
  const char* text = "";  // nothing for a control that shows no text of its own
  int buddy = 0;
};

struct Form {
  const char* name;
  const char* title;
  void (*set_up)(QDialog*);
  std::vector<Control> controls;
  std::set<int> disabled;
  std::set<int> hidden;
  std::set<int> checked;
  int default_button;
};

template <class Ui>
void set_up(QDialog* dialog) {
  Ui form;
  form.setupUi(dialog);
}

const Form forms[] = {
    {"DataGeneration",
     "Data Generation",
     set_up<Ui::ClDataGenerationDlg>,
     {{1017, "Auto-&Generation Information"},
      {1029},
      {1420, "&Setup"},
      {1421, "&Delete"},
      {1506, "Repetition generation information"},
      {1018, "&Repeats"},
      {1507, "&Level:", 1008},
      {1008},
      {1009},
      {1508, "&Number of repetitions:", 1010},
      {1010},
      {1011},
      {1026, "&Update"},
      {1502, "出力情報"},
      {1427, "引用符の指定(&Z):", 1428},
      {1428},
      {1039, "繰り返し指定書式のみのﾚｺｰﾄﾞ件数を計算して表示する(&C)"},
      {1503, "生成ﾚｺｰﾄﾞ件数:", 1019},
      {1019},
      {1504, "生成ﾌｧｲﾙの予測ｻｲｽﾞ:", 1020},
      {1020},
      {1, "OK"},
      {2, "Cancel"},
      {57670, "Help"}},
     {1507, 1008, 1009, 1508, 1010, 1011, 1026, 1502, 1427, 1428, 1039, 57670},
     {1502, 1427, 1428, 1039, 1503, 1019, 1504, 1020},
     {1039},
     1},
    {"SetupFormat",
     "Setup Format",
     set_up<Ui::ClSetupFormatDlg>,
     {{1038, "Item Information"},
      {1036, "Item:", 1034},
      {1034},
      {1037, "Desc:", 1035},
      {1035},
      {1027, "Format Information"},
      {1424, "&Type:", 1422},
      {1422},
      {1505, "File Name:", 1012},
      {1012},
      {1013, "Se&lect File ..."},
      {1025, "&Browse ..."},
      {1003, "&Reference Item:", 1423},
      {1423},
      {1418, "F&ormat:", 1417},
      {1417},
      {1419, "&Custom Format"},
      {1400, "Select For&mat Example..."},
      {1407, "&Start Value:", 1406},
      {1406},
      {1409, "&End Value:", 1408},
      {1408},
      {1411, "Increment &Value:", 1410},
      {1410},
      {1014},
      {1028, "If end value exceeded"},
      {1416, "&Initializing"},
      {1402, "Re&peat from the start value"},
      {1401, "&Delete"},
      {1033, "Set&up"},
      {1023, "Pre&vious Item"},
      {1022, "&Next Item"},
      {1, "OK"},
      {2, "Cancel"},
      {57670, "Help"}},
     {1505, 1012, 1013, 1025, 1003, 1423, 57670},
     {},
     {},
     1033},
    {"SelectFormatExample",
     "Select Format Example",
     set_up<Ui::ClSelectFormatExampleDlg>,
     {{1015, "&Format:", 1030},
      {1030},
      {1400, "&Add"},
      {1401, "&Delete"},
      {1017, "For&mat Example"},
      {1429},
      {1, "OK"},
      {2, "Cancel"},
      {57670, "Help"}},
     {57670},
     {},
     {},
     1},
    {"SelectItem",
     "Select Item",
     set_up<Ui::ClSelectItemDlg>,
     {{1192, "Select &Item Name", 1272},
      {1272},
      {1007, "&Select Item"},
      {1114},
      {1, "OK"},
      {2, "Cancel"},
      {57670, "Help"}},
     {57670},
     {},
     {},
     1},
    {"ItemValueUpdate",
     "Item value update by Generation",
     set_up<Ui::ClItemValueUpdateDlg>,
     {{1405, "Auto-Generation Information"},
      {1427, "Ite&m Name :", 1430},
      {1430},
      {1431, "B&rowse..."},
      {1236, "Attribute :"},
      {1428},
      {1412, "Format Information"},
      {1424, "&Type :", 1422},
      {1422},
      {1419, "&Custom Format"},
      {1418, "&Format :", 1417},
      {1417},
      {1400, "&Add"},
      {1401, "&Delete"},
      {1414, "F&ormat Example :", 1413},
      {1413},
      {1407, "&Start Value :", 1406},
      {1406},
      {1409, "&End Value :", 1408},
      {1408},
      {1411, "I&ncrement Value :", 1410},
      {1410},
      {1415, "If end value exceeded"},
      {1416, "&Initializing"},
      {1402, "Re&peat from the start value"},
      {1, "OK"},
      {2, "Cancel"},
      {57670, "Help"}},
     {1419, 1418, 1417, 1400, 1401, 1414, 1413, 1407, 1406, 1409, 1408, 1411, 1410, 1416, 1402,
      57670},
     {},
     {1416},
     1},
    {"GeneratingData",
     "Data Generation",
     set_up<Ui::ClGeneratingDataDlg>,
     {{1043, "Generating Data"}, {1041}, {1042, " 0 %"}, {2, "Cancel"}},
     {},
     {},
     {},
     0},
};

void PrintTo(const Form& form, std::ostream* out) { *out << form.name; }

int id_of(const QWidget* widget) { return widget->property("controlId").toInt(); }

QString text_of(const QWidget* widget) {
  if (qobject_cast<const QProgressBar*>(widget) != nullptr) return {};
  for (const char* property : {"title", "text"}) {
    const QVariant text = widget->property(property);
    if (text.isValid()) return text.toString();
  }
  return {};
}

class FormsTest : public testing::TestWithParam<Form> {
 protected:
  FormsTest() {
    GetParam().set_up(&dialog_);
    for (QWidget* widget : dialog_.findChildren<QWidget*>()) {
      if (widget->property("controlId").isValid()) controls_.push_back(widget);
    }
  }

  // The controls that differ from the others in something, by number.
  template <class Predicate>
  std::set<int> those(Predicate predicate) const {
    std::set<int> found;
    for (const QWidget* widget : controls_) {
      if (predicate(widget)) found.insert(id_of(widget));
    }
    return found;
  }

  std::vector<QWidget*> tab_stops() const {
    std::vector<QWidget*> stops;
    for (QWidget* widget = dialog_.nextInFocusChain(); widget != &dialog_;
         widget = widget->nextInFocusChain()) {
      const bool is_stop = (widget->focusPolicy() & Qt::TabFocus) != 0;
      if (is_stop && widget->isVisible() && widget->focusProxy() == nullptr &&
          widget->property("controlId").isValid()) {
        stops.push_back(widget);
      }
    }
    return stops;
  }

  QRect place_of(const QWidget* widget) const {
    return {widget->mapTo(&dialog_, QPoint()), widget->size()};
  }

  QDialog dialog_;
  std::vector<QWidget*> controls_;
};

INSTANTIATE_TEST_SUITE_P(All, FormsTest, testing::ValuesIn(forms),
                         [](const auto& form) { return form.param.name; });

TEST_P(FormsTest, HasEveryControlOfItsTemplateOnce) {
  EXPECT_EQ(dialog_.windowTitle(), GetParam().title);
  std::vector<int> expected;
  for (const Control& control : GetParam().controls) expected.push_back(control.id);
  std::vector<int> found;
  for (const QWidget* widget : controls_) found.push_back(id_of(widget));
  std::sort(expected.begin(), expected.end());
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, expected);
}

TEST_P(FormsTest, SaysWhatItShould) {
  for (const Control& control : GetParam().controls) {
    const auto widget = std::find_if(controls_.begin(), controls_.end(), [&](const QWidget* other) {
      return id_of(other) == control.id;
    });
    ASSERT_NE(widget, controls_.end()) << control.id;
    EXPECT_EQ(text_of(*widget).toStdString(), control.text) << control.id;
    const auto* label = qobject_cast<QLabel*>(*widget);
    const QWidget* buddy = label != nullptr ? label->buddy() : nullptr;
    EXPECT_EQ(buddy != nullptr ? id_of(buddy) : 0, control.buddy) << control.id;
  }
}

TEST_P(FormsTest, BeginsInTheStateOfItsTemplate) {
  const Form& form = GetParam();
  EXPECT_EQ(those([](const QWidget* w) { return !w->isEnabledTo(w->parentWidget()); }),
            form.disabled);
  EXPECT_EQ(those([](const QWidget* w) {
              return w->testAttribute(Qt::WA_WState_ExplicitShowHide) && w->isHidden();
            }),
            form.hidden);
  EXPECT_EQ(those([](const QWidget* w) { return w->property("checked").toBool(); }), form.checked);
  dialog_.show();
  for (const QWidget* widget : controls_) {
    EXPECT_EQ(widget->isVisible(), !form.hidden.contains(id_of(widget))) << id_of(widget);
  }
}

TEST_P(FormsTest, HasOneDefaultButtonThatFocusDoesNotMove) {
  for (const QPushButton* button : dialog_.findChildren<QPushButton*>()) {
    EXPECT_FALSE(button->autoDefault()) << id_of(button);
    EXPECT_EQ(button->isDefault(), id_of(button) == GetParam().default_button) << id_of(button);
  }
}

TEST_P(FormsTest, TellsAScreenReaderWhatEachControlIs) {
  std::set<const QWidget*> labelled;
  for (const QLabel* label : dialog_.findChildren<QLabel*>()) labelled.insert(label->buddy());
  for (const QWidget* widget : controls_) {
    if (qobject_cast<const QLabel*>(widget) != nullptr || labelled.contains(widget)) continue;
    EXPECT_FALSE(text_of(widget).isEmpty() && widget->accessibleName().isEmpty()) << id_of(widget);
  }
}

TEST_P(FormsTest, TabReachesEveryControlRowByRow) {
  dialog_.show();
  const std::vector<QWidget*> stops = tab_stops();
  for (const QWidget* widget : controls_) {
    const bool is_worked = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible();
    EXPECT_EQ(std::count(stops.begin(), stops.end(), widget), is_worked ? 1 : 0) << id_of(widget);
  }
  for (std::size_t i = 1; i < stops.size(); ++i) {
    const QRect before = place_of(stops[i - 1]);
    const QRect after = place_of(stops[i]);
    const bool is_below = after.top() > before.bottom();
    const bool is_right = after.bottom() >= before.top() && after.left() > before.right();
    EXPECT_TRUE(is_below || is_right) << id_of(stops[i - 1]) << " then " << id_of(stops[i]);
  }
}

TEST_P(FormsTest, ShowsEveryTextWholeInLargerLetters) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    QFont font = dialog_.font();
    font.setPointSizeF(9 * scale);
    dialog_.setFont(font);
    dialog_.show();
    dialog_.resize(dialog_.minimumSizeHint());
    for (const QWidget* widget : controls_) {
      const bool is_text = qobject_cast<const QLabel*>(widget) != nullptr ||
                           qobject_cast<const QAbstractButton*>(widget) != nullptr;
      if (!is_text || !widget->isVisible()) continue;
      EXPECT_GE(widget->width(), widget->sizeHint().width()) << id_of(widget) << " at " << scale;
      EXPECT_GE(widget->height(), widget->sizeHint().height()) << id_of(widget) << " at " << scale;
    }
    dialog_.hide();
  }
}

TEST(FormLimitsTest, AreInTheForms) {
  QDialog generation;
  Ui::ClDataGenerationDlg lists;
  lists.setupUi(&generation);
  EXPECT_EQ(lists.levelEdit->maxLength(), 30);
  EXPECT_EQ(lists.countEdit->maxLength(), 30);
  for (const UpDown* stepper : {lists.levelStepper, lists.countStepper}) {
    EXPECT_EQ(stepper->minimum(), 0);
    EXPECT_EQ(stepper->maximum(), 32767);
  }
  EXPECT_EQ(lists.quotationBox->itemText(0), "なし");
  EXPECT_EQ(lists.quotationBox->itemText(1), "\"\"");

  QDialog setup;
  Ui::ClSetupFormatDlg fields;
  fields.setupUi(&setup);
  EXPECT_EQ(fields.startEdit->byte_limit(), 256);
  EXPECT_EQ(fields.endEdit->byte_limit(), 256);
  EXPECT_EQ(fields.incrementEdit->byte_limit(), 24);
  EXPECT_EQ(fields.incrementStepper->minimum(), -9);
  EXPECT_EQ(fields.incrementStepper->maximum(), 9);
}

}  // namespace
}  // namespace korvex::test
