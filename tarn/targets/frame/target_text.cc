// A module as a writer sees it. In a working text everything follows from what the text must show:
// the equations are the cone of the outputs and of the next state, and a variable of that cone
// which nothing computes is made from its signal's other rail, becomes state, or becomes an input.

#include "tarn/targets/frame/target_text.h"

#include <algorithm>
#include <iostream>

#include "base/graph_walk.h"
#include "tarn/session/diagnostic.h"
#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/state_folding.h"

namespace kiva {

namespace {

const SignalRef* reference(Module* module, long index) {
  return module->getSignalManager()->getSignalRefById(index, module->getBddWood());
}

}  // namespace

TargetText::TargetText(Module* module, const Language& language, const TargetRules& rules)
    : module_(module),
      language_(language),
      rules_(rules),
      wood_(module->getBddWood()),
      names_(language_.shape, rules.names, !rules.untold) {
  wood_->update_bdd_vars();
  take_interface();
  take_equations();
  take_state();
  if (rules_.needed_only) take_needed();
  if (rules_.complete) complete();
  if (rules_.folded && finalised()) {
    fold();
    take_needed();
  }
  take_reads();
  take_locals();
  take_names();
}

long TargetText::status(const Signal* signal) const {
  return signal->isOutput() ? signal->getInitialBddStatusId(module_, wood_)
                            : signal->getBddStatusId(module_, wood_);
}

long TargetText::value(const Signal* signal) const {
  return signal->isOutput() ? signal->getInitialBddValueId(module_, wood_)
                            : signal->getBddValueId(module_, wood_);
}

void TargetText::take_interface() {
  const auto is_bound = [&](const Signal* signal) {
    const DataBinding* binding = module_->getBinding(signal->getInternalName());
    const bool computed =
        rules_.complete ? binding != nullptr && binding->getClock() == nullptr : binding != nullptr;
    return computed && language_.has_data;
  };
  if (!finalised() && (rules_.both_rails || language_.told_wires)) {
    const auto add_wire = [&](const Signal* wire, std::vector<long>& rails) {
      rails.push_back(status(wire));
      if (rules_.both_rails) rails.push_back(value(wire));
    };
    add_wire(module_->getSet(), set_reset_rails_);
    add_wire(module_->getReset(), set_reset_rails_);
    add_wire(module_->getRtl(), rtl_rails_);
  }
  for (Signal* input : module_->getInputSignalList()) {
    original_names_.emplace(status(input), input->getOriginalName());
    if (status(input) != -1 && !is_bound(input)) inputs_.push_back(input);
  }
  for (Signal* output : module_->getOutputSignalList()) {
    original_names_.emplace(status(output), output->getOriginalName());
    outputs_.push_back(output);
  }
  const std::vector<long> outputs = output_rails();
  output_rails_.insert(outputs.begin(), outputs.end());
  interface_ = output_rails_;
  for (long index : input_rails()) interface_.insert(index);
}

namespace {

template <class Text>
void add_rails(const Text& text, const std::vector<Signal*>& signals, std::vector<long>& rails) {
  for (const Signal* signal : signals) {
    rails.push_back(text.status(signal));
    if (!text.finalised()) rails.push_back(text.value(signal));
  }
}

}  // namespace

std::vector<long> TargetText::input_rails() const {
  std::vector<long> rails = set_reset_rails_;
  add_rails(*this, inputs_, rails);
  rails.insert(rails.end(), further_inputs_.begin(), further_inputs_.end());
  return rails;
}

std::vector<long> TargetText::output_rails() const {
  std::vector<long> rails = rtl_rails_;
  add_rails(*this, outputs_, rails);
  return rails;
}

void TargetText::take_equations() {
  for (long index : wood_->earliest_sort()) {
    const Bddexpression* e = wood_->Exp_table()[index];
    if (e == nullptr) continue;
    if (e->getAbstraction() == 0) {
      if (e->my_bdd_exp().initialised()) equations_.push_back({index, e->my_bdd_exp()});
      continue;
    }
    if (!language_.has_data) continue;
    const SignalRef* ref = reference(module_, index);
    Signal* signal = module_->getSignalById(index, wood_);
    DataBinding* binding = ref == nullptr ? nullptr : module_->getBinding(ref->getCurrentName());
    if (binding == nullptr) {
      end_with("***error: abstract equation without bindind for:" +
               manager()->Name_var_by_index(index));
    }
    const bool is_value = ref->getBddValueId(wood_) == index;
    equations_.push_back({index,
                          {},
                          is_value ? TargetEquation::data_complement : TargetEquation::data,
                          binding,
                          signal});
  }
}

void TargetText::take_state() {
  for (const regclass* reg : module_->getRegisterList()) {
    const bool initial = reg->is_initialy_true() != 0;
    state_.push_back({status(reg->actual_var()), status(reg->next_var()), initial});
    if (rules_.both_rails && !finalised())
      state_.push_back({value(reg->actual_var()), value(reg->next_var()), !initial});
  }
}

template <class See>
void TargetText::for_each_read(const TargetEquation& equation, See see) const {
  if (equation.kind == TargetEquation::function) {
    for (long index : manager()->set_of_index_depend_on(equation.f)) see(index);
    return;
  }
  if (const auto signals = equation.binding->getValue()->computeDependencySet())
    for (const Signal* signal : *signals) see(status(signal));
}

void TargetText::take_needed() {
  std::unordered_map<long, const TargetEquation*> equation_of;
  for (const TargetEquation& equation : equations_) equation_of.emplace(equation.index, &equation);
  std::unordered_map<long, StateRail> value_state;
  for (const regclass* reg : module_->getRegisterList()) {
    const long rail = value(reg->actual_var());
    if (!equation_of.contains(rail))
      value_state.emplace(rail,
                          StateRail{rail, value(reg->next_var()), reg->is_initialy_true() == 0});
  }
  for (const StateRail& rail : state_) value_state.erase(rail.index);

  std::vector<long> open = output_rails();
  std::unordered_map<long, long> next_of;
  const bool live_only = rules_.folded;
  for (const StateRail& rail : state_) {
    next_of.emplace(rail.index, rail.next);
    if (!live_only) open.push_back(rail.next);
  }
  if (language_.has_data && module_->getDataTable() != nullptr)
    for (const auto& [bound, binding] : *module_->getDataTable()) {
      if (binding->getClock() == nullptr) continue;
      open.push_back(status(binding->getSignal()));
    }
  std::unordered_set<long> needed;
  const auto enters = [&](long index) { return needed.insert(index).second; };
  walk_from(std::move(open), enters, [&](long index, auto more) {
    if (auto at = equation_of.find(index); at != equation_of.end()) {
      for_each_read(*at->second, more);
    } else if (auto state = value_state.find(index); state != value_state.end()) {
      state_.push_back(state->second);
      more(state->second.next);
    } else if (auto next = next_of.find(index); next != next_of.end()) {
      more(next->second);
    }
  });
  if (live_only)
    std::erase_if(state_, [&](const StateRail& e) { return !needed.contains(e.index); });
  std::erase_if(equations_, [&](const TargetEquation& e) { return !needed.contains(e.index); });
}

namespace {

/// Equations to stand in front of all others (-1), or behind that of an index.
using Added = std::unordered_map<long, std::vector<TargetEquation>>;

std::vector<TargetEquation> joined(const std::vector<TargetEquation>& equations,
                                   const Added& added) {
  std::vector<TargetEquation> all;
  const auto take_added = [&](long index, auto& self) -> void {
    auto at = added.find(index);
    if (at == added.end()) return;
    for (const TargetEquation& equation : at->second) {
      all.push_back(equation);
      if (equation.index != index) self(equation.index, self);
    }
  };
  take_added(-1, take_added);
  for (const TargetEquation& equation : equations) {
    all.push_back(equation);
    take_added(equation.index, take_added);
  }
  return all;
}

}  // namespace

void TargetText::complete() {  // house: one rule by cases
  Added added;
  std::unordered_set<long> computed;
  for (const TargetEquation& equation : equations_) computed.insert(equation.index);
  std::unordered_set<long> given;
  for (const StateRail& rail : state_) given.insert(rail.index);
  for (long index : input_rails()) given.insert(index);

  const auto tell = [&](long index, const char* what) {
    if (rules_.untold) return;
    const SignalRef* ref = reference(module_, index);
    const std::string text =
        std::string(language_.shape.target) + ": " +
        (ref == nullptr ? manager()->Name_var_by_index(index) : ref->getOriginalName()) + ": " +
        what;
    remark(Severity::note, text, text);
  };
  const auto complete_one = [&](long index, auto& self) -> void {
    if (index < 0 || computed.contains(index) || given.contains(index)) return;
    const SignalRef* ref = reference(module_, index);
    if (ref != nullptr && ref->getBddValueId(wood_) == index) {
      const long status_rail = ref->getBddStatusId(wood_);
      self(status_rail, self);
      const bdd f = manager()->Bdd_not(manager()->Bdd_var_by_index(status_rail));
      added[computed.contains(status_rail) ? status_rail : -1].push_back({index, f});
      computed.insert(index);
      return;
    }
    if (output_rails_.contains(index)) {
      tell(index, "nothing computes this output; it stays absent");
      added[-1].push_back({index, manager()->Bdd_zero()});
      computed.insert(index);
      return;
    }
    const Bddexpression* e = wood_->Exp_table()[index];
    tell(index, e != nullptr && e->getAbstraction() != 0
                    ? "computed from data, which cannot be written; it is a further input"
                    : "nothing computes this; it is a further input");
    further_inputs_.push_back(index);
    interface_.insert(index);
    given.insert(index);
  };
  const auto complete_at = [&](long index) { complete_one(index, complete_one); };
  for (const TargetEquation& equation : equations_) for_each_read(equation, complete_at);
  for (const StateRail& rail : state_) complete_at(rail.next);
  for (long index : output_rails()) complete_at(index);
  if (language_.has_data && module_->getDataTable() != nullptr)
    for (const auto& [bound, binding] : *module_->getDataTable())
      if (binding->getClock() != nullptr) complete_at(status(binding->getSignal()));
  if (!added.empty()) equations_ = joined(equations_, added);
}

void TargetText::fold() {
  // What a test on data reads bears its own name.
  const bool has_data = module_->getDataTable() != nullptr && !module_->getDataTable()->empty();
  Folding folding = has_data ? Folding(*manager())
                             : fold_registers(*manager(), equations_, output_rails_, state_);
  for (TargetEquation& equation : equations_)
    if (equation.kind == TargetEquation::function)
      equation.f = folding.define(equation.index, equation.f);
}

void TargetText::take_reads() {
  for (const TargetEquation& equation : equations_)
    for_each_read(equation, [&](long index) { read_.insert(index); });
  for (const StateRail& rail : state_) read_.insert(rail.next);
  const DataTable* bindings = language_.has_data ? module_->getDataTable() : nullptr;
  if (bindings != nullptr)
    for (const auto& [bound, binding] : *bindings) {
      if (binding->getClock() != nullptr) read_.insert(status(binding->getSignal()));
      if (const auto signals = binding->getValue()->computeDependencySet())
        read_values_.insert(signals->begin(), signals->end());
    }
}

void TargetText::take_locals() {
  std::unordered_set<long> own = interface_;
  for (const StateRail& rail : state_) own.insert(rail.index);
  std::vector<long> used(read_.begin(), read_.end());
  if (rules_.needed_only) {
    for (const TargetEquation& equation : equations_) used.push_back(equation.index);
  } else {
    for (long index : wood_->Set_of_index_used_variables()) used.push_back(index);
  }
  std::sort(used.begin(), used.end());
  used.erase(std::unique(used.begin(), used.end()), used.end());
  for (long index : used)
    if (!own.contains(index)) locals_.push_back(index);
  for (Signal* local : module_->getLocalSignalList())
    if (language_.has_data && is_valued(local)) valued_locals_.push_back(local);
}

std::vector<DataBinding*> TargetText::value_bindings(const Signal* signal) const {
  const auto found = module_->getDataBindingByClock(signal);
  return found == nullptr ? std::vector<DataBinding*>() : *found;
}

DataBinding* TargetText::triggered(const TargetEquation& equation) const {
  if (equation.kind != TargetEquation::function || module_->getDataTable() == nullptr)
    return nullptr;
  const SignalRef* ref = reference(module_, equation.index);
  if (ref == nullptr || ref->getBddStatusId(wood_) != equation.index) return nullptr;
  DataBinding* binding = module_->getBinding(ref->getCurrentName());
  const bool gives =
      binding != nullptr && binding->getClock() != nullptr && !binding->getClock()->isOutput();
  return gives ? binding : nullptr;
}

// Names.

std::string TargetText::wanted_name(long index) const {
  std::string name = manager()->Name_var_by_index(index);
  if (!rules_.names) return name;
  if (!finalised())
    return name.starts_with('_') && !language_.shape.may_begin_with_underscore ? name.substr(1)
                                                                               : name;
  // A module that was read again bears the names of one that has just been finalised.
  if (auto at = original_names_.find(index); at != original_names_.end())
    name = at->second;
  else if (const SourceNote* note = note_of(index))
    name = note->name;
  else
    name = without_rail(name);
  std::replace(name.begin(), name.end(), '@', '_');
  return name.starts_with('_') ? "v" + name : name;
}

void TargetText::take_own_names() {
  module_name_ = language_.names_module ? names_.give(module_name_, "module", module_name_)
                                        : names_.legal(module_name_);
  if (language_.has_data) reserve_data_names(names_);
  if (language_.node_prefix) names_.reserve_numbered(language_.node_prefix(module_name_));
  if (language_.own_names)
    for (const std::string& name : language_.own_names(module_name_)) names_.reserve(name);
}

void TargetText::take_name(long index, const std::string& prefix) {
  if (index < 0 || name_of_.contains(index)) return;
  const SignalRef* ref = reference(module_, index);
  const std::string wood_name = manager()->Name_var_by_index(index);
  const bool is_status = ref != nullptr && ref->getBddStatusId(wood_) == index;
  const std::string original = is_status ? ref->getOriginalName() : wood_name;
  const std::string wanted = prefix + wanted_name(index);
  const bool in_interface = interface_.contains(index);
  const std::string name = names_.give(wanted, in_interface ? "signal" : "", original);
  name_of_[index] = name;
  // That "@" and "_" in front are replaced is known of locals, but changes an interface.
  if (in_interface && finalised() && name == wanted && wanted != original)
    names_.tell("signal", original, name, "no name of a finalised module");
  if (!in_interface && name != wanted && note_of(index) == nullptr)
    inner_names_ += (inner_names_.empty() ? "" : ", ") + original + " as " + name;
}

void TargetText::take_value_name(const Signal* signal) {
  if (language_.has_data && is_valued(signal))
    value_name_of_[signal] = names_.give(name(signal) + "_val");
}

void TargetText::take_names() {
  module_name_ = module_->getName();
  if (!rules_.names) return;
  take_own_names();
  for (long index : input_rails()) take_name(index);
  for (long index : output_rails()) take_name(index);
  for (const Signal* signal : inputs_) take_value_name(signal);
  for (const Signal* signal : outputs_) take_value_name(signal);
  const std::string state_prefix = language_.module_in_state ? module_name_ + "_" : "";
  for (const StateRail& rail : state_) {
    take_name(rail.index, state_prefix);
    if (is_output(rail.index))
      state_name_of_[rail.index] = names_.give(state_prefix + name(rail.index) + "_inner");
  }
  for (long index : locals_) take_name(index);
  for (const Signal* signal : valued_locals_) {
    take_name(status(signal));  // may be no variable of the text
    take_value_name(signal);
  }
  if (inner_names_.empty() || rules_.untold) return;
  const std::string text =
      std::string(language_.shape.target) + ": inner signals under other names: " + inner_names_;
  remark(Severity::note, text, text);
}

const SourceNote* TargetText::note_of(long index) const {
  return rules_.notes == nullptr ? nullptr : rules_.notes->at(manager()->Name_var_by_index(index));
}

std::string TargetText::place(long index) const {
  const SourceNote* note = rules_.comments && index >= 0 ? note_of(index) : nullptr;
  return note == nullptr ? "" : note->place;
}

void TargetText::put_note(std::ostream& out, const std::string& start, long index) const {
  const std::string at = place(index);
  if (at.empty() || at == last_note_) return;
  last_note_ = at;
  out << start << at << '\n';
}

std::string TargetText::name(long index) const {
  auto at = name_of_.find(index);
  return at != name_of_.end() ? at->second : wanted_name(index);
}

std::string TargetText::state_name(long index) const {
  auto at = state_name_of_.find(index);
  return at != state_name_of_.end() ? at->second : name(index);
}

std::string TargetText::value_name(const Signal* signal) const {
  auto at = value_name_of_.find(signal);
  return at != value_name_of_.end() ? at->second : name(signal) + "_val";
}

// Nodes.

long TargetText::node_number(const bdd_node* node) const {
  if (!rules_.used_nodes) return node->global_id();
  return number_of_.emplace(node, static_cast<long>(number_of_.size())).first->second;
}

long TargetText::count_nodes(const std::function<void(std::ostream&)>& put_equations) const {
  if (!rules_.used_nodes) return manager()->Bdd_total_size();
  std::ostream nowhere(nullptr);
  put_equations(nowhere);
  return static_cast<long>(number_of_.size());
}

equation_code_texts TargetText::numbered(equation_code_texts texts) const {
  if (!texts.read) texts.read = [this](long index) { return name(index); };
  if (!texts.left) texts.left = texts.read;
  if (!texts.nodes.name) texts.nodes.name = texts.read;
  if (rules_.brackets) {
    texts.nodes.first_open = texts.nodes.second_open = "(";
    texts.nodes.first_close = texts.nodes.second_close = ")";
  }
  texts.nodes.number = [this](const bdd_node* node) { return node_number(node); };
  return texts;
}

}  // namespace kiva
