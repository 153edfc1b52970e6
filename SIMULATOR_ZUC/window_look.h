#pragma once

#include <QColor>
#include <QObject>
#include <QSize>
#include <QString>

#include "engine/signal_state.h"

namespace kiva {

/// How large and in which colours the windows show: one look for both, kept between runs. At first
/// the told size, light, and the told colours.
class WindowLook : public QObject {
  Q_OBJECT

 public:
  static WindowLook& current();

  /// Told sizes times this, from 0.75 to 3.
  double scale() const { return scale_; }
  bool dark() const { return dark_; }
  /// Colours that are told apart without red and green.
  bool safe_colours() const { return safe_; }
  /// So many pixels at this scale; at least one where there is one.
  int px(int told) const;
  /// Of the told window, at this scale and theme.
  QString style_sheet() const;
  /// Behind a row in that state.
  QColor state_colour(SignalState state) const;

  /// What the screen leaves to a window.
  QSize room() const { return room_; }
  void set_room(const QSize& room);

  void larger() { step(1); }
  void smaller() { step(-1); }
  void set_scale(double scale);
  void set_dark(bool dark);
  void set_safe_colours(bool safe);

 Q_SIGNALS:
  void changed();

 private:
  WindowLook();
  void step(int steps);
  void keep();

  double scale_ = 1;
  QSize room_{1 << 14, 1 << 14};
  bool dark_ = false, safe_ = false;
};

}  // namespace kiva
