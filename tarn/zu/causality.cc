// Which states can be reached is asked only where a cycle does not settle in all of them, and only
// of the registers on which that hangs.

#include "tarn/zu/causality.h"

#include <string>
#include <vector>

#include "bdd/work_guard.h"
#include "pert_exp/cycle_solution.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/progress.h"
#include "tarn/zu/reached_states.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/whole_values.h"

namespace kiva {

namespace {

constexpr long most_nodes = 2'000'000;  ///< made by each of the two steps for one module

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
        solution_(*module->getBddWood(), hints_) {}

  /// To whoever does not want to wait.
  void announce() const {
    if (solution_.cycles() == 0 || !cycle_met()) return;
    cycle_met()(module_->getCompilation()->open_cycle(solution_.members()));
  }

  /// "" if all is well, else how the instant is reached, as far as that is known.
  std::string way() {
    constexpr const char* too_large = "whether it settles is too much to find out";
    try {
      bddpp_manager& manager = *module_->getBddWood()->my_bdd_manager();
      if (const NodeLimit limit(manager, most_nodes); !solution_.solve()) return too_large;
      solution_.put();
      const NodeLimit limit(manager, most_nodes);
      Unfolded unfolded(module_, hints_.ones);
      const bdd open = open_states(unfolded);
      if (manager.Bdd_is_tautology(open, 0)) return "";
      ReachedStates walk(unfolded, open);
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
  judgement.announce();
  const std::string way = judgement.way();
  stage("compile ");
  if (!way.empty()) judgement.end_with(way);
}

}  // namespace kiva
