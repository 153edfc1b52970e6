#pragma once

#include <QColor>
#include <QString>

#include "engine/signal_state.h"

class QListWidgetItem;
class QTableWidgetItem;

namespace kiva {

/// As a person reads it: "One".
QString label_of(SignalState state);
QColor background_of(SignalState state);
/// White on blue, else black.
QColor text_colour_on(const QColor& background);

/// Gives the row its state's colour, and the state's word as tool tip and, behind the row's text,
/// as accessible text. A null item is left alone.
void show_state(QTableWidgetItem* item, SignalState state);
void show_state(QListWidgetItem* item, SignalState state);

}  // namespace kiva
