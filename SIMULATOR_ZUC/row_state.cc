#include "SIMULATOR_ZUC/row_state.h"

#include <QBrush>
#include <QListWidgetItem>
#include <QTableWidgetItem>

namespace kiva {

namespace {

template <typename Item>
void show_state_on(Item* item, SignalState state) {
  if (item == nullptr) return;
  const QString word = QString::fromUtf8(look_of(state).label.data());
  item->setBackground(background_of(state));
  item->setToolTip(word);
  item->setData(Qt::AccessibleTextRole, item->text() + ": " + word);
}

}  // namespace

QColor background_of(SignalState state) {
  return QColor::fromRgb(look_of(state).background);
}

void show_state(QTableWidgetItem* item, SignalState state) {
  show_state_on(item, state);
}

void show_state(QListWidgetItem* item, SignalState state) {
  show_state_on(item, state);
}

}  // namespace kiva
