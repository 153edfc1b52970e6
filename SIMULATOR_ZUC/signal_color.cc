// The choices as colours: each is a view of a row of the simulation, which keeps it.

#include "SIMULATOR_ZUC/signal_color.h"

#include <QCheckBox>
#include <QItemSelection>
#include <QTableWidget>

#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/row_state.h"

namespace kiva {

SignalState Signal_color::state() const {
  return simulation_ != nullptr ? simulation_->state().inputs[row_] : own_;
}

void Signal_color::become(SignalState state, QTableWidget* table, int row) {
  if (simulation_ != nullptr)
    simulation_->choose_input(row_, state);
  else
    own_ = state;
  if (table != nullptr) show_state(table->item(row, 0), state);
}

void Signal_color::Set_bleu(QTableWidget* table, const std::string*, int row) {
  become(SignalState::one, table, row);
}
void Signal_color::Set_jaune(QTableWidget* table, const std::string*, int row) {
  become(SignalState::zero, table, row);
}
void Signal_color::Set_vert(QTableWidget* table, const std::string*, int row) {
  become(SignalState::top, table, row);
}
void Signal_color::Set_noir(QTableWidget* table, const std::string*, int row) {
  become(SignalState::bottom, table, row);
}
void Signal_color::Set_rouge(QTableWidget* table, const std::string*, int row) {
  become(SignalState::unknown, table, row);
}

std::string Signal_color::Get_Signal_color() const {
  return std::string(look_of(state()).colour);
}

SignalState Signal_color::chosen_state() const {
  return state() == SignalState::unknown ? SignalState::bottom : state();
}

void Signal_color::Set_jaune_test(QTableWidget* table, const QModelIndex& index) {
  become(SignalState::unknown, nullptr, 0);
  table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select);
  if (!index.isValid()) return;
  QPalette palette = table->palette();
  palette.setColor(QPalette::Highlight, Qt::cyan);
  table->setPalette(palette);
}

// The rows are selected as one range: row by row, the selection would cost their square.
void List_Signal_color::List_initializing(int n, FenPrincipale* window, const std::string* names) {
  window->Check_nothing();
  m_inputs_List_color.assign(n, Signal_color());
  if (Simulation* simulation = window->simulation(); simulation != nullptr)
    for (int row = 0; row < n; ++row)
      m_inputs_List_color[row] = Signal_color(simulation, static_cast<size_t>(row));
  m_Set_Reset_List_color.assign(1, Set_Reset_Color());
  QTableWidget* table = window->inputs_panel->tableWidget;
  for (int row = 0; row < n; ++row) m_inputs_List_color[row].Set_noir(table, names, row);
  if (n == 0) return;
  const QAbstractItemModel* model = table->model();
  table->selectionModel()->select(QItemSelection(model->index(0, 0), model->index(n - 1, 0)),
                                  QItemSelectionModel::Select);
  table->selectionModel()->setCurrentIndex(model->index(n - 1, 0), QItemSelectionModel::Select);
}

void List_Signal_color::set_selected(Painter painter, FenPrincipale* window,
                                     const std::string* names) {
  if (m_selected == -1) {
    window->No_input_selected();
    window->Check_nothing();
    return;
  }
  (m_inputs_List_color[m_selected].*painter)(window->inputs_panel->tableWidget, names, m_selected);
}

void List_Signal_color::Set_List_color_bleu(FenPrincipale* window, const std::string* names) {
  set_selected(&Signal_color::Set_bleu, window, names);
}

void List_Signal_color::Set_List_color_jaune(FenPrincipale* window, const std::string* names) {
  set_selected(&Signal_color::Set_jaune, window, names);
}

void List_Signal_color::Set_List_color_vert(FenPrincipale* window, const std::string* names) {
  set_selected(&Signal_color::Set_vert, window, names);
}

void List_Signal_color::Set_List_color_noir(FenPrincipale* window, const std::string* names) {
  set_selected(&Signal_color::Set_noir, window, names);
}

std::string List_Signal_color::Get_List_Signal_color() const {
  const std::string word = m_inputs_List_color[m_selected].Get_Signal_color();
  return word == "rouge" ? "rouge because no input selected" : word;
}

void List_Signal_color::last_selected(const std::string*, const QModelIndex& index) {
  m_selected = index.row();
}

void List_Signal_color::last_checked(QCheckBox* first, QCheckBox* second) {
  if (first->isChecked()) m_checked = 0;
  if (second->isChecked()) m_checked = 1;
}

std::vector<SignalState> List_Signal_color::chosen_states() const {
  std::vector<SignalState> states;
  states.reserve(m_inputs_List_color.size());
  for (const Signal_color& color : m_inputs_List_color) states.push_back(color.chosen_state());
  return states;
}

}  // namespace kiva
