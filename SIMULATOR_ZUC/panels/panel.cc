#include "SIMULATOR_ZUC/panels/panel.h"

#include <QKeyEvent>

namespace kiva {

void Panel::keyPressEvent(QKeyEvent* event) {
  event->ignore();
}

}  // namespace kiva
