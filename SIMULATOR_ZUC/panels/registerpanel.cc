#include "SIMULATOR_ZUC/panels/registerpanel.h"

#include "SIMULATOR_ZUC/panels/statedelegate.h"

namespace kiva {

RegisterPanel::RegisterPanel() {
  setupUi(this);
  new StateDelegate(listWidget);
  listWidget->setAccessibleName(tr("Registers"));
  listWidget->setUniformItemSizes(true);
  setAccessibleName(tr("Registers Panel"));
}

}  // namespace kiva
