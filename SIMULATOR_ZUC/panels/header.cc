#include "SIMULATOR_ZUC/panels/header.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>

#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

Header::Header(QWidget* parent) : QWidget(parent) {
  look_changed();
}

void Header::look_changed() {
  setFixedHeight(WindowLook::current().px(80));
  update();
}

void Header::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QApplication::palette().window());
  const WindowLook& look = WindowLook::current();
  QLinearGradient fill(0, 0, 0, look.px(100));
  fill.setColorAt(0, QColor(15, 15, 15));
  fill.setColorAt(1, QColor(111, 113, 111));
  painter.fillRect(0, 0, width(), look.px(200), fill);
  const QPixmap logo(":/img/Logo.png");
  // On a screen too small for the scale the last button stands there.
  if (look.px(500 + logo.width() + 90) > width()) return;
  painter.translate(look.px(500), look.px(10));
  painter.scale(look.scale(), look.scale());
  painter.setRenderHint(QPainter::SmoothPixmapTransform, look.scale() != 1);
  painter.drawPixmap(0, 0, logo);
}

}  // namespace kiva
