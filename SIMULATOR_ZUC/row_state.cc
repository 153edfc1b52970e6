// A row shows its state by colour, tip and accessible text, all from the one table of states.

#include "SIMULATOR_ZUC/row_state.h"

#include <QBrush>
#include <QListWidget>
#include <QTableWidget>
#include <cmath>

#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {

template <typename Item>
void show_state_on(Item* item, SignalState state) {
  if (item == nullptr) return;
  const QString told = item->text() + ": " + label_of(state);
  if (item->toolTip() == told && item->background().color() == background_of(state)) return;
  item->setBackground(background_of(state));
  item->setToolTip(told);
  item->setData(Qt::AccessibleTextRole, told);
  item->setData(letter_role, QString(QChar(letter_of(state))));
}

}  // namespace

char letter_of(SignalState state) {
  constexpr char letters[] = {'1', '0', 'T', 'B', '?'};
  return letters[static_cast<int>(state)];
}

QString label_of(SignalState state) {
  const std::string_view label = look_of(state).label;
  return QString::fromUtf8(label.data(), static_cast<int>(label.size()));
}

QColor text_colour_on(const QColor& background) {
  // Where both contrast alike with the ground, by its luminance.
  constexpr double middle = 0.179;
  const auto linear = [](double c) { return std::pow(c, 2.2); };
  const double luminance = 0.2126 * linear(background.redF()) +
                           0.7152 * linear(background.greenF()) +
                           0.0722 * linear(background.blueF());
  return luminance < middle ? Qt::white : Qt::black;
}

QColor background_of(SignalState state) {
  return WindowLook::current().state_colour(state);
}

void show_state(QTableWidgetItem* item, SignalState state) {
  show_state_on(item, state);
}

void show_state(QListWidgetItem* item, SignalState state) {
  show_state_on(item, state);
}

void paint_states(QListWidget* list, const std::vector<SignalState>& states) {
  for (size_t row = 0; row < states.size(); ++row)
    show_state(list->item(static_cast<int>(row)), states[row]);
}

void paint_states(QTableWidget* table, const std::vector<SignalState>& states) {
  for (size_t row = 0; row < states.size(); ++row)
    show_state(table->item(static_cast<int>(row), 0), states[row]);
}

}  // namespace kiva
