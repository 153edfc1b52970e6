#include "SIMULATOR_ZUC/signal_color.h"

#include <QCheckBox>
#include <QItemSelection>
#include <QTableWidget>

#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/row_state.h"

namespace kiva {

void Signal_color::become(SignalState state) {
  m_bleu = state == SignalState::one;
  m_jaune = state == SignalState::zero;
  m_vert = state == SignalState::top;
  m_noir = state == SignalState::bottom;
  m_rouge = state == SignalState::unknown;
}

void Signal_color::Set_bleu(QTableWidget* table, const std::string*, int row) {
  become(SignalState::one);
  show_state(table->item(row, 0), SignalState::one);
}

void Signal_color::Set_jaune(QTableWidget* table, const std::string*, int row) {
  become(SignalState::zero);
  show_state(table->item(row, 0), SignalState::zero);
}

void Signal_color::Set_vert(QTableWidget* table, const std::string*, int row) {
  become(SignalState::top);
  show_state(table->item(row, 0), SignalState::top);
}

void Signal_color::Set_noir(QTableWidget* table, const std::string*, int row) {
  become(SignalState::bottom);
  show_state(table->item(row, 0), SignalState::bottom);
}

void Signal_color::Set_rouge(QTableWidget* table, const std::string*, int row) {
  become(SignalState::unknown);
  show_state(table->item(row, 0), SignalState::unknown);
}

std::string Signal_color::Get_Signal_color() const {
  if (m_bleu) return "bleu";
  if (m_jaune) return "jaune";
  if (m_vert) return "vert";
  if (m_noir) return "noir";
  return "rouge";
}

SignalState Signal_color::chosen_state() const {
  if (m_bleu) return SignalState::one;
  if (m_jaune) return SignalState::zero;
  if (m_vert) return SignalState::top;
  return SignalState::bottom;
}

void Signal_color::Set_jaune_test(QTableWidget* table, const QModelIndex& index) {
  become(SignalState::unknown);
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
