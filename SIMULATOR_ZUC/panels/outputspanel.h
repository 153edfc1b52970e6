#pragma once

#include "SIMULATOR_ZUC/panels/panel.h"
#include "ui_outputspanel.h"

namespace kiva {

/// The outputs, one row each: name and state in column 0, the last value in column 1.
class OutputsPanel : public Panel, public Ui::OutputsPanel {
  Q_OBJECT

 public:
  OutputsPanel();
};

}  // namespace kiva
