#pragma once

// The wood as a graph, in its two directions. `next(v)` are the indices that follow v, as the
// tables hold them: a walk skips those that are not in the tables or that it may not `enter`.

#include "base/graph_walk.h"
#include "pert_exp/wood.h"

namespace kiva {

inline const index_set no_indices;

/// From a variable to the equations that read it. Early dates run along these edges.
struct Bddexpressionwood::Readers {
  const Bddexpressionwood& wood;

  const index_set& next(long v) const { return wood.set_of_amont_dependances(v); }
  bool enters(long v) const { return wood.slot(v) != nullptr; }
};

/// From an equation to the variables that it reads. Late dates run along these edges, and end at
/// the variables without equation.
struct Bddexpressionwood::Dependences {
  const Bddexpressionwood& wood;

  const index_set& next(long v) const {
    const Bddexpression* e = wood.slot(v);
    return e == nullptr ? no_indices : e->set_of_var_dependances();
  }
  bool enters(long v) const { return wood.in_tables(v); }
};

}  // namespace kiva
