// A state's colour must be seen on every row, so the selection is taken out before painting.

#include "SIMULATOR_ZUC/panels/statedelegate.h"

#include <QListView>
#include <QPainter>

#include "SIMULATOR_ZUC/cut_name.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {
int letter_width() {
  return WindowLook::current().px(18);
}
}  // namespace

StateDelegate::StateDelegate(QAbstractItemView* view) : QStyledItemDelegate(view), view_(view) {
  view->setItemDelegate(this);
  // The frame spans what the toolkit repaints of its own accord only in part.
  connect(view->selectionModel(), &QItemSelectionModel::currentChanged, view->viewport(),
          qOverload<>(&QWidget::update));
}

void StateDelegate::set_chosen_row(int row) {
  chosen_row_ = row;
  view_->viewport()->update();
}

void StateDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
  const int bold_row = marks_chosen_row_ ? chosen_row_ : view_->currentIndex().row();
  option->font.setBold(index.row() == bold_row);
  option->textElideMode = Qt::ElideMiddle;
  option->fontMetrics = QFontMetrics(option->font);
  const int margin = view_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
  if (const int room = option->rect.width() - 2 * margin; room > 0 && index.column() == 0)
    option->text =
        cut_name(option->text, option->fontMetrics, room, index.model()->rowCount(),
                 [&index](int row) { return index.siblingAtRow(row).data().toString(); });
  const QVariant background = index.data(Qt::BackgroundRole);
  if (background.isValid())  // else the theme's
    option->palette.setColor(QPalette::Text, text_colour_on(background.value<QBrush>().color()));
}

QSize StateDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QSize hint = QStyledItemDelegate::sizeHint(option, index);
  // A list gives its rows at least its own width.
  return qobject_cast<QListView*>(view_) == nullptr ? hint : QSize(0, hint.height());
}

void StateDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const QString letter = index.data(letter_role).toString();
  QStyleOptionViewItem text = option;
  if (!letter.isEmpty()) {
    const QColor background = index.data(Qt::BackgroundRole).value<QBrush>().color();
    painter->fillRect(option.rect, background);
    painter->setPen(text_colour_on(background));
    const QRect all = option.rect;
    painter->drawText(all.adjusted(all.width() - letter_width(), 0, -4, 0), Qt::AlignCenter,
                      letter);
    text.rect.setRight(all.right() - letter_width());
  }
  QStyledItemDelegate::paint(painter, text, index);
  if (index.row() != view_->currentIndex().row() || !index.data(Qt::BackgroundRole).isValid())
    return;
  painter->save();
  painter->setPen(Qt::white);
  painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
  painter->setPen(Qt::black);
  painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter->restore();
}

}  // namespace kiva
