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
/// 1, 0, T, B, ?: no state is told by colour alone.
char letter_of(SignalState state);
/// Where an item keeps it.
constexpr int letter_role = Qt::UserRole + 7;
/// White on blue, else black.
QColor text_colour_on(const QColor& background);

/// Gives the row its state's colour and letter, and as tip and accessible text its whole name and
/// the state's word. A null item is left alone.
void show_state(QTableWidgetItem* item, SignalState state);
void show_state(QListWidgetItem* item, SignalState state);

/// Paints row r of the view, column 0 of a table, by entry r of `states`.
void paint_states(QListWidget* list, const std::vector<SignalState>& states);
void paint_states(QTableWidget* table, const std::vector<SignalState>& states);

}  // namespace kiva
