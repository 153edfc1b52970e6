// The steps of an instant, in their order:
//
//   choices -> context -> one pass over the equations -> outputs and locals are shown
//           -> registers move -> registers are shown -> valued outputs get their values
//
// The pass is made of segments of boolean equations; between two segments stands an action that
// asks for data: an abstract equation, or a binding whose clock takes a value as its equation
// fires. A module without data is one segment and asks nobody anything.
//
// Of such a module instants may run in machine code that keeps registers and outputs alone
// (engine/code/resident_run.h). Who then asks for the state has the last of them run again, whole.
//
// Invariants:
//  1. Registers that the machine code keeps are those of the context once the instant is run again.

#include "engine/simulation.h"

#include <algorithm>
#include <iostream>
#include <map>

#include "base/check.h"
#include "base/connection.h"
#include "base/printable_text.h"
#include "engine/code/later.h"
#include "engine/code/resident_run.h"
#include "engine/context.h"
#include "engine/flat_equations.h"
#include "engine/shown_rows.h"
#include "tarn/model/compilation.h"
#include "tarn/model/evaluation_service.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {
const char* const no_value = "--";

/// The name that stands for the signal alone, among those that runs have brought in.
const std::string& own_name(const Signal* signal) {
  return signal->isInstance() ? signal->getInternalName() : signal->getOriginalName();
}
}  // namespace

/// What follows a segment: the data work of the equation at `status_index`.
struct Simulation::Action {
  enum Kind { abstract_equation, binding_fires } kind;
  long status_index;
  DataBinding* binding;  ///< null for an abstract equation that has none
};

/// An output that takes its value from bindings.
struct Simulation::ValuedOutput {
  Signal* signal;
  SignalRails rails;
  std::vector<DataBinding*> bindings;  ///< in the order of the module's table
};

Simulation::Simulation(Module* module)
    : module_(module),
      input_rows_(signals_with_row(module->getInputSignalList())),
      output_rows_(signals_with_row(module->getOutputSignalList())),
      choice_rails_(choice_rails(module)),
      registers_(register_rails(module)) {
  for (const Signal* signal : input_rows_) input_names_.push_back(signal->getOriginalName());
  for (const Signal* signal : output_rows_) output_names_.push_back(signal->getOriginalName());
  for (const Signal* signal : module->getLocalSignalList())
    local_names_.push_back(own_name(signal));
  for (const regclass* reg : module->getRegisterList())
    register_names_.push_back(own_name(reg->actual_var()));
  output_rails_ = rails_named(output_names_);
  shown_outputs_ = std::make_unique<ShownRows>(output_rails_);
  shown_locals_ = std::make_unique<ShownRows>(rails_named(local_names_));
  shown_registers_ = std::make_unique<ShownRows>(rails_named(register_names_));
  plan();
  plan_output_bindings();
  if (!asks_for_data()) resident_ = std::make_unique<code::Later<code::ResidentRun>>();
  load();
}

Simulation::~Simulation() = default;

std::vector<SignalRails> Simulation::rails_named(const std::vector<std::string>& names) const {
  std::vector<SignalRails> rails(names.size());
  for (size_t row = 0; row < names.size(); ++row)
    get_id_signals(module_, names[row], rails[row].status_index, rails[row].value_index);
  return rails;
}

long Simulation::equation_number() const {
  return equations_->equations();
}

void Simulation::plan() {
  Bddexpressionwood* wood = module_->getBddWood();
  equations_ = std::make_unique<FlatEquations>(wood->my_bdd_manager());
  const bool has_bindings = module_->getDataTable() != nullptr;
  for (long index : wood->earliest_sort()) {
    const Bddexpression* e = wood->Exp_table()[index];
    const bool is_status = index % 2 == 0;
    if (e->getAbstraction() == 0) {
      equations_->add(e->my_index_var(), e->my_bdd_exp());
      if (!has_bindings || !is_status) continue;
      DataBinding* binding = module_->getBinding(module_->getSignalNameById(index, wood));
      if (binding == nullptr || binding->getClock() == nullptr || binding->getClock()->isOutput() ||
          !wood->set_of_amont_dependances(index).empty())
        continue;
      actions_.push_back({Action::binding_fires, index, binding});
    } else if (is_status) {
      // The value variable of an abstract signal is written with its status.
      DataBinding* binding = module_->getBinding(module_->getSignalNameById(index, wood));
      actions_.push_back({Action::abstract_equation, index, binding});
    } else {
      continue;
    }
    equations_->cut();
  }
  equations_->cut();
}

void Simulation::reset_choices() {
  state_.inputs.assign(input_rows_.size(), SignalState::bottom);
  state_.set = true;
  state_.reset = false;
}

void Simulation::load() {
  stand_in_context();
  state_ = SimulationState();
  state_.context.assign(static_cast<size_t>(module_->getBddWood()->my_bdd_manager()->Nb_bdd_vars()),
                        2);
  reset_choices();
  state_.input_texts.assign(input_rows_.size(), no_value);
  state_.output_values.assign(output_rows_.size(), no_value);
  show_outputs();
  initialise_register_context(module_, state_.context.data());
  show_registers();
  show_locals();
}

void Simulation::initialise() {
  stand_in_context();
  reset_choices();
  state_.context.assign(state_.context.size(), 2);
  run_equations(state_.context.data());
  show_outputs();
  show_locals();
  initialise_register_context(module_, state_.context.data());
  show_registers();
  state_.input_texts.assign(input_rows_.size(), no_value);
  state_.output_values.assign(output_rows_.size(), no_value);
  state_.instant = 0;
}

void Simulation::plan_output_bindings() {
  if (module_->getDataTable() == nullptr) return;
  std::map<const Signal*, std::vector<DataBinding*>> by_clock;
  for (const auto& [name, binding] : *module_->getDataTable())
    if (binding->getClock() != nullptr) by_clock[binding->getClock()].push_back(binding);
  Bddexpressionwood* wood = module_->getBddWood();
  for (Signal* output : module_->getOutputSignalList()) {
    auto at = by_clock.find(output);
    if (at == by_clock.end()) continue;
    valued_outputs_.push_back({output,
                               {output->getInitialBddStatusId(module_, wood),
                                output->getInitialBddValueId(module_, wood)},
                               std::move(at->second)});
  }
}

void Simulation::step(Sock socket) {
  if (!step_resident()) {
    if (behind_) catch_up();
    resident_at_ = nullptr;
    if (!asks_for_data()) {
      write_choices(choice_rails_, state_.set, state_.reset, state_.inputs, state_.context.data());
      run_instant();
    } else {
      const SimulationState before = state_;
      try {
        step_with_data(socket);
      } catch (...) {
        state_ = before;
        throw;
      }
    }
  }
  looked_at_ = false;
  state_.set = false;
  state_.reset = false;
  ++state_.instant;
}

/// False where nothing has been done: somebody looks at each instant, or it is not for machine
/// code.
bool Simulation::step_resident() {
  if (looked_at_ || resident_ == nullptr) return false;
  code::ResidentRun* run = resident_->ready();
  if (run == nullptr) {
    resident_->count(equations_->equations(), resident_maker());
    return false;
  }
  if (resident_at_ == nullptr && !run->enter(state_.context.data())) return false;
  if (!run->step(state_.set, state_.reset, state_.inputs)) return false;
  resident_at_ = run;
  behind_ = true;
  return true;
}

std::function<std::unique_ptr<code::ResidentRun>()> Simulation::resident_maker() const {
  return [this, variables = state_.context.size()] {
    return code::ResidentRun::make(*equations_, variables,
                                   {choice_rails_, registers_, output_rails_});
  };
}

/// Behind the choices.
void Simulation::run_instant() const {
  equations_->run(0, state_.context.data());
  show_outputs();
  show_locals();
  move_registers(registers_, state_.context.data());
  show_registers();
}

void Simulation::catch_up() const {
  resident_at_->leave(state_.context.data());
  run_instant();
  KIVA_CHECK(1, resident_at_->agrees(state_.context.data()));
  behind_ = false;
}

SignalState Simulation::shown_output(size_t row) const {
  return behind_ ? resident_at_->output(row) : state_.shown_outputs[row];
}

void Simulation::restore(const SimulationState& state) {
  state_ = state;
  stand_in_context();
}

/// The state has been put there by other means than an instant.
void Simulation::stand_in_context() {
  resident_at_ = nullptr;
  behind_ = false;
}

void Simulation::step_with_data(Sock socket) {
  write_choices(choice_rails_, state_.set, state_.reset, state_.inputs, state_.context.data());
  ValueTexts values = build_values();
  ConstantTexts constants;
  if (Compilation::GDataConstantTable() != nullptr)
    for (const ConstantDecl* constant : Compilation::GDataConstantTable()->getConstantList())
      constants[constant->getName()] = {constant->getValue(), ""};
  run_pass(&values, &constants, socket);
  show_outputs();
  show_locals();
  move_registers(registers_, state_.context.data());
  show_registers();
  serve_output_bindings(&values, &constants, socket);
}

void Simulation::run_equations(int* context) const {
  for (size_t segment = 0; segment < equations_->segments(); ++segment)
    equations_->run(segment, context);
}

bool Simulation::compile() const {
  return equations_->compile();
}

bool Simulation::compile_instants() const {
  return resident_ != nullptr && resident_->make_now(resident_maker());
}

ValueTexts Simulation::build_values() const {
  Bddexpressionwood* wood = module_->getBddWood();
  ValueTexts values;
  size_t row = 0;
  for (const Signal* input : module_->getInputSignalList()) {
    const long status_index = input->getBddStatusId(module_, wood);
    std::string& text = values[status_index] = no_value;
    if (input->isValue()) continue;
    if (is_present(status_index, input->getBddValueId(module_, wood)))
      text = state_.input_texts[row];
    ++row;
  }
  for (const signal_list* list : {&module_->getLocalSignalList(), &module_->getOutputSignalList()})
    for (const Signal* signal : *list) values[signal->getBddStatusId(module_, wood)] = no_value;
  return values;
}

void Simulation::run_pass(ValueTexts* values, ConstantTexts* constants, Sock socket) {
  equations_->run(0, state_.context.data());
  for (size_t i = 0; i < actions_.size(); ++i) {
    run_action(actions_[i], values, constants, socket);
    equations_->run(i + 1, state_.context.data());
  }
}

void Simulation::run_action(const Action& action, ValueTexts* values, ConstantTexts* constants,
                            Sock socket) {
  Bddexpressionwood* wood = module_->getBddWood();
  int* context = state_.context.data();
  const auto evaluated = [&] {
    return action.binding->getValue()->Simul_put(module_, constants, values, context, socket);
  };
  if (action.kind == Action::binding_fires) {
    if (is_present(action.status_index, action.status_index + 1))
      (*values)[action.binding->getClock()->getBddStatusId(module_, wood)] = evaluated();
    return;
  }
  if (action.binding == nullptr) {
    end_with("***error:FenPrincipale::Simuler(): No binding for signal:" +
             module_->getSignalNameById(action.status_index, wood));
  }
  const std::string text = evaluated();
  const auto& service = Session::current().part<EvaluationService>();
  if (service.ask && text != "true" && text != "false" && text != no_value)
    throw ConnectionFault("server " + service.name + ": \"" + printable(text) +
                          "\" came, while true or false was awaited");
  context[action.status_index] = text == "true" ? 1 : 0;
  context[action.status_index + 1] = text == "false" ? 1 : 0;
}

void Simulation::show_outputs() const {
  shown_outputs_->show(state_.context, state_.shown_outputs);
}
void Simulation::show_locals() const {
  shown_locals_->show(state_.context, state_.shown_locals);
}
void Simulation::show_registers() const {
  shown_registers_->show(state_.context, state_.shown_registers);
}

void Simulation::serve_output_bindings(ValueTexts* values, ConstantTexts* constants, Sock socket) {
  Bddexpressionwood* wood = module_->getBddWood();
  for (const ValuedOutput& output : valued_outputs_) {
    if (!is_present(output.rails.status_index, output.rails.value_index)) continue;
    std::string text = no_value;
    for (const DataBinding* binding : output.bindings) {
      const Signal* trigger = binding->getSignal();
      const long status_index = trigger->getInitialBddStatusId(module_, wood);
      if (!is_present(status_index, trigger->getInitialBddValueId(module_, wood)) ||
          !wood->set_of_amont_dependances(status_index).empty())
        continue;
      text =
          binding->getValue()->Simul_put(module_, constants, values, state_.context.data(), socket);
      break;
    }
    if (text == no_value)
      remark(Severity::warning,
             "the output \"" + output.signal->getOriginalName() + "\" is present without a value",
             "***error:FenPrincipale:Simuler:  valued output with an undefined value:" +
                 output.signal->getName(module_, wood));
    const auto row = std::find(output_rows_.begin(), output_rows_.end(), output.signal);
    if (row == output_rows_.end()) {
      end_with("***error: FenPrincipale:Simuler:  unknown signal:" +
               output.signal->getInternalName());
    }
    state_.output_values[static_cast<size_t>(row - output_rows_.begin())] = text;
  }
}

}  // namespace kiva
