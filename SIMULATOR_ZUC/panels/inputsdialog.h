#pragma once

#include "SIMULATOR_ZUC/panels/panel.h"
#include "SIMULATOR_ZUC/panels/statedelegate.h"
#include "ui_inputsdialog.h"

namespace kiva {

/// The inputs, one row each: name and state in column 0, an editor for the value in column 1.
class InputsDialog : public Panel, public Ui::Inputs_form {
  Q_OBJECT

 public:
  InputsDialog();

  /// Marks the row that a choice of state goes to; -1 for none.
  void mark_chosen_row(int row);

 private:
  StateDelegate* delegate_;
};

}  // namespace kiva
