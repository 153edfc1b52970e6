// One instant, and the way back to the start: choices go into the simulation, colours come out.

#include <QLineEdit>
#include <iostream>
#include <mutex>

#include "SIMULATOR_ZUC/calculvalue.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"

namespace kiva {

void FenPrincipale::paint_all() {
  const SimulationState& state = simulation_->state();
  paint_states(outputs_panel->tableWidget, state.shown_outputs);
  paint_states(locals_panel->listWidget, state.shown_locals);
  paint_states(register_panel->listWidget, state.shown_registers);
  for (int row = 0; row < nb_outputs; ++row)
    item_empty[row]->setText(QString::fromStdString(state.output_values[row]));
}

void FenPrincipale::reset_flags() {
  set_or_reset->initialise_set_reset();
  set_or_reset->set_Set(true);
  debugger_panel->set->setChecked(true);
  set_or_reset->set_Reset(false);
  debugger_panel->reset->setChecked(false);
}

void FenPrincipale::Simuler() {
  if (pautom == nullptr) {
    std::cerr << "Zuc file not loaded\n";
    return;
  }
  const std::lock_guard<std::mutex> alone(CalculValue::evaluation_mutex());
  const SimulationState before = simulation_->state();
  const bool done = guarded("Simuler", [&] {
    for (int row = 0; row < nb_inputs; ++row) {
      simulation_->choose_input(row, couleur_signal->Get_Table()[row].chosen_state());
      simulation_->type_input(row, inputs_value[row]->text().toStdString());
    }
    simulation_->raise_set(set_or_reset->get_Set());
    simulation_->raise_reset(set_or_reset->get_Reset());
    simulation_->step(socket_client);
    paint_all();
    set_or_reset->set_Set(false);
    set_or_reset->set_Reset(false);
    debugger_panel->reset->setChecked(false);
  });
  // Half an instant is none.
  if (!done) simulation_->restore(before);
}

void FenPrincipale::Initialise() {
  if (pautom == nullptr) {
    std::cerr << "Zuc file not loaded\n";
    return;
  }
  const std::lock_guard<std::mutex> alone(CalculValue::evaluation_mutex());
  guarded("Initialise", [&] {
    couleur_signal->List_initializing(nb_inputs, this, Tab.data());
    point_at_chosen_row();
    simulation_->initialise();
    reset_flags();
    paint_all();
    for (QLineEdit* editor : inputs_value) editor->setText("--");
  });
}

}  // namespace kiva
