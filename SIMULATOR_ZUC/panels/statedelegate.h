#pragma once

#include <QAbstractItemView>
#include <QStyledItemDelegate>

namespace kiva {

/// Paints the rows of a view so that the state's colour is seen on every row: a selected row gets
/// no highlight, the current one a frame, and text on blue is white. The view owns its delegate.
class StateDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// Installs itself on the view.
  explicit StateDelegate(QAbstractItemView* view);

  /// From now on the chosen row is bold, not the current one.
  void set_marks_chosen_row() { marks_chosen_row_ = true; }
  void set_chosen_row(int row);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  /// No wider than its list, so that the letter at the right end of a row is in sight.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  QAbstractItemView* view_;
  bool marks_chosen_row_ = false;
  int chosen_row_ = -1;
};

}  // namespace kiva
