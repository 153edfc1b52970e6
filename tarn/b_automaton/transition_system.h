#pragma once

#include <memory>
#include <vector>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

/// What a walk over the states of a boolean automaton works on: the cone of one output, its
/// registers and inputs in an order made for walking, and all functions over these alone.
struct TransitionSystem {
  struct Register {
    int position;    ///< among the automaton's state variables
    long now, next;  ///< indices of its two variables, one behind the other
    bool initial;
    bdd f;  ///< the next value, over `now` variables and inputs
  };
  struct Input {
    int position;  ///< among the automaton's inputs
    long index;
  };

  /// The automaton must be sortable, its initial values 0 or 1. Registers that have equal or
  /// opposite values, or one value, in every reachable instant are merged, as far as induction over
  /// one instant shows it.
  TransitionSystem(b_automaton& automaton, int output);

  std::unique_ptr<bddpp_manager> manager = std::make_unique<bddpp_manager>();
  std::vector<Register> registers;
  std::vector<Input> inputs;
  bdd goal;  ///< the output

 private:
  /// Drops the registers and inputs that the goal does not depend on.
  void keep_cone();
};

/// For each register a function that has its value in every reachable instant: a constant, or the
/// variable of a register, perhaps negated (register_classes.cc). What the registers' functions
/// read is replaced accordingly.
std::vector<bdd> merge_registers(TransitionSystem& system);

}  // namespace kiva
