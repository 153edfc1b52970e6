#pragma once

#include <vector>

#include "base/natural.h"
#include "bdd/bddpp.h"

namespace kiva::proof {

/// A machine as diagrams: registers and inputs in an order made for walking.
struct TransitionSystem {
  struct Register {
    long now, next;  ///< indices of its two variables, one behind the other
    bool initial;
    bdd f;  ///< the next value, over `now` variables and inputs
  };
  struct Input {
    size_t position;  ///< among the machine's inputs
    long index;
  };
  bddpp_manager manager;
  std::vector<Register> registers;
  std::vector<Input> inputs;
  std::vector<bdd> roots;  ///< over `now` variables and inputs
};

/// The successors of sets of states, both over the `now` variables. The transition relation is a
/// list of conjuncts, and each variable is quantified once the last conjunct that reads it is in.
class Image {
 public:
  explicit Image(TransitionSystem& system);

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

/// How many states of some registers, by place, a set of states over the `now` variables has.
Natural count_states(TransitionSystem& system, const bdd& states,
                     const std::vector<size_t>& registers);

/// Product of the variables of those indices.
bdd product(bddpp_manager& manager, std::vector<long> indices);

}  // namespace kiva::proof
