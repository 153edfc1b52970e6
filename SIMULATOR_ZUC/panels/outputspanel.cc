#include "SIMULATOR_ZUC/panels/outputspanel.h"

#include <QHeaderView>

#include "SIMULATOR_ZUC/panels/statedelegate.h"

namespace kiva {

OutputsPanel::OutputsPanel() {
  setupUi(this);
  new StateDelegate(tableWidget);
  tableWidget->setAccessibleName(tr("Outputs"));
  tableWidget->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  setAccessibleName(tr("Outputs Panel"));
}

}  // namespace kiva
