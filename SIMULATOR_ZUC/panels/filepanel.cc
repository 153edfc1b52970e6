#include "SIMULATOR_ZUC/panels/filepanel.h"

namespace kiva {

FilePanel::FilePanel() {
  setupUi(this);
  lineEdit_4->setAccessibleName(tr("ZUC file"));
  lineEdit_3->setAccessibleName(tr("ZU file"));
  label_4->setBuddy(lineEdit_4);
  label_3->setBuddy(lineEdit_3);
  setAccessibleName(tr("Load Panel"));
}

}  // namespace kiva
