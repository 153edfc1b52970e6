// The pass over the equations, with literals of a graph in the place of values: choices are
// written, equations run in the order of an instant, registers move. An entry that is read before
// this instant has written it is a variable of its own; `bad` must not depend on one.

#include "proof/module_machine.h"

#include <algorithm>

#include "proof/diagrams.h"

namespace kiva::proof {

ModuleMachine::ModuleMachine(const Simulation& simulation, bool with_reset)
    : module_(simulation.module()), simulation_(simulation), with_reset_(with_reset) {
  Bddexpressionwood* wood = module_->getBddWood();
  for (long index : wood->earliest_sort())
    if (wood->Exp_table()[index]->getAbstraction() != 0)
      throw MachineError{"\"" + module_->getSignalNameById(index / 2 * 2, wood) +
                         "\" comes from data"};
  entries_.resize(static_cast<size_t>(wood->my_bdd_manager()->Nb_bdd_vars()));
  for (size_t index = 0; index < entries_.size(); ++index) {
    entries_[index] = machine.aig.variable();
    unknowns_[node_of(entries_[index])] = static_cast<long>(index);
  }
  choose();
  compute();
  move();
}

void ModuleMachine::choose() {
  const ChoiceRails rails = choice_rails(module_);
  const auto write = [&](SignalRails pair, Literal status) {
    entries_[static_cast<size_t>(pair.status_index)] = status;
    entries_[static_cast<size_t>(pair.value_index)] = negated(status);
  };
  size_t row = 0;
  for (SignalRails input : rails.inputs) {
    input_ones_.push_back(machine.new_input(simulation_.input_names()[row++]));
    write(input, input_ones_.back());
  }
  for (SignalRails input : rails.rowless)
    entries_[static_cast<size_t>(input.status_index)] =
        entries_[static_cast<size_t>(input.value_index)] = zero;
  const size_t set = machine.new_latch("!set", true);
  write(rails.set, machine.latches[set].now);
  write(rails.reset, with_reset_ ? machine.new_input("!reset") : zero);
  for (const regclass* reg : module_->getRegisterList()) {
    const SignalRails pair = rails_of(module_, reg->actual_var());
    const bool initial = reg->is_initialy_true() != 0;
    const std::string& name = reg->actual_var()->getInternalName();
    for (const auto& [index, value, rail] :
         {std::tuple{pair.status_index, initial, ""}, {pair.value_index, !initial, "'"}})
      entries_[static_cast<size_t>(index)] =
          machine.latches[machine.new_latch(name + rail, value)].now;
  }
}

void ModuleMachine::compute() {
  Bddexpressionwood* wood = module_->getBddWood();
  for (long index : wood->earliest_sort())
    entries_[static_cast<size_t>(index)] =
        image_of(wood->Exp_table()[index]->my_bdd_exp(), entries_, machine.aig);
}

void ModuleMachine::move() {
  size_t latch = 1;
  for (const RegisterRails& reg : register_rails(module_)) {
    next_.push_back(reg.next);
    machine.latches[latch++].next = of(reg.next.status_index);
    machine.latches[latch++].next = of(reg.next.value_index);
  }
}

ModuleMachine::Rails ModuleMachine::rails(SignalPlace place) {
  SignalRails found{};
  const auto find = [&](const std::string& name) {
    get_id_signals(module_, name, found.status_index, found.value_index);
  };
  switch (place.list) {
    case SignalPlace::input:
      return {input_ones_[place.row], negated(input_ones_[place.row])};
    case SignalPlace::output:
      find(simulation_.output_names()[place.row]);
      break;
    case SignalPlace::local:
      find(simulation_.local_names()[place.row]);
      break;
    case SignalPlace::register_:
      // Registers show what they have moved to.
      found = next_[place.row];
      break;
  }
  return {of(found.status_index), of(found.value_index)};
}

Literal ModuleMachine::was_one(SignalPlace place) {
  if (place.list == SignalPlace::register_) {
    const size_t latch = 1 + 2 * place.row;  // its two rails, behind the set wire
    return machine.aig.both(machine.latches[latch].now, negated(machine.latches[latch + 1].now));
  }
  const size_t latch = machine.new_latch("", false);
  machine.latches[latch].next = is_one(place);
  return machine.latches[latch].now;
}

Literal ModuleMachine::is(SignalPlace place, SignalState state) {
  const Rails pair = rails(place);
  const auto [status, value] = pair_of(state);
  if (state == SignalState::unknown) return zero;
  return machine.aig.both(negated_if(pair.status, status == 0), negated_if(pair.value, value == 0));
}

bool ModuleMachine::find_variable(const std::string& name, Literal& literal) const {
  const bddpp_manager* manager = module_->getBddWood()->my_bdd_manager();
  for (size_t index = 0; index < entries_.size(); ++index) {
    if (manager->Name_var_by_index(static_cast<long>(index)) != name) continue;
    literal = entries_[index];
    return true;
  }
  return false;
}

std::string ModuleMachine::undefined(const Machine& made) const {
  std::vector<Literal> open{made.bad};
  std::map<std::uint32_t, const Machine::Latch*> latch_at;
  for (const Machine::Latch& latch : made.latches) latch_at[node_of(latch.now)] = &latch;
  std::vector<bool> seen(made.aig.size(), false);
  while (!open.empty()) {
    const std::uint32_t node = node_of(open.back());
    open.pop_back();
    if (seen[node]) continue;
    seen[node] = true;
    if (made.aig.is_and(node)) {
      open.push_back(made.aig.left(node));
      open.push_back(made.aig.right(node));
    } else if (const auto latch = latch_at.find(node); latch != latch_at.end()) {
      open.push_back(latch->second->next);
    } else if (const auto unknown = unknowns_.find(node); unknown != unknowns_.end()) {
      return "\"" + module_->getBddWood()->my_bdd_manager()->Name_var_by_index(unknown->second) +
             "\" is read before anything computes it";
    }
  }
  return "";
}

}  // namespace kiva::proof
