#pragma once

#include "SIMULATOR_ZUC/panels/panel.h"
#include "ui_registerpanel.h"

namespace kiva {

/// The registers, one row each.
class RegisterPanel : public Panel, public Ui::RegisterPanel {
  Q_OBJECT

 public:
  RegisterPanel();
};

}  // namespace kiva
