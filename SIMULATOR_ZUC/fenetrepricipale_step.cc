// One instant, and the way back to the start. The choices stand in the simulation; colours come
// out.

#include <QLineEdit>
#include <iostream>
#include <mutex>

#include "SIMULATOR_ZUC/classic/calculvalue.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/row_state.h"

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
    simulation_->step(socket_client);
    paint_all();
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
    tell_evaluation(pautom);
    simulation_->initialise();
    reset_flags();
    paint_all();
    for (QLineEdit* editor : inputs_value) editor->setText("--");
  });
}

}  // namespace kiva
