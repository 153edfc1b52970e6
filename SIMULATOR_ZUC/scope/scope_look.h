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

  static constexpr int row_height = 26;
  static const ScopeLook& light();
  static const ScopeLook& dark();
  /// The one in use.
  static const ScopeLook& current();
  static void use_dark(bool dark);
  /// The same two themes in colours that are told apart without red and green.
  static void use_safe_colours(bool safe);
};

}  // namespace kiva
