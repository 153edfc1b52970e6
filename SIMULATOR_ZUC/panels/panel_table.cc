#include "SIMULATOR_ZUC/panels/panel_table.h"

#include "SIMULATOR_ZUC/fenetrepricipale.h"

namespace kiva {

namespace {

constexpr int full_width = 950;  // where the window allows it
constexpr Qt::DockWidgetAreas side =
    Qt::DockWidgetAreas(Qt::LeftDockWidgetArea) | Qt::BottomDockWidgetArea;

/// Makes a panel and keeps it in the window's member.
template <auto member>
QWidget* make(FenPrincipale& window) {
  using Kept = std::remove_reference_t<decltype(window.*member)>;
  return window.*member = new std::remove_pointer_t<Kept>;
}

}  // namespace

std::span<const PanelRow> panel_table() {
  static const PanelRow rows[] = {
      {"Inputs_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Load Panel"), side,
       Qt::LeftDockWidgetArea, QSize(full_width, 0), QSize(0, 120), -1, -1,
       make<&FenPrincipale::file_panel>},
      {"Inputs_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Inputs Panel"), side,
       Qt::LeftDockWidgetArea, QSize(), QSize(260, 310), -1, -1,
       make<&FenPrincipale::inputs_panel>},
      {"Locals_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Locals Panel"), side,
       Qt::LeftDockWidgetArea, QSize(), QSize(200, 310), 1, -1, make<&FenPrincipale::locals_panel>},
      {"Locals_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Registers Panel"), side,
       Qt::LeftDockWidgetArea, QSize(), QSize(200, 310), 2, 2,
       make<&FenPrincipale::register_panel>},
      {"Outputs_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Outputs Panel"), side,
       Qt::LeftDockWidgetArea, QSize(), QSize(329, 310), 3, -1,
       make<&FenPrincipale::outputs_panel>},
      {"Outputs_Dialog", QT_TRANSLATE_NOOP("kiva::FenPrincipale", "Debugger Panel"),
       Qt::BottomDockWidgetArea, Qt::BottomDockWidgetArea, QSize(full_width, 0), QSize(0, 180), -1,
       -1, make<&FenPrincipale::debugger_panel>},
  };
  return rows;
}

}  // namespace kiva
