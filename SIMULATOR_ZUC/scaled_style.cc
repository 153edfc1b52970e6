#include "SIMULATOR_ZUC/scaled_style.h"

#include <QPainter>
#include <QPalette>
#include <QStyleOption>

#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

int ScaledStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
  const int told = QProxyStyle::pixelMetric(metric, option, widget);
  switch (metric) {
    case PM_ScrollBarExtent:
    case PM_ScrollBarSliderMin:
    case PM_SliderLength:
    case PM_TreeViewIndentation:
      return WindowLook::current().px(told);
    default:
      return told;
  }
}

void ScaledStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  if (element != PE_IndicatorBranch) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  // The told style draws a box that is not seen in the dark, and does not grow.
  if ((option->state & State_Children) == 0) return;
  const double half = WindowLook::current().scale() * 4;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(option->palette.text());
  painter->translate(QRectF(option->rect).center());
  if ((option->state & State_Open) != 0) painter->rotate(90);
  painter->drawPolygon(QPolygonF({{-half / 2, -half}, {half, 0}, {-half / 2, half}}));
  painter->restore();
}

}  // namespace kiva
