#include "SIMULATOR_ZUC/panels/localspanel.h"

#include "SIMULATOR_ZUC/panels/statedelegate.h"

namespace kiva {

LocalsPanel::LocalsPanel() {
  setupUi(this);
  new StateDelegate(listWidget);
  listWidget->setAccessibleName(tr("Locals"));
  listWidget->setUniformItemSizes(true);
  setAccessibleName(tr("Locals Panel"));
}

}  // namespace kiva
