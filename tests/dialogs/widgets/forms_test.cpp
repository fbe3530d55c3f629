#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <algorithm>
#include <string>
#include <vector>

#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/item_list_ctrl.h"
#include "dialogs/widgets/up_down.h"
#include "ui_ClDataGenerationDlg.h"
#include "ui_ClGeneratingDataDlg.h"
#include "ui_ClItemValueUpdateDlg.h"
#include "ui_ClSelectFormatExampleDlg.h"
#include "ui_ClSelectItemDlg.h"
#include "ui_ClSetupFormatDlg.h"

namespace korvex::test {
namespace {

struct Form {
  const char* name;
  void (*set_up)(QDialog*);
};

template <class Ui>
void set_up(QDialog* dialog) {
  Ui form;
  form.setupUi(dialog);
}

const Form forms[] = {
    {"DataGeneration", set_up<Ui::ClDataGenerationDlg>},
    {"SetupFormat", set_up<Ui::ClSetupFormatDlg>},
    {"SelectFormatExample", set_up<Ui::ClSelectFormatExampleDlg>},
    {"SelectItem", set_up<Ui::ClSelectItemDlg>},
    {"ItemValueUpdate", set_up<Ui::ClItemValueUpdateDlg>},
    {"GeneratingData", set_up<Ui::ClGeneratingDataDlg>},
};

void PrintTo(const Form& form, std::ostream* out) { *out << form.name; }

int id_of(const QWidget* widget) { return widget->property("controlId").toInt(); }

class FormsTest : public testing::TestWithParam<Form> {
 protected:
  FormsTest() {
    GetParam().set_up(&dialog_);
    for (QWidget* widget : dialog_.findChildren<QWidget*>()) {
      if (widget->property("controlId").isValid()) controls_.push_back(widget);
    }
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
    QCoreApplication::sendPostedEvents();
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
  QDialog generation, setup;
  Ui::ClDataGenerationDlg lists;
  Ui::ClSetupFormatDlg fields;
  lists.setupUi(&generation);
  fields.setupUi(&setup);
  EXPECT_EQ(lists.levelEdit->maxLength(), 30);
  EXPECT_EQ(lists.countEdit->maxLength(), 30);
  EXPECT_EQ(lists.quotationBox->itemText(0) + lists.quotationBox->itemText(1), "なし\"\"");
  EXPECT_EQ(fields.startEdit->byte_limit(), 256);
  EXPECT_EQ(fields.endEdit->byte_limit(), 256);
  EXPECT_EQ(fields.incrementEdit->byte_limit(), 24);
  const std::tuple<const UpDown*, int, int> steppers[] = {{lists.levelStepper, 0, 32767},
                                                          {lists.countStepper, 0, 32767},
                                                          {fields.incrementStepper, -9, 9}};
  for (const auto& [stepper, least, most] : steppers) {
    EXPECT_EQ(stepper->minimum(), least);
    EXPECT_EQ(stepper->maximum(), most);
  }
}

}  // namespace
}  // namespace korvex::test
