#pragma once

#include <QColor>
#include <QString>
#include <vector>

#include "engine/signal_state.h"

class QListWidget;
class QListWidgetItem;
class QTableWidget;
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

/// Paints row r of the view, column 0 of a table, by entry r of `states`.
void paint_states(QListWidget* list, const std::vector<SignalState>& states);
void paint_states(QTableWidget* table, const std::vector<SignalState>& states);

}  // namespace kiva
