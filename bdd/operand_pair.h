#pragma once

#include "bdd/internals.h"

namespace kiva {

/// The task of an operation on two functions.
struct operand_pair {
  bdd_edge f, g;

  // Of an operation that is odd in both.
  operand_pair regular() const { return {f.regular(), g.regular()}; }
  bool complemented() const { return f.complemented() != g.complemented(); }
};

/// Both operands' cofactors by the upper of their top variables, whose places in the order are i
/// and j; a constant's is below all.
inline void split_pair(const bdd_internals& diagram, operand_pair t, int i, int j,
                       operand_pair& then_task, operand_pair& else_task) {
  then_task = else_task = t;
  if (i <= j) {
    then_task.f = diagram.then_of(t.f);
    else_task.f = diagram.else_of(t.f);
  }
  if (j <= i) {
    then_task.g = diagram.then_of(t.g);
    else_task.g = diagram.else_of(t.g);
  }
}

}  // namespace kiva
