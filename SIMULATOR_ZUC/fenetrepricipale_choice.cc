// The person's choices: a row of the inputs table, a radio for its state, the two boxes.

#include <QRadioButton>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"

namespace kiva {

void FenPrincipale::No_input_selected() {
  dialogs().show_message(this, tr("No Input Selected !!"));
}

void FenPrincipale::check_only(QRadioButton* radio, bool b) {
  radio->setChecked(b);
  for (QRadioButton* other :
       {debugger_panel->one, debugger_panel->zero, debugger_panel->top, debugger_panel->bottom})
    if (other != radio) other->setChecked(false);
}

void FenPrincipale::Check_bleu(bool b) {
  check_only(debugger_panel->one, b);
}
void FenPrincipale::Check_jaune(bool b) {
  check_only(debugger_panel->zero, b);
}
void FenPrincipale::Check_vert(bool b) {
  check_only(debugger_panel->top, b);
}
void FenPrincipale::Check_noir(bool b) {
  check_only(debugger_panel->bottom, b);
}

// A checked radio of an exclusive group cannot be unchecked, so the group is opened meanwhile.
void FenPrincipale::Check_nothing() {
  const std::initializer_list<QRadioButton*> radios = {debugger_panel->one, debugger_panel->zero,
                                                       debugger_panel->top, debugger_panel->bottom};
  for (QRadioButton* radio : radios) {
    radio->blockSignals(true);
    radio->setAutoExclusive(false);
  }
  for (QRadioButton* radio : radios) radio->setChecked(false);
  for (QRadioButton* radio : radios) {
    radio->setAutoExclusive(true);
    radio->blockSignals(false);
  }
}

/// A radio that tells another state than the chosen row's comes after it.
void FenPrincipale::show_chosen_state() {
  const int row = couleur_signal->selected_row();
  if (row < 0 || row >= nb_inputs) return;
  const SignalState state = simulation_->state().inputs[static_cast<size_t>(row)];
  const std::pair<QRadioButton*, SignalState> radios[] = {
      {debugger_panel->one, SignalState::one},
      {debugger_panel->zero, SignalState::zero},
      {debugger_panel->top, SignalState::top},
      {debugger_panel->bottom, SignalState::bottom}};
  bool differs = false;
  for (const auto& [radio, shown] : radios) differs |= radio->isChecked() && shown != state;
  if (!differs) return;
  for (const auto& [radio, shown] : radios) {
    const QSignalBlocker quiet(radio);
    radio->setChecked(shown == state);
  }
}

void FenPrincipale::Set_ListColor(QModelIndex index) {
  if (pautom == nullptr || !index.isValid() || index.row() >= nb_inputs) return;
  couleur_signal->last_selected(Tab.data(), index);
  inputs_panel->mark_chosen_row(index.row());
  const std::string word = couleur_signal->Get_List_Signal_color();
  if (word == "bleu") {
    Check_bleu(true);
    couleur_signal->Set_List_color_bleu(this, Tab.data());
  } else if (word == "jaune") {
    Check_jaune(true);
    couleur_signal->Set_List_color_jaune(this, Tab.data());
  } else if (word == "vert") {
    Check_vert(true);
    couleur_signal->Set_List_color_vert(this, Tab.data());
  } else {
    Check_noir(true);
    couleur_signal->Set_List_color_noir(this, Tab.data());
  }
}

// A fresh list leaves its last row current, though the next choice still goes to the row chosen
// before; the eye must find that one.
void FenPrincipale::point_at_chosen_row() {
  const int row = couleur_signal->selected_row();
  if (row >= 0 && row < nb_inputs)
    inputs_panel->tableWidget->setCurrentCell(row, 0, QItemSelectionModel::Select);
}

void FenPrincipale::choose_row(int row) {
  QTableWidget* table = inputs_panel->tableWidget;
  if (row < 0 || row >= nb_inputs) return;
  table->setCurrentCell(row, 0, QItemSelectionModel::Select);
  Set_ListColor(table->model()->index(row, 0));
}

void FenPrincipale::step_row(int row) {
  if (row < 0 || row >= nb_inputs) return;
  choose_row(row);
  std::vector<std::pair<SignalState, QRadioButton*>> offered{
      {SignalState::one, debugger_panel->one}, {SignalState::zero, debugger_panel->zero}};
  if (pautom->getFinalised() == 0)
    offered.insert(offered.end(), {{SignalState::top, debugger_panel->top},
                                   {SignalState::bottom, debugger_panel->bottom}});
  const SignalState now = simulation_->state().inputs[static_cast<size_t>(row)];
  size_t next = 0;
  for (size_t i = 0; i < offered.size(); ++i)
    if (offered[i].first == now) next = (i + 1) % offered.size();
  offered[next].second->setChecked(true);
}

void FenPrincipale::choose_colour(bool b, void (FenPrincipale::*check)(bool), const char* word,
                                  void (List_Signal_color::*colour)(FenPrincipale*,
                                                                    const std::string*)) {
  (this->*check)(b);
  if (couleur_signal->selected_row() == -1) {
    if (b) ((*couleur_signal).*colour)(this, Tab.data());
  } else if (couleur_signal->Get_List_Signal_color() != word) {
    ((*couleur_signal).*colour)(this, Tab.data());
  }
}

void FenPrincipale::set_ColorBleu(bool b) {
  choose_colour(b, &FenPrincipale::Check_bleu, "bleu", &List_Signal_color::Set_List_color_bleu);
}

void FenPrincipale::set_ColorVert(bool b) {
  choose_colour(b, &FenPrincipale::Check_vert, "vert", &List_Signal_color::Set_List_color_vert);
}

void FenPrincipale::set_ColorJaune(bool b) {
  choose_colour(b, &FenPrincipale::Check_jaune, "jaune", &List_Signal_color::Set_List_color_jaune);
}

void FenPrincipale::set_ColorNoir(bool b) {
  choose_colour(b, &FenPrincipale::Check_noir, "noir", &List_Signal_color::Set_List_color_noir);
}

void FenPrincipale::set_checked(bool b) {
  debugger_panel->set->setChecked(b);
  set_or_reset->set_Set(b);
}

void FenPrincipale::reset_checked(bool b) {
  debugger_panel->reset->setChecked(b);
  set_or_reset->set_Reset(b);
}

// The box may still be ticked from an earlier instant, and then sends no signal.
void FenPrincipale::raise_set() {
  set_or_reset->set_Set(true);
  debugger_panel->set->setChecked(true);
}

}  // namespace kiva
