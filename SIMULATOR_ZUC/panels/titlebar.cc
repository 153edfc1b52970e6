// A bar that ignores a press leaves it to its dock, which is how a dock is dragged; only the close
// button takes presses. Its states: up, held (bpress), held and left (but_press alone).

#include "SIMULATOR_ZUC/panels/titlebar.h"

#include <QDockWidget>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <cstdlib>

#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {

/// A transparent pixmap of that told size at the scale of the window, sharp on the screen it will
/// show on.
QPixmap clear_pixmap(QSize size, qreal ratio) {
  const WindowLook& look = WindowLook::current();
  QPixmap pixmap(QSize(look.px(size.width()), look.px(size.height())) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  return pixmap;
}

QSize logical_size(const QPixmap& pixmap) {
  return pixmap.size() / pixmap.devicePixelRatio();
}

constexpr QSize kCenter(10, 20);
constexpr QSize kClose(30, 13);

}  // namespace

TitleBar::TitleBar(QWidget* parent) : QWidget(parent) {
  create_pixmap();
}

void TitleBar::look_changed() {
  create_pixmap();
  draw_close_btn();
  updateGeometry();
  update();
}

void TitleBar::setTitleText(const QString& text) {
  titleTxt = text;
  setAccessibleName(text);
  update();
}

QSize TitleBar::minimumSizeHint() const {
  const QSize size(logical_size(rightPm).width(), logical_size(centerPm).height());
  const auto* dock = qobject_cast<const QDockWidget*>(parentWidget());
  if (dock != nullptr && dock->features().testFlag(QDockWidget::DockWidgetVerticalTitleBar))
    return size.transposed();
  return size;
}

void TitleBar::create_pixmap() {
  centerPm = clear_pixmap(kCenter, devicePixelRatioF());
  QLinearGradient fill(0, 20, 0, 0);
  fill.setColorAt(0, QColor(10, 1, 1));
  fill.setColorAt(0.5, QColor(87, 87, 89));
  fill.setColorAt(1, QColor(142, 143, 146));
  QPainter painter(&centerPm);
  painter.scale(WindowLook::current().scale(), WindowLook::current().scale());
  painter.fillRect(QRect(QPoint(0, 0), kCenter), fill);
}

void TitleBar::draw_close_btn() {
  rightPm = clear_pixmap(kClose, devicePixelRatioF());
  const int width = kClose.width(), height = kClose.height();
  QLinearGradient fill(0, height, 0, 0);
  fill.setColorAt(0, QColor(131, 3, 3));
  fill.setColorAt(1, bpress ? QColor(237, 26, 86) : QColor(243, 115, 115));
  QPainter painter(&rightPm);
  painter.scale(WindowLook::current().scale(), WindowLook::current().scale());
  painter.fillRect(0, 0, width, height, fill);
  painter.setPen(bpress ? QColor(Qt::black) : QColor(66, 67, 70));
  painter.drawLine(0, 0, width, 0);
  painter.setPen(bpress ? QColor(Qt::black) : QColor(71, 71, 74));
  painter.drawLine(0, 0, 0, height);
  painter.setPen(bpress ? QColor(Qt::black) : QColor(88, 88, 90));
  painter.drawLine(0, height - 1, width, height - 1);
  painter.setPen(bpress ? QColor(83, 31, 31) : QColor(Qt::white));
  painter.drawLine(14, 3, 19, 8);
  painter.drawLine(19, 3, 14, 8);
}

void TitleBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawTiledPixmap(QRect(0, 0, width(), logical_size(centerPm).height()), centerPm);
  painter.setPen(Qt::white);
  const WindowLook& look = WindowLook::current();
  painter.drawText(look.px(4), height() - look.px(6), titleTxt);
  draw_close_btn();
  painter.drawPixmap(width() - logical_size(rightPm).width() - 1, look.px(2), rightPm);
}

bool TitleBar::in_close_zone(const QPoint& at) const {
  const WindowLook& look = WindowLook::current();
  return std::abs(width() - look.px(8) - at.x()) < look.px(20);
}

bool TitleBar::in_hover_zone(const QPoint& at) const {
  const WindowLook& look = WindowLook::current();
  return std::abs(height() - look.px(10) - at.y()) < look.px(10) &&
         std::abs(width() - look.px(16) - at.x()) < look.px(15);
}

void TitleBar::mousePressEvent(QMouseEvent* event) {
  but_press = true;
  if (in_close_zone(event->pos())) {
    event->accept();
    bpress = true;
  } else {
    event->ignore();
  }
  update();
}

void TitleBar::mouseMoveEvent(QMouseEvent* event) {
  const bool over = in_hover_zone(event->pos());
  if (but_press) bpress = over;
  event->setAccepted(over && but_press);
  update();
}

// A release away from the button leaves `but_press` as it is: a later move over the button then
// counts as holding it.
void TitleBar::mouseReleaseEvent(QMouseEvent* event) {
  if (!bpress) {
    event->ignore();
    return;
  }
  but_press = false;
  if (in_close_zone(event->pos())) {
    event->accept();
    if (auto* dock = qobject_cast<QDockWidget*>(parentWidget())) dock->close();
  } else {
    event->ignore();
  }
  bpress = false;
  update();
}

}  // namespace kiva
