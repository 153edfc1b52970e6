#pragma once

#include <QProxyStyle>

namespace kiva {

/// The told style, of which what the style sheet has no sizes of follows the scale, too.
class ScaledStyle : public QProxyStyle {
 public:
  using QProxyStyle::QProxyStyle;

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  /// What unfolds is a triangle in the colour of the text.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace kiva
