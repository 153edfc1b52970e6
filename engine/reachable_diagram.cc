// Two diagrams of a module's equations. What a register moves to, and what an output is, are
// functions of inputs and registers alone, found by unfolding the locals.
//
// The reachable states are walked from the first one. In a state the registers are constants, so
// that each of these functions is one of the inputs; splitting the true function by all of them
// gives the steps out of the state, each with the inputs that take it.

#include <algorithm>
#include <deque>
#include <map>

#include "engine/diagram.h"
#include "pert_exp/unfold.h"
#include "tarn/targets/frame/sum_text.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

constexpr long most_products = 12;

const TargetText::Language plain{.shape = {.target = "diagram"}, .names_module = false};

TargetRules untold() {
  TargetRules rules = TargetRules::working();
  rules.untold = true;
  rules.names = rules.needed_only = rules.complete = rules.folded = false;
  return rules;
}

class StateMachine {
 public:
  StateMachine(Module* module, const SourceNotes::Names& names)
      : module_(module),
        wood_(*module->getBddWood()),
        text_(module, plain, untold()),
        names_(names) {
    for (const StateRail& rail : text_.state()) registers_.insert(rail.index);
    for (const StateRail& rail : text_.state()) next_.push_back(function_of(rail.next));
    for (const Signal* output : text_.outputs()) {
      const bdd status = function_of(text_.status(output));
      outputs_.push_back(
          text_.finalised()
              ? status
              : wood_.Bdd_and(status, wood_.Bdd_not(function_of(text_.value(output)))));
    }
  }

  const std::vector<StateRail>& state() const { return text_.state(); }
  const std::vector<bdd>& next() const { return next_; }
  const std::vector<bdd>& outputs() const { return outputs_; }
  std::string output_name(size_t n) const { return text_.outputs()[n]->getOriginalName(); }
  Bddexpressionwood& wood() const { return wood_; }
  bddpp_manager* manager() const { return wood_.my_bdd_manager(); }

  /// As it is drawn.
  std::string name(long index) const {
    const std::string own = own_name(index);
    const bool negated = own.starts_with("not ");
    const auto drawn = names_.find(SourceNotes::key(negated ? own.substr(4) : own));
    if (drawn == names_.end()) return own;
    return (negated ? "not " : "") + drawn->second;
  }
  std::string own_name(long index) const {
    const SignalRef* ref = module_->getSignalManager()->getSignalRefById(index, &wood_);
    if (ref == nullptr) return wood_.Name_var_by_index(index);
    const std::string name = ref->getOriginalName();
    return ref->getBddStatusId(&wood_) == index ? name : "not " + name;
  }

  /// A sum of products in the names of signals.
  std::string text(const bdd& f) const {
    const long products = count_products(f, most_products + 1);
    if (products > most_products)
      return "(more than " + std::to_string(most_products) + " products)";
    const SumTexts texts{
        .or_text = " or ", .and_text = " and ", .not_text = "not ", .name = [this](long index) {
          return name(index);
        }};
    return sum_text(text_, texts, {0, f});
  }

 private:
  bdd function_of(long index) const {
    bdd f = manager()->Bdd_var_by_index(index);
    if (registers_.contains(index)) return f;
    return unfolded(wood_, f, [this](long at) { return registers_.contains(at); });
  }

  Module* module_;
  Bddexpressionwood& wood_;
  TargetText text_;
  const SourceNotes::Names& names_;
  index_set registers_;
  std::vector<bdd> next_, outputs_;
};

using Registers = std::vector<bool>;

class ReachableWalk {
 public:
  ReachableWalk(Module* module, size_t most, const SourceNotes::Names& names)
      : machine_(module, names), most_(most) {
    diagram_.title = module->getName();
  }

  Diagram run(std::string& problem) {
    Registers first;
    for (const StateRail& rail : machine_.state()) first.push_back(rail.initial);
    diagram_.arcs.push_back({Diagram::nowhere, node_of(first), ""});
    while (!open_.empty() && !full()) {
      const Registers state = open_.front();
      open_.pop_front();
      leave(state);
    }
    if (full()) {
      problem = "reaches more than " + std::to_string(most_) + " states or steps";
      return {};
    }
    put_arcs();
    return std::move(diagram_);
  }

 private:
  bool full() const { return diagram_.nodes.size() > most_ || steps_.size() > most_ * 4; }

  size_t node_of(const Registers& state) {
    const auto [at, is_new] = number_of_.emplace(state, diagram_.nodes.size());
    if (!is_new) return at->second;
    Diagram::Node node;
    Diagram::Code code;
    for (size_t n = 0; n < state.size(); ++n) {
      const long index = machine_.state()[n].index;
      const std::string name = machine_.own_name(index);
      if (state[n]) node.name += (node.name.empty() ? "" : " ") + machine_.name(index);
      if (!name.starts_with("not ")) code.emplace_back(name, state[n]);
    }
    node.is = {code};
    if (node.name.empty()) node.name = "-";
    diagram_.nodes.push_back(node);
    open_.push_back(state);
    return at->second;
  }

  /// All steps out of a state.
  void leave(const Registers& state) {
    bdd here = machine_.wood().Bdd_one();
    for (size_t n = 0; n < state.size(); ++n) {
      const bdd bit = machine_.manager()->Bdd_var_by_index(machine_.state()[n].index);
      here = machine_.wood().Bdd_and(here, state[n] ? bit : machine_.wood().Bdd_not(bit));
    }
    std::vector<bdd> functions;
    for (const auto* all : {&machine_.next(), &machine_.outputs()})
      for (const bdd& f : *all) functions.push_back(machine_.manager()->Bdd_constrain(f, here));
    split(node_of(state), functions, 0, machine_.wood().Bdd_one(), {});
  }

  void split(size_t from, const std::vector<bdd>& functions, size_t at, const bdd& when,
             Registers values) {
    if (full() || machine_.wood().Bdd_is_tautology(when, 0) != 0) return;
    if (at < functions.size()) {
      for (const bool value : {true, false}) {
        values.resize(at);
        values.push_back(value);
        const bdd& f = functions[at];
        split(from, functions, at + 1,
              machine_.wood().Bdd_and(when, value ? f : machine_.wood().Bdd_not(f)), values);
      }
      return;
    }
    const auto registers = static_cast<std::ptrdiff_t>(machine_.next().size());
    const size_t to = node_of(Registers(values.begin(), values.begin() + registers));
    std::string present;
    for (size_t n = 0; n < machine_.outputs().size(); ++n)
      if (values[static_cast<size_t>(registers) + n])
        present += (present.empty() ? "" : ", ") + machine_.output_name(n);
    const auto [step, is_new] = steps_.emplace(std::tuple(from, to, present), when);
    if (!is_new) step->second = machine_.wood().Bdd_or(step->second, when);
  }

  void put_arcs() {
    for (const auto& [step, when] : steps_) {
      const auto& [from, to, present] = step;
      std::string label = machine_.manager()->Bdd_is_one_tautologic(when) != 0
                              ? ""
                              : '[' + machine_.text(when) + ']';
      if (!present.empty()) label += (label.empty() ? "/ " : " / ") + present;
      diagram_.arcs.push_back({from, to, label});
    }
  }

  StateMachine machine_;
  size_t most_;
  Diagram diagram_;
  std::map<Registers, size_t> number_of_;
  std::deque<Registers> open_;
  std::map<std::tuple<size_t, size_t, std::string>, bdd> steps_;
};

}  // namespace

Diagram reachable_diagram(Module* module, size_t most, std::string& problem,
                          const SourceNotes::Names& names) {
  // Functions of more registers may be too large to be unfolded.
  constexpr size_t most_registers = 64;
  if (const size_t registers = module->getRegisterList().size(); registers > most_registers) {
    problem = "has " + std::to_string(registers) + " registers";
    return {};
  }
  return ReachableWalk(module, most, names).run(problem);
}

Diagram registers_diagram(Module* module, const SourceNotes::Names& names) {
  const StateMachine machine(module, names);
  Diagram diagram{module->getName(), {}, {}};
  std::map<long, size_t> node_of;
  const auto add = [&](const std::string& name, const bdd& f, Diagram::Shape shape) {
    diagram.nodes.push_back({name, machine.text(f), shape, {}, {}});
  };
  for (size_t n = 0; n < machine.state().size(); ++n) {
    node_of.emplace(machine.state()[n].index, n);
    const long index = machine.state()[n].index;
    add(machine.name(index), machine.next()[n], Diagram::Shape::register_);
    diagram.nodes.back().is = {{{machine.own_name(index), true}}};
  }
  for (size_t n = 0; n < machine.outputs().size(); ++n)
    add(machine.output_name(n), machine.outputs()[n], Diagram::Shape::function);
  size_t to = 0;
  for (const auto* all : {&machine.next(), &machine.outputs()})
    for (const bdd& f : *all) {
      for (long index : machine.manager()->set_of_index_depend_on(f))
        if (const auto from = node_of.find(index); from != node_of.end())
          diagram.arcs.push_back({from->second, to, ""});
      ++to;
    }
  return diagram;
}

}  // namespace kiva
