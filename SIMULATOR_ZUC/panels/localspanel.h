#pragma once

#include "SIMULATOR_ZUC/panels/panel.h"
#include "ui_localspanel.h"

namespace kiva {

/// The locals, one row each.
class LocalsPanel : public Panel, public Ui::LocalsPanel {
  Q_OBJECT

 public:
  LocalsPanel();
};

}  // namespace kiva
