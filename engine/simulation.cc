// The steps of an instant, in their order:
//
//   choices -> context -> one pass over the equations -> outputs and locals are shown
//           -> registers move -> registers are shown -> valued outputs get their values
//
// The pass is made of segments of boolean equations; between two segments stands an action that
// asks for data: an abstract equation, or a binding whose clock takes a value as its equation
// fires. A module without data is one segment and asks nobody anything.

#include "engine/simulation.h"

#include <algorithm>
#include <iostream>
#include <map>

#include "base/connection.h"
#include "base/printable_text.h"
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
  shown_outputs_ = rows_of(output_names_);
  shown_locals_ = rows_of(local_names_);
  shown_registers_ = rows_of(register_names_);
  plan();
  plan_output_bindings();
  load();
}

Simulation::~Simulation() = default;

std::unique_ptr<ShownRows> Simulation::rows_of(const std::vector<std::string>& names) const {
  auto rows = std::make_unique<ShownRows>();
  for (const std::string& name : names) {
    SignalRails rails{};
    get_id_signals(module_, name, rails.status_index, rails.value_index);
    rows->add(rails);
  }
  return rows;
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
  if (!asks_for_data()) {
    write_choices(choice_rails_, state_.set, state_.reset, state_.inputs, state_.context.data());
    equations_->run(0, state_.context.data());
    show_outputs();
    show_locals();
    move_registers(registers_, state_.context.data());
    show_registers();
  } else {
    const SimulationState before = state_;
    try {
      step_with_data(socket);
    } catch (...) {
      state_ = before;
      throw;
    }
  }
  state_.set = false;
  state_.reset = false;
  ++state_.instant;
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

void Simulation::show_outputs() {
  shown_outputs_->show(state_.context, state_.shown_outputs);
}
void Simulation::show_locals() {
  shown_locals_->show(state_.context, state_.shown_locals);
}
void Simulation::show_registers() {
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
