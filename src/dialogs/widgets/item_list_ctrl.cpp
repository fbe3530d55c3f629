#include "dialogs/widgets/item_list_ctrl.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <string>
#include <string_view>

#include "dialogs/widgets/item_list_model.h"
#include "dialogs/widgets/shown_text.h"
#include "platform/codepage.h"

namespace korvex {

namespace {

// A column that is not wider than this many "M" shows no text.
constexpr int least_column_letters = 3;
constexpr int row_padding = 6;

// How far a column's text keeps from its edges: what it gives up for that when it is fitted, and by
// how much its place is narrowed on either side.
struct TextSpace {
  int margin;
  int inset;
};
constexpr TextSpace first_column_space = {4, 2};
constexpr TextSpace further_column_space = {12, 6};

bool ends_in_half_character(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) at += platform::is_lead_byte(bytes[at]) ? 2 : 1;
  return at > bytes.size();
}

// Half a character, and the byte that ends a text, take as much room as a blank.
int drawn_width(std::string_view bytes, const QFontMetrics& metrics) {
  std::string drawn(bytes);
  std::replace(drawn.begin(), drawn.end(), '\0', ' ');
  if (ends_in_half_character(drawn)) drawn.back() = ' ';
  return metrics.horizontalAdvance(shown(drawn));
}

QString fitted(const QByteArray& bytes, int width, int margin, const QFontMetrics& metrics) {
  const std::string_view text(bytes.data(), static_cast<std::size_t>(bytes.size()));
  std::string kept = fit_text(text, width, margin,
                              [&](std::string_view part) { return drawn_width(part, metrics); });
  // Fitting counts bytes and may keep only the first one of a character, which would show as a
  // mark of its own in front of the dots.
  const std::string_view dots = "...";
  const std::size_t head = kept.size() - std::min(kept.size(), dots.size());
  if (kept != text && ends_in_half_character(std::string_view(kept).substr(0, head))) {
    kept.erase(head - 1, 1);
  }
  return shown(kept);
}

class ItemDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const bool is_selected = option.state.testFlag(QStyle::State_Selected);
    const QPalette& palette = option.palette;
    painter->fillRect(option.rect, palette.brush(QPalette::Active, is_selected ? QPalette::Highlight
                                                                               : QPalette::Base));
    const QRect place = seen_part(option, index);
    const int least_width = least_column_letters * option.fontMetrics.horizontalAdvance(u'M');
    if (place.width() <= least_width) return;
    const TextSpace& space = space_of(index);
    const QString text = fitted(index.data(ItemListModel::bytes_role).toByteArray(), place.width(),
                                space.margin, option.fontMetrics);
    painter->setPen(
        palette.color(QPalette::Active, is_selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(place.adjusted(space.inset, 0, -space.inset, 0),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                      text);
  }

  // Wide enough for the whole text: a double click on the divider makes its column so.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const int least_width = least_column_letters * option.fontMetrics.horizontalAdvance(u'M') + 1;
    const int text_width = option.fontMetrics.horizontalAdvance(index.data().toString());
    return {std::max(least_width, text_width + space_of(index).margin),
            option.fontMetrics.height() + row_padding};
  }

  // A text that is cut stands whole in a tooltip.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    const bool is_asked = event->type() == QEvent::ToolTip && index.isValid();
    if (!is_asked) return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool is_cut = seen_part(option, index).width() < sizeHint(option, index).width();
    const QString text = is_cut ? tooltip_text(index.data().toString()) : QString();
    QToolTip::showText(event->globalPos(), text, view, view->visualRect(index));
    return true;
  }

 private:
  static const TextSpace& space_of(const QModelIndex& index) {
    return index.column() == 0 ? first_column_space : further_column_space;
  }

  static QRect seen_part(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* list = qobject_cast<const ClItemListCtrl*>(option.widget);
    QRect place = option.rect;
    if (list != nullptr) place.setWidth(list->seen_width(index.column()));
    return place;
  }
};

class Header : public QHeaderView {
 public:
  explicit Header(ClItemListCtrl& list) : QHeaderView(Qt::Horizontal, &list), list_(list) {}

 protected:
  void paintSection(QPainter* painter, const QRect& section, int column) const override {
    QRect seen = section;
    seen.setWidth(list_.seen_width(column));
    QHeaderView::paintSection(painter, seen, column);
  }

 private:
  const ClItemListCtrl& list_;
};

}  // namespace

ClItemListCtrl::ClItemListCtrl(QWidget* parent) : QTreeView(parent) {
  setItemDelegate(new ItemDelegate(this));
  setHeader(new Header(*this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setUniformRowHeights(true);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  // The shares fill the list's outer width, frame and scroll bar included: nothing worth scrolling.
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  header()->setMinimumSectionSize(1);
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter | Qt::Alignment(Qt::TextWordWrap));
  connect(header(), &QHeaderView::sectionResized, this, &ClItemListCtrl::on_section_resized);
}

void ClItemListCtrl::setModel(QAbstractItemModel* new_model) {
  is_sizing_columns_ = true;
  QTreeView::setModel(new_model);
  is_sizing_columns_ = false;
  apply_column_widths();
  if (selectionModel() == nullptr) return;
  // A row becomes current before it is selected.
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this](const QItemSelection& selected) {
            if (selected.contains(currentIndex())) emit row_selected(current_row());
          });
}

void ClItemListCtrl::apply_column_widths() {
  if (model() == nullptr) return;
  const auto share = [this](int column) {
    return model()->headerData(column, Qt::Horizontal, ItemListModel::share_role).toInt();
  };
  const int columns = model()->columnCount();
  int units = 0;
  for (int column = 0; column < columns; ++column) units += share(column);
  if (units == 0) return;
  is_sizing_columns_ = true;
  for (int column = 0; column < columns; ++column) {
    setColumnWidth(column, width() / units * share(column));
  }
  is_sizing_columns_ = false;
  fit_header_height();
}

// A header that is too wide for its column goes on two lines.
void ClItemListCtrl::fit_header_height() {
  const QFontMetrics metrics = header()->fontMetrics();
  const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header());
  bool is_too_wide = false;
  for (int column = 0; column < header()->count(); ++column) {
    const QString text = model()->headerData(column, Qt::Horizontal).toString();
    is_too_wide |= metrics.horizontalAdvance(text) + margin > seen_width(column);
  }
  const int one_line = header()->sizeHint().height();
  header()->setMinimumHeight(is_too_wide ? one_line + metrics.lineSpacing() : one_line);
  updateGeometries();
}

// The shares reach under the vertical scroll bar: the last column's texts end where they are seen.
int ClItemListCtrl::seen_width(int column) const {
  const bool is_last = column == header()->count() - 1;
  if (has_user_widths_ || !is_last) return columnWidth(column);
  return std::min(columnWidth(column), viewport()->width() - columnViewportPosition(column));
}

void ClItemListCtrl::mark_row(int row) {
  if (model() == nullptr || row < 0 || row >= model()->rowCount()) return;
  const QModelIndex index = model()->index(row, 0);
  selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  viewport()->update();
}

void ClItemListCtrl::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (!has_user_widths_) apply_column_widths();
}

void ClItemListCtrl::focusOutEvent(QFocusEvent* event) {
  QTreeView::focusOutEvent(event);
  emit focus_lost();
}

void ClItemListCtrl::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  QTreeView::drawRow(painter, option, index);
  if (!hasFocus() || index.row() != current_row()) return;
  const QRect row(header()->sectionViewportPosition(0), option.rect.top(), header()->length(),
                  option.rect.height());
  const bool is_selected = selectionModel()->isSelected(index);
  painter->setPen(QPen(
      palette().color(QPalette::Active, is_selected ? QPalette::HighlightedText : QPalette::Text),
      1, Qt::DotLine));
  painter->drawRect((row & viewport()->rect()).adjusted(0, 0, -1, -1));
}

// No click and no key takes the selection away.
QItemSelectionModel::SelectionFlags ClItemListCtrl::selectionCommand(const QModelIndex& index,
                                                                     const QEvent*) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

std::vector<int> ClItemListCtrl::user_widths() const {
  std::vector<int> widths;
  for (int column = 0; has_user_widths_ && column < header()->count(); ++column) {
    widths.push_back(columnWidth(column));
  }
  return widths;
}

void ClItemListCtrl::set_user_widths(const std::vector<int>& widths) {
  if (widths.empty() || widths.size() != static_cast<std::size_t>(header()->count())) return;
  for (int column = 0; column < header()->count(); ++column) {
    setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
  }
  on_section_resized();
}

void ClItemListCtrl::on_section_resized() {
  if (is_sizing_columns_) return;
  has_user_widths_ = true;
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  fit_header_height();
}

}  // namespace korvex
