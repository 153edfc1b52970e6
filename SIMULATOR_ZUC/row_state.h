#pragma once

#include <QColor>

#include "SIMULATOR_ZUC/engine/signal_state.h"

class QListWidgetItem;
class QTableWidgetItem;

namespace kiva {

QColor background_of(SignalState state);

/// Gives the row its state's colour, and the state's word as tool tip and, behind the row's text,
/// as accessible text. A null item is left alone.
void show_state(QTableWidgetItem* item, SignalState state);
void show_state(QListWidgetItem* item, SignalState state);

}  // namespace kiva
