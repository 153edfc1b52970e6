#pragma once

#include <vector>

#include "tarn/b_automaton/transition_system.h"

namespace kiva {

/// The successors of sets of states, both over the `now` variables. The transition relation is a
/// list of conjuncts, and each variable is quantified once the last conjunct that reads it is in.
class Image {
 public:
  explicit Image(const TransitionSystem& system);

  bdd operator()(const bdd& states) const;

 private:
  struct Conjunct {
    bdd relation;
    bdd quantified;  ///< product of the variables that nothing behind it reads
  };

  bddpp_manager& manager_;
  bdd early_;  ///< product of the variables that no conjunct reads
  std::vector<Conjunct> conjuncts_;
  std::vector<long> next_to_now_;
};

/// Number of states in a set over the `now` variables.
double count_states(const TransitionSystem& system, const bdd& states);

}  // namespace kiva
