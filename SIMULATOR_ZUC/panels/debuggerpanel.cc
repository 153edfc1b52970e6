#include "SIMULATOR_ZUC/panels/debuggerpanel.h"

namespace kiva {

DebuggerPanel::DebuggerPanel() {
  setupUi(this);
  plainTextEdit->setAccessibleName(tr("ZU text"));
  plainTextEdit->setTabChangesFocus(true);
  setAccessibleName(tr("Debugger Panel"));
}

}  // namespace kiva
