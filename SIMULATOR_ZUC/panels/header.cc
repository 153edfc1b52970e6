#include "SIMULATOR_ZUC/panels/header.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>

namespace kiva {

Header::Header(QWidget* parent) : QWidget(parent) {
  setFixedHeight(80);
}

void Header::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QApplication::palette().window());
  QLinearGradient fill(0, 0, 0, 100);
  fill.setColorAt(0, QColor(15, 15, 15));
  fill.setColorAt(1, QColor(111, 113, 111));
  painter.fillRect(0, 0, width(), 200, fill);
  painter.drawPixmap(500, 10, QPixmap(":/img/Logo.png"));
}

}  // namespace kiva
