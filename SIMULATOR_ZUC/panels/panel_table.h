#pragma once

#include <QSize>
#include <Qt>
#include <span>

class QWidget;

namespace kiva {

class FenPrincipale;

/// A panel and the dock that holds it. Sizes of 0 are no limit.
struct PanelRow {
  const char* object_name;
  const char* title;  ///< of the dock's bar, for the translator
  Qt::DockWidgetAreas allowed;
  Qt::DockWidgetArea area;
  QSize minimum;
  QSize maximum;
  /// The row whose dock this one is split from horizontally; -1 for none.
  int beside;
  /// The row whose dock is the first parent of the title bar; -1 for its own.
  int title_parent;
  /// Makes the panel and hands it to the window.
  QWidget* (*make)(FenPrincipale& window);
};

/// All panels, by the numbers of their docks.
std::span<const PanelRow> panel_table();

}  // namespace kiva
