// What mouse and keys do in the waves.

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/wave_view.h"

namespace kiva {

void WaveView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || time_->busy()) return;
  const int row = row_at(event->pos().y());
  if (row >= 0) choose(row);
  if (event->pos().x() < names_width_) return;
  const long instant = std::clamp<long>(instant_at(event->pos().x()), 0, shown_last());
  if ((event->modifiers() & Qt::ShiftModifier) != 0) {
    second_ = second_ == instant ? -1 : instant;
    viewport()->update();
    return;
  }
  time_->to({time_->recording().position().branch, instant});
}

void WaveView::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0 || event->pos().x() < names_width_) return;
  const long instant = std::clamp<long>(instant_at(event->pos().x()), 0, shown_last());
  if (instant != time_->recording().position().instant)
    time_->to({time_->recording().position().branch, instant});
}

void WaveView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  zoom(event->angleDelta().y() > 0 ? 1.25 : 0.8);
  event->accept();
}

bool WaveView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int row = row_at(help->pos().y());
  if (row < 0 || rows_[static_cast<size_t>(row)].title || time_->busy()) return true;
  const long instant = help->pos().x() < names_width_ ? time_->recording().position().instant
                                                      : instant_at(help->pos().x());
  const Row& shown = rows_[static_cast<size_t>(row)];
  QString text = shown.name;
  if (instant >= seen_from_ && instant <= seen_to_) {
    const Seen& seen = seen_[static_cast<size_t>(instant - seen_from_)];
    text = told(shown, instant, seen.states[static_cast<size_t>(row)],
                seen.texts[static_cast<size_t>(row)]);
  }
  QToolTip::showText(help->globalPos(), text, viewport());
  return true;
}

void WaveView::choose_beside(int direction) {
  int row = chosen_ + direction;
  while (row >= 0 && row < static_cast<int>(rows_.size()) && rows_[static_cast<size_t>(row)].title)
    row += direction;
  choose(row);
}

void WaveView::move_second(int direction) {
  if (time_->busy()) return;
  const long from = second_ < 0 ? time_->recording().position().instant : second_;
  second_ = std::clamp<long>(from + direction, 0, shown_last());
  viewport()->update();
}

void WaveView::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers() == Qt::ShiftModifier;
  if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Up) return choose_beside(-1);
  if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Down) return choose_beside(1);
  if (shift && event->key() == Qt::Key_Left) return move_second(-1);
  if (shift && event->key() == Qt::Key_Right) return move_second(1);
  QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace kiva
