// Which states can be reached is asked only where a cycle does not settle in all of them, and only
// of the registers on which that hangs. Sets of states are diagrams over the registers' own
// variables; the states that follow are the range of the registers' next functions (O. Coudert, C.
// Berthet, J. C. Madre, Verification of synchronous sequential machines based on symbolic
// execution, 1989), so that no variable is added to the module's manager.

#include "tarn/zu/causality.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <vector>

#include "base/graph_walk.h"
#include "pert_exp/cycle_solution.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/progress.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/whole_values.h"

namespace kiva {

namespace {

constexpr long most_nodes = 2'000'000;  ///< made for one module
constexpr long most_ranges = 200'000;   ///< steps of one walk over the states
constexpr size_t most_registers = 500;  ///< on which a cycle may hang

struct BoundPassed {};

/// The rail of a register, in this instant and in the next.
struct StateRail {
  long now;
  long next;
  bool initial;
};

/// Functions over inputs and registers: what equations come to when all that they read is put in.
class Unfolded {
 public:
  Unfolded(Module* module, const std::unordered_set<long>& ones)
      : wood_(*module->getBddWood()),
        manager_(*wood_.my_bdd_manager()),
        last_node_(manager_.Bdd_total_size() + most_nodes) {
    Bddexpressionwood* wood = &wood_;
    for (long index : ones) of_[index] = manager_.Bdd_one();
    const auto take_pair = [&](const Signal* signal) {
      const long status = signal->getInitialBddStatusId(module, wood);
      const long value = signal->getInitialBddValueId(module, wood);
      if (status < 0 || value < 0) return;
      inputs_[status] = signal->getInternalName();
      of_[value] = manager_.Bdd_not(manager_.Bdd_var_by_index(status));
    };
    for (const Signal* input : module->getInputSignalList()) take_pair(input);
    for (const Signal* wire : {module->getSet(), module->getReset()}) take_pair(wire);
    set = module->getSet()->getInitialBddStatusId(module, wood);
    reset = module->getReset()->getInitialBddStatusId(module, wood);
    for (const regclass* reg : module->getRegisterList()) {
      const Signal *now = reg->actual_var(), *next = reg->next_var();
      const bool initial = reg->is_initialy_true() != 0;
      take_rail({now->getBddStatusId(module, wood), next->getBddStatusId(module, wood), initial});
      take_rail({now->getBddValueId(module, wood), next->getBddValueId(module, wood), !initial});
    }
  }

  /// f with all that it reads put in.
  bdd operator()(const bdd& f) {
    std::vector<std::pair<long, bdd>> values;
    for (long index : manager_.set_of_index_depend_on(f)) values.emplace_back(index, of(index));
    return manager_.Bdd_vector_compose(f, values);
  }
  bdd of(long index) {
    const auto done = [&](long v) { return of_.contains(v); };
    const auto reads = [&](long v, const auto& ask) {
      if (const Bddexpression* equation = computed(v))
        for (long read : equation->set_of_var_dependances()) ask(read);
    };
    walk_from_below<long>(index, done, reads, [&](long v) {
      if (manager_.Bdd_total_size() > last_node_) throw BoundPassed{};
      const Bddexpression* equation = computed(v);
      if (equation == nullptr) {
        of_[v] = manager_.Bdd_var_by_index(v);
        return;
      }
      std::vector<std::pair<long, bdd>> values;
      for (long read : equation->set_of_var_dependances()) values.emplace_back(read, of_.at(read));
      of_[v] = manager_.Bdd_vector_compose(equation->my_bdd_exp(), values);
    });
    return of_.at(index);
  }

  bool is_input(long index) const { return inputs_.contains(index); }
  const std::string& input_name(long index) const { return inputs_.at(index); }
  const std::map<long, StateRail>& rails() const { return rails_; }
  bddpp_manager& manager() const { return manager_; }
  bool bound_passed() const { return manager_.Bdd_total_size() > last_node_; }

  long set = -1, reset = -1;

 private:
  const Bddexpression* computed(long index) const {
    const Bddexpression* equation = wood_.exp_by_index(index);
    return equation == nullptr || equation->getAbstraction() != 0 ? nullptr : equation;
  }
  void take_rail(const StateRail& rail) {
    if (computed(rail.now) == nullptr) rails_[rail.now] = rail;
  }

  Bddexpressionwood& wood_;
  bddpp_manager& manager_;
  long last_node_;
  std::unordered_map<long, bdd> of_;
  std::map<long, std::string> inputs_;  ///< by status index
  std::map<long, StateRail> rails_;
};

/// The states that can be reached, as far as `bad` hangs on them.
class StateWalk {
 public:
  StateWalk(Unfolded& unfolded, const bdd& bad)
      : unfolded_(unfolded), manager_(unfolded.manager()), bad_(bad) {
    std::vector<long> open;
    std::map<long, bdd> next;
    const auto look = [&](const bdd& f) {
      for (long index : manager_.set_of_index_depend_on(f)) {
        const auto rail = unfolded_.rails().find(index);
        if (rail == unfolded_.rails().end() || next.contains(index)) continue;
        next[index] = {};
        open.push_back(index);
      }
    };
    look(bad);
    while (!open.empty()) {
      const long index = open.back();
      open.pop_back();
      if (next.size() > most_registers) throw BoundPassed{};
      look(next[index] = unfolded_.of(unfolded_.rails().at(index).next));
    }
    for (const auto& [index, f] : next) states_.emplace_back(index, f);
  }

  /// Set comes in the first instant alone and reset never, or, `restarted`, set whenever nothing
  /// runs and reset at any time. False when an instant is reached in which `bad` holds.
  bool stays_good(bool restarted) {
    layers_.clear();
    bdd front = manager_.Bdd_one();
    for (const auto& [index, f] : states_)
      front = manager_.Bdd_and(front, literal(index, unfolded_.rails().at(index).initial));
    const bdd at_rest = manager_.Bdd_or(front, literal(unfolded_.set, false));
    bdd reached = manager_.Bdd_zero();
    while (!manager_.Bdd_is_tautology(front, 0)) {
      layers_.push_back(manager_.Bdd_and(front, restarted ? at_rest : wires(layers_.empty())));
      if (manager_.Bdds_excl(layers_.back(), bad_) == 0) return false;
      const bdd next = image(layers_.back());
      front = manager_.Bdd_and(next, manager_.Bdd_not(reached));
      reached = manager_.Bdd_or(reached, next);
    }
    return true;
  }

  /// The inputs that are One in each instant of a shortest run into the bad one.
  std::vector<std::vector<std::string>> run() const {
    std::vector<std::vector<std::string>> inputs(layers_.size());
    bdd target = bad_;
    for (size_t i = layers_.size(); i-- > 0;) {
      const bdd cube = manager_.Bdd_satisfy(manager_.Bdd_and(layers_[i], target));
      std::unordered_map<long, bool> chosen;
      manager_.for_each_literal(cube.link_type(), cube.node(),
                                [&](long index, int value) { chosen[index] = value == 1; });
      for (const auto& [index, one] : chosen)
        if (one && unfolded_.is_input(index) && index != unfolded_.set)
          inputs[i].push_back(unfolded_.input_name(index));
      std::sort(inputs[i].begin(), inputs[i].end());
      target = manager_.Bdd_one();
      for (const auto& [index, f] : states_) {
        const bool one = chosen.contains(index) && chosen[index];
        target = manager_.Bdd_and(target, one ? f : manager_.Bdd_not(f));
      }
    }
    return inputs;
  }

 private:
  bdd literal(long index, bool one) const {
    const bdd variable = manager_.Bdd_var_by_index(index);
    return one ? variable : manager_.Bdd_not(variable);
  }
  bdd wires(bool first) const {
    return manager_.Bdd_and(literal(unfolded_.set, first), literal(unfolded_.reset, false));
  }

  /// The states that follow those of `from`, under its inputs.
  bdd image(const bdd& from) {
    std::vector<bdd> next;
    for (const auto& [index, f] : states_) next.push_back(manager_.Bdd_constrain(f, from));
    of_.clear();
    return range(std::move(next), 0);
  }

  /// The values that the functions from `at` on take together.
  bdd range(std::vector<bdd> next, size_t at) {
    if (at == states_.size()) return manager_.Bdd_one();
    if (--ranges_ == 0 || unfolded_.bound_passed()) throw BoundPassed{};
    std::vector<std::pair<const bdd_node*, int>> key;
    for (size_t i = at; i < next.size(); ++i) key.emplace_back(next[i].node(), next[i].link_type());
    if (const auto done = of_.find(key); done != of_.end()) return done->second;
    const bdd f = next[at];
    bdd result = manager_.Bdd_zero();
    for (const bool one : {true, false}) {
      const bdd where = one ? f : manager_.Bdd_not(f);
      if (manager_.Bdd_is_tautology(where, 0)) continue;
      std::vector<bdd> under = next;
      if (manager_.Bdd_is_tautology(where, 1) == 0)
        for (size_t i = at + 1; i < under.size(); ++i)
          under[i] = manager_.Bdd_constrain(under[i], where);
      result = manager_.Bdd_or(result, manager_.Bdd_and(literal(states_[at].first, one),
                                                        range(std::move(under), at + 1)));
    }
    return of_[key] = result;
  }

  Unfolded& unfolded_;
  bddpp_manager& manager_;
  bdd bad_;
  std::vector<std::pair<long, bdd>> states_;  ///< index, and its next function
  std::vector<bdd> layers_;                   ///< states and inputs, instant by instant
  std::map<std::vector<std::pair<const bdd_node*, int>>, bdd> of_;
  long ranges_ = most_ranges;
};

std::string told(const std::vector<std::vector<std::string>>& run) {
  std::string text =
      "it does not settle in instant " + std::to_string(run.size()) + " of this run:";
  for (size_t i = 0; i < run.size(); ++i) {
    text += i == 0 ? " " : "; ";
    if (run[i].empty()) text += "no input";
    for (size_t k = 0; k < run[i].size(); ++k) text += (k == 0 ? "" : " ") + run[i][k];
  }
  return text;
}

constexpr const char* open_prefix = "UNSETTLED";

/// Wires of run modules that tell where those do not settle.
std::vector<Signal*> wires_of_runs(Module* module) {
  std::vector<Signal*> wires;
  for (Signal* local : module->getLocalSignalList())
    if (local->isWire() && local->getInternalName().starts_with(open_prefix))
      wires.push_back(local);
  return wires;
}

void add_wire(Module* module, const bdd& open) {
  Bddexpressionwood* wood = module->getBddWood();
  auto* wire =
      make_kept<Signal>(signal_name(open_prefix + module->getName(), module), module, wood);
  wire->setWire();
  module->addLocalSignal(wire);
  module->getCompilation()->createRails(wire, open, wood->Bdd_not(open), wire->computeStatusType(),
                                        module);
}

/// A signal that stays Bottom reads as Zero in the end, and wires are nobody's own.
CycleSolution::Hints hints_of(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  CycleSolution::Hints hints;
  const auto is_zero = [&](long index) {
    const Bddexpression* equation = wood->exp_by_index(index);
    return equation != nullptr && equation->getAbstraction() == 0 &&
           wood->Bdd_is_tautology(equation->my_bdd_exp(), 0) != 0;
  };
  for (const signal_list* list : {&module->getOutputSignalList(), &module->getLocalSignalList()})
    for (const Signal* signal : *list) {
      const std::list<long> rails = signal->getAllBddId(module, wood);
      if (signal->isWire()) hints.preferred.insert(rails.begin(), rails.end());
      for (auto rail = rails.begin(); rail != rails.end(); ++rail) {
        const bool silent = is_zero(*rail);
        if (is_zero(*++rail) && silent) hints.ones.insert(*rail);
      }
    }
  return hints;
}

/// Of each loop whose body can end where it starts, the wires that tell the ends of its copies.
void add_turns(const Statement* statement, std::vector<std::vector<Signal*>>& ends) {
  if (const auto* loop = dynamic_cast<const Loop*>(statement); loop && !loop->turns().empty()) {
    ends.emplace_back();
    for (const Statement* turn : loop->turns()) ends.back().push_back(Circuit::rtl(*turn));
  }
  for (const Statement* child : statement->children()) add_turns(child, ends);
}

class Judgement {
 public:
  explicit Judgement(Module* module)
      : module_(module),
        runs_(wires_of_runs(module)),
        hints_(hints_of(module)),
        solution_(*module->getBddWood(), hints_, most_nodes) {}

  /// "" if all is well, else how the instant is reached, as far as that is known.
  std::string way() {
    constexpr const char* too_large = "whether it settles is too much to find out";
    try {
      if (!solution_.solve()) return too_large;
      solution_.put();
      Unfolded unfolded(module_, hints_.ones);
      bddpp_manager& manager = unfolded.manager();
      const bdd open = open_states(unfolded);
      if (unfolded.bound_passed()) return too_large;
      if (manager.Bdd_is_tautology(open, 0)) return "";
      StateWalk walk(unfolded, open);
      if (!walk.stays_good(true) && !walk.stays_good(false)) return told(walk.run());
      add_wire(module_, open);
      return "";
    } catch (const BoundPassed&) {
      return too_large;
    }
  }

  /// Puts the equations back.
  void end_with(const std::string& way) {
    solution_.restore();
    if (solution_.cycles() != 0) return module_->getCompilation()->note_unsettled(way);
    Diagnostic fault;
    fault.where = place_of(module_->getSpan());
    fault.sentence =
        "a module that this one runs is started while signals of it still depend on "
        "each other in one instant";
    fault.notes.push_back({fault.where, way});
    fault.told = "ERROR in Module `" + module_->getName() + "': " + fault.sentence + "\n";
    kiva::end_with(std::move(fault));
  }

 private:
  /// Where something does not settle, or a loop goes round for ever.
  bdd open_states(Unfolded& unfolded) const {
    bddpp_manager& manager = unfolded.manager();
    Bddexpressionwood* wood = module_->getBddWood();
    bdd open = manager.Bdd_zero();
    const auto add = [&](const bdd& f) { open = manager.Bdd_or(open, f); };
    for (const bdd& unsettled : solution_.unsettled()) add(unfolded(unsettled));
    for (const Signal* wire : runs_) add(unfolded.of(wire->getBddStatusId(module_, wood)));
    if (solution_.cycles() == 0) return open;
    std::vector<std::vector<Signal*>> ends;
    add_turns(module_->getStatement(), ends);
    for (const std::vector<Signal*>& turns : ends) {
      bdd all = manager.Bdd_one();
      for (const Signal* end : turns)
        all = manager.Bdd_and(all, unfolded.of(end->getBddStatusId(module_, wood)));
      add(all);
    }
    return open;
  }

  Module* module_;
  std::vector<Signal*> runs_;
  CycleSolution::Hints hints_;
  CycleSolution solution_;
};

}  // namespace

void settle_cycles(Module* module) {
  module->getCompilation()->settle();
  if (!has_cycle(*module->getBddWood()) && wires_of_runs(module).empty()) return;
  const auto stage = [&](const char* name) {
    if (const auto& begun = stage_begun()) begun(name + module->getName());
  };
  stage("settle the cycles of ");
  for (const signal_list* list : {&module->getOutputSignalList(), &module->getLocalSignalList()})
    for (const Signal* signal : *list) join_values(signal, module, module->getBddWood());
  Judgement judgement(module);
  const std::string way = judgement.way();
  stage("compile ");
  if (!way.empty()) judgement.end_with(way);
}

}  // namespace kiva
