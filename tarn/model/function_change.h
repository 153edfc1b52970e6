#pragma once

#include "pert_exp/Bddexpression.h"

namespace kiva {

/// Replaces the right member; its dates stay, and no cycle is looked for.
inline void set_function(Bddexpression& equation, const bdd& f) {
  equation.setBddExp(f, equation.getEarlyDate(), equation.getLateDate());
}

inline void or_function(Bddexpression& equation, const bdd& f) {
  set_function(equation, equation.my_wood()->Bdd_or(equation.my_bdd_exp(), f));
}

inline void and_function(Bddexpression& equation, const bdd& f) {
  set_function(equation, equation.my_wood()->Bdd_and(equation.my_bdd_exp(), f));
}

}  // namespace kiva
