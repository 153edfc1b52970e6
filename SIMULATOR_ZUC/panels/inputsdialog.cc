#include "SIMULATOR_ZUC/panels/inputsdialog.h"

#include <QAbstractButton>
#include <QHeaderView>

namespace kiva {

InputsDialog::InputsDialog() {
  setupUi(this);
  delegate_ = new StateDelegate(tableWidget);
  delegate_->set_marks_chosen_row();
  tableWidget->setAccessibleName(tr("Inputs"));
  tableWidget->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  if (auto* corner = tableWidget->findChild<QAbstractButton*>())
    corner->setAccessibleName(tr("Select all"));
  setAccessibleName(tr("Inputs Panel"));
}

void InputsDialog::mark_chosen_row(int row) {
  delegate_->set_chosen_row(row);
}

}  // namespace kiva
