#include "dialogs/widgets/item_list_ctrl.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <vector>

#include "dialogs/dialog_driver.h"
#include "dialogs/widgets/item_list_model.h"
#include "dialogs/widgets/shown_text.h"
#include "values/records.h"

namespace korvex::test {
namespace {

ClDGColList make_items(int count) {
  ClDGColList items;
  for (int i = 0; i < count; ++i) {
    auto item = std::make_unique<ClDGCol>();
    item->name = std::string(1, static_cast<char>('A' + i)) + "_ITEM";
    item->description = "\x8C\xDA\x8B\x71";
    ItemDisplay& display = item->display();
    display.generation_text = "%8U";
    display.start = "1";
    display.end = "9";
    display.increment = "2";
    display.repeat_level = RepeatLevel{4};
    display.repeat_count = 7;
    items.push_back(std::move(item));
  }
  return items;
}

class ItemListTest : public testing::Test {
 protected:
  void show_list(int width) {
    list_.resize(width, 200);
    list_.setModel(&model_);
    list_.show();
    QApplication::setActiveWindow(&list_);
    list_.setFocus();
    list_.mark_row(0);
  }

  std::vector<int> widths() const {
    std::vector<int> found;
    for (int i = 0; i < list_.header()->count(); ++i) found.push_back(list_.columnWidth(i));
    return found;
  }

  QPoint middle_of(int row) const { return list_.visualRect(model_.index(row, 0)).center(); }

  // The background colour of a row.
  QColor background(int row) {
    QPoint place = list_.visualRect(model_.index(row, 6)).center();
    return list_.viewport()->grab().toImage().pixelColor(place);
  }

  ClDGColList items_ = make_items(20);
  ItemListModel model_{items_, generation_columns(layout_kind::record_file)};
  ClItemListCtrl list_;
};

TEST_F(ItemListTest, ShowsAnItemsSettings) {
  const auto row = [&] {
    std::string texts;
    for (int column = 0; column < model_.columnCount(); ++column) {
      texts += model_.index(0, column).data().toString().toStdString() + "|";
    }
    return texts;
  };
  EXPECT_EQ(row(), "A_ITEM|顧客|%8U|1|9|2|||");
  items_[0]->display().is_repeated = true;
  EXPECT_EQ(row(), "A_ITEM|顧客|%8U|1|9|2|4|7|");
}

TEST_F(ItemListTest, SharesItsOuterWidthInWholeUnitsUntilTheUserDragsAnEdge) {
  show_list(420);
  EXPECT_EQ(widths(), (std::vector<int>{60, 60, 60, 60, 60, 40, 40, 40}));
  list_.resize(440, 200);
  EXPECT_EQ(widths(), (std::vector<int>{60, 60, 60, 60, 60, 40, 40, 40}));
  list_.resize(849, 200);
  EXPECT_EQ(widths(), (std::vector<int>{120, 120, 120, 120, 120, 80, 80, 80}));
  EXPECT_FALSE(list_.horizontalScrollBar()->isVisible());
  const QPoint edge(list_.header()->sectionViewportPosition(1) - 1, 5);
  QWidget* header = list_.header()->viewport();
  QTest::mousePress(header, Qt::LeftButton, {}, edge);
  QTest::mouseMove(header, edge + QPoint(15, 0));
  QTest::mouseMove(header, edge + QPoint(30, 0));
  QTest::mouseRelease(header, Qt::LeftButton, {}, edge + QPoint(30, 0));
  const std::vector<int> dragged = widths();
  EXPECT_GT(dragged[0], 120);
  list_.resize(1200, 200);
  EXPECT_EQ(widths(), dragged);
}

TEST_F(ItemListTest, SharesItsWidthBetweenTwoColumns) {
  ItemListModel names(items_, selection_columns(layout_kind::record_file));
  list_.resize(300, 200);
  list_.setModel(&names);
  EXPECT_EQ(widths(), (std::vector<int>{180, 120}));
  list_.setModel(nullptr);
}

// A cell that is cut says the whole text; a double click on the divider makes room for it.
TEST_F(ItemListTest, ShowsLongTextsWholeWhenAsked) {
  items_[3]->name = "<b>a name & many words</b>";
  show_list(420);
  const auto tooltip = [&](int row) {
    QHelpEvent event(QEvent::ToolTip, middle_of(row),
                     list_.viewport()->mapToGlobal(middle_of(row)));
    QApplication::sendEvent(list_.viewport(), &event);
    return QToolTip::isVisible() ? as_seen(QToolTip::text()) : "";
  };
  EXPECT_EQ(tooltip(3), items_[3]->name);
  QTest::mouseDClick(list_.header()->viewport(), Qt::LeftButton, {}, QPoint(widths()[0] - 1, 5));
  const QString name = QString::fromStdString(items_[3]->name);
  EXPECT_GE(widths()[0], list_.fontMetrics().horizontalAdvance(name));
  QToolTip::hideText();
  EXPECT_EQ(tooltip(3), "");
}

TEST_F(ItemListTest, TellsOfEachNewRowOnce) {
  const QSignalSpy rows(&list_, &ClItemListCtrl::row_selected);
  show_list(640);
  QTest::keyClick(&list_, Qt::Key_Down);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, middle_of(3));
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, middle_of(3));
  QTest::keyClick(&list_, Qt::Key_End);
  QTest::keyClick(&list_, Qt::Key_Home);
  QTest::keyClicks(&list_, "e");
  list_.mark_row(2);
  list_.mark_row(2);
  list_.mark_row(99);
  std::vector<int> told;
  for (const QList<QVariant>& row : rows) told.push_back(row.at(0).toInt());
  EXPECT_EQ(told, (std::vector<int>{0, 1, 3, 19, 0, 4, 2}));
  EXPECT_EQ(list_.current_row(), 2);
}

TEST_F(ItemListTest, NothingTakesTheSelectionAwayAndItStaysHighlighted) {
  show_list(640);
  list_.mark_row(1);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, Qt::ControlModifier, middle_of(1));
  QTest::keyClick(&list_, Qt::Key_Space, Qt::ControlModifier);
  list_.resize(640, 900);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, QPoint(10, 880));
  EXPECT_TRUE(list_.selectionModel()->isRowSelected(1));
  const QPalette palette = list_.palette();
  const QSignalSpy losses(&list_, &ClItemListCtrl::focus_lost);
  for (const bool has_focus : {true, false}) {
    EXPECT_EQ(list_.hasFocus(), has_focus);
    EXPECT_EQ(background(1), palette.color(QPalette::Active, QPalette::Highlight));
    EXPECT_EQ(background(2), palette.color(QPalette::Active, QPalette::Base));
    list_.clearFocus();
  }
  EXPECT_EQ(losses.count(), 1);
}

TEST_F(ItemListTest, ShowsNoTextInAColumnOfThreeLettersWidth) {
  show_list(640);
  const int limit = 3 * list_.fontMetrics().horizontalAdvance(u'M');
  const QColor base = list_.palette().color(QPalette::Active, QPalette::Base);
  const auto shows_text = [&](int width) {
    list_.setColumnWidth(0, width);
    const QRect cell = list_.visualRect(model_.index(1, 0));
    const QImage image = list_.viewport()->grab(cell).toImage();
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) != base) return true;
      }
    }
    return false;
  };
  EXPECT_FALSE(shows_text(limit));
  EXPECT_TRUE(shows_text(limit + 1));
}

TEST_F(ItemListTest, DrawsARowAgainWhenItHasChanged) {
  show_list(640);
  const QRect row = list_.visualRect(model_.index(1, 2));
  const QImage before = list_.viewport()->grab(row).toImage();
  items_[1]->display().generation_text = "%YMD";
  const QSignalSpy changes(&model_, &QAbstractItemModel::dataChanged);
  model_.row_changed(1);
  model_.row_changed(-1);
  EXPECT_EQ(changes.count(), 1);
  EXPECT_NE(list_.viewport()->grab(row).toImage(), before);
}

TEST(FitTextTest, CutsWhatIsTooWide) {
  const auto one_a_byte = [](std::string_view text) { return static_cast<int>(text.size()); };
  // The text, its column, the margin and what is shown. Every byte is one wide, so the dots and the
  // byte after them take four.
  const std::tuple<std::string, int, int, std::string> cases[] = {
      {"", 0, 4, ""},
      {"abcdef", 10, 4, "abcdef"},
      {"abcdefg", 10, 4, "ab..."},
      {"abcdefghijklmnopq", 20, 12, "abcd..."},
      {"abcdef", 3, 4, "..."},
      {"\x82\xA0\x82\xA2\x82\xA4", 5, 0, "..."},
      {"\x82\xA0\x82\xA2\x82\xA4\x82\xA6", 7, 0, "\x82\xA0..."},
      {"a\x82\xA0\x82\xA2\x82\xA4\x82\xA6", 7, 0, "a\x82\xA0..."},
      // A trail byte that looks like a lead byte.
      {"a\x83\x81\x83\x81\x83\x81\x83\x81", 7, 0, "a\x83..."},
      {std::string(40000, 'a'), 100000, 4, std::string(32767, 'a')},
      {std::string(40000, 'a'), 32767, 4, std::string(32767 - 8, 'a') + "..."},
  };
  for (const auto& [text, width, margin, shown] : cases) {
    EXPECT_EQ(fit_text(text, width, margin, one_a_byte), shown) << text.substr(0, 20);
  }
  // The dots come even when everything was kept.
  const auto wide_end = [&](std::string_view text) {
    return one_a_byte(text) + (text.ends_with('W') ? 50 : 0);
  };
  EXPECT_EQ(fit_text("abW", 20, 4, wide_end), "abW...");
}

}  // namespace
}  // namespace korvex::test
