#pragma once

#include "SIMULATOR_ZUC/panels/panel.h"
#include "ui_debuggerpanel.h"

namespace kiva {

/// The state for the chosen input, the set and reset wires, and the text of a ZU file.
class DebuggerPanel : public Panel, public Ui::DebuggerPanel {
  Q_OBJECT

 public:
  DebuggerPanel();
};

}  // namespace kiva
