#include "SIMULATOR_ZUC/panels/outputspanel.h"

#include <QAbstractButton>
#include <QHeaderView>

#include "SIMULATOR_ZUC/panels/statedelegate.h"

namespace kiva {

OutputsPanel::OutputsPanel() {
  setupUi(this);
  new StateDelegate(tableWidget);
  tableWidget->setAccessibleName(tr("Outputs"));
  tableWidget->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  if (auto* corner = tableWidget->findChild<QAbstractButton*>())
    corner->setAccessibleName(tr("Select all"));
  setAccessibleName(tr("Outputs Panel"));
}

}  // namespace kiva
