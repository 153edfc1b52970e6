// The walk: layers of states by their distance from the start, until one holds a state and inputs
// for which the output is 0, or nothing new is reached. A way to that state is found backwards
// through the layers.

#include "tarn/b_automaton/equivalence.h"

#include "tarn/b_automaton/image.h"

namespace kiva {

namespace {

/// An assignment under which f, not zero, holds; a variable is 0 wherever that will do. Entries of
/// other variables become 0.
void choose(bddpp_manager& manager, bdd f, std::vector<int>& values) {
  values.assign(static_cast<size_t>(manager.Nb_bdd_vars()), 0);
  while (!manager.Bdd_is_tautology(f)) {
    const bdd without = manager.Bdd_else(f);
    const bool needed = without == manager.Bdd_zero();
    values[static_cast<size_t>(manager.Bdd_if_index(f))] = needed ? 1 : 0;
    f = needed ? manager.Bdd_then(f) : without;
  }
}

class Walk {
 public:
  Walk(TransitionSystem& system, int nb_inputs)
      : system_(system), manager_(*system.manager), nb_inputs_(nb_inputs) {}

  OutputWalk run(const std::function<void(const OutputWalk&)>& progress) {
    result_.registers = static_cast<int>(system_.registers.size());
    bdd start = manager_.Bdd_one();
    for (auto reg = system_.registers.rbegin(); reg != system_.registers.rend(); ++reg) {
      const bdd variable = manager_.Bdd_var_by_index(reg->now);
      start = manager_.Bdd_and(reg->initial ? variable : manager_.Bdd_not(variable), start);
    }
    const bdd bad = manager_.Bdd_not(system_.goal);
    const Image image(system_);
    bdd reached = manager_.Bdd_zero();
    for (bdd layer = start; layer != manager_.Bdd_zero();) {
      progress(result_);
      ++result_.instants;
      layers_.push_back(layer);
      const bdd found = manager_.Bdd_and(layer, bad);
      if (found != manager_.Bdd_zero()) {
        result_.holds = false;
        go_back(found);
        break;
      }
      reached = manager_.Bdd_or(reached, layer);
      result_.states = count_states(system_, reached);
      layer = manager_.Bdd_and(image(layer), manager_.Bdd_not(reached));
    }
    return result_;
  }

 private:
  /// Fills the stimuli from the last instant to the first; `found` holds states of the last layer
  /// with inputs.
  void go_back(bdd found) {
    result_.stimuli.assign(layers_.size(), std::vector<int>(static_cast<size_t>(nb_inputs_), 0));
    std::vector<int> values;
    for (size_t instant = layers_.size(); instant-- > 0;) {
      choose(manager_, found, values);
      for (const TransitionSystem::Input& input : system_.inputs)
        result_.stimuli[instant][static_cast<size_t>(input.position)] =
            values[static_cast<size_t>(input.index)];
      if (instant == 0) return;
      found = layers_[instant - 1];
      for (const TransitionSystem::Register& reg : system_.registers)
        found = manager_.Bdd_and(
            found, values[static_cast<size_t>(reg.now)] == 1 ? reg.f : manager_.Bdd_not(reg.f));
    }
  }

  TransitionSystem& system_;
  bddpp_manager& manager_;
  int nb_inputs_;
  OutputWalk result_;
  std::vector<bdd> layers_;
};

}  // namespace

OutputWalk walk_output(b_automaton& automaton, int output,
                       const std::function<void(const OutputWalk&)>& progress) {
  TransitionSystem system(automaton, output);
  return Walk(system, automaton.nb_inputs()).run(progress);
}

}  // namespace kiva
