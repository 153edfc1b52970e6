#pragma once

#include <QColor>
#include <QFont>

namespace kiva {

/// How the scope looks: one theme at a time, read by all its panes.
struct ScopeLook {
  QColor paper;     ///< behind everything
  QColor pane;      ///< of a pane
  QColor line;      ///< rules between rows
  QColor text;      ///< 4.5:1 at least on `pane`, as the next
  QColor faint;     ///< what is said beside
  QColor accent;    ///< the selected instant
  QColor one;       ///< a present signal
  QColor one_fill;  ///< below its line
  QColor top;       ///< a contradiction
  QColor unknown;   ///< hatched
  QColor started;   ///< behind source text, as the next two
  QColor ended;
  QColor killed;

  /// Of a row, in pixels.
  static int row_height() { return px(26); }
  /// So many pixels at the scale in use.
  static int px(int told);
  static QFont source_font();
  static const ScopeLook& light();
  static const ScopeLook& dark();
  /// The one in use, as WindowLook has it.
  static const ScopeLook& current();
};

}  // namespace kiva
