#pragma once

#include <functional>
#include <vector>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

/// What a walk has found.
struct [[nodiscard]] OutputWalk {
  bool holds = true;  ///< the output is 1 in every reachable instant, whatever the inputs
  long instants = 0;  ///< layers of states, each reached one instant later than the one before
  double states = 0;  ///< reached, of the registers that are left
  int registers = 0;  ///< left to walk over
  /// A shortest way to an instant where the output is 0: the inputs of each instant, by position.
  std::vector<std::vector<int>> stimuli;
};

/// Looks, breadth first, for an instant in which output `output` is 0. The automaton must be
/// sortable, its initial values 0 or 1. `progress` is called with what is known so far, before each
/// instant is looked at.
OutputWalk walk_output(b_automaton& automaton, int output,
                       const std::function<void(const OutputWalk&)>& progress);

}  // namespace kiva
