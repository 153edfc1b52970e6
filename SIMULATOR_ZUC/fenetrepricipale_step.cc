// One instant, and the way back to the start. The choices stand in the simulation; colours come
// out.

#include <QLineEdit>
#include <iostream>
#include <mutex>
#include <utility>

#include "SIMULATOR_ZUC/classic/calculvalue.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "SIMULATOR_ZUC/server_line.h"

namespace kiva {

void FenPrincipale::paint_all() {
  const SimulationState& state = simulation_->state();
  paint_states(outputs_panel->tableWidget, state.shown_outputs);
  paint_states(locals_panel->listWidget, state.shown_locals);
  paint_states(register_panel->listWidget, state.shown_registers);
  for (int row = 0; row < nb_outputs; ++row)
    item_empty[row]->setText(QString::fromStdString(state.output_values[row]));
}

void FenPrincipale::show_instant() {
  const SimulationState& state = simulation_->state();
  paint_states(inputs_panel->tableWidget, state.inputs);
  for (int row = 0; row < nb_inputs; ++row) {
    const QString text = QString::fromStdString(state.input_texts[static_cast<size_t>(row)]);
    if (inputs_value[row]->text() != text) inputs_value[row]->setText(text);
  }
  show_chosen_state();
  // The box of set keeps its tick behind the instant.
  if (state.set) debugger_panel->set->setChecked(true);
  debugger_panel->reset->setChecked(state.reset);
  paint_all();
  update();  // the line under the legend
}

void FenPrincipale::show_scope() {
  if (time_ == nullptr) {
    tell("Load a module first: the scope shows it over time.");
    return;
  }
  if (scope_ == nullptr) scope_ = std::make_unique<ScopeWindow>(time_.get(), module_file_);
  scope_->show();
  scope_->raise();
  scope_->activateWindow();
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
  // An exception leaves the instant before. A server is waited for in the worker.
  guarded("Simuler", [&] {
    if (server_line_ != nullptr && simulation_->asks_for_data())
      stepping_ = time_->run(1, nullptr) || stepping_;
    else
      time_->go();
  });
}

void FenPrincipale::step_ended(const QString& told) {
  if (server_line_ != nullptr) {
    server_line_->show_state();
    socket_client = server_line_->connection().handle();
  }
  if (std::exchange(stepping_, false) && !told.isEmpty())
    complain("***error:FenPrincipale:Simuler: " + told.toStdString());
}

void FenPrincipale::connect_server(const std::string& host, unsigned short port) {
  server_line_ = new ServerLine(this, host, port);
  setStatusBar(server_line_);
  connect(server_line_, &ServerLine::changed, this,
          [this] { socket_client = server_line_->connection().handle(); });
  connect(server_line_, &ServerLine::lost, this, [this](const QString& reason, bool unasked) {
    // Text behind the last reply: its values were not what they seemed.
    const bool taken_back =
        unasked && time_ != nullptr && simulation_->asks_for_data() && time_->back();
    complain(reason.toStdString() + (taken_back ? "; the last instant is taken back" : ""));
  });
  server_line_->open();
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
    if (!time_->init()) return;
    reset_flags();
  });
}

}  // namespace kiva
