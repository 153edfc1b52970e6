// A wood under an assumption: all functions reduced, isolated equations dropped, and the two
// searches for an assumption that makes a wood simpler.

#include <iostream>

#include "pert_exp/wood.h"

namespace kiva {

template <class Change>
void Bddexpressionwood::change_functions(Change change) {
  update_bdd_vars();
  for (long index = 0; index < nb_var_bdd; ++index) {
    Bddexpression* e = exp_table[index];
    if (e == nullptr || !e->bdd_exp.initialised()) continue;
    const bdd changed = change(e->bdd_exp);
    if (changed != e->bdd_exp) change_function(*e, index, changed);
  }
}

void Bddexpressionwood::reduce_expressions(const bdd& c, const std::list<int>& keep) {
  change_functions([&](const bdd& f) { return man->Bdd_reduce(f, c); });
  constants_propagation(keep);
}

void Bddexpressionwood::reduce_expressions(const bdd& c) {
  reduce_expressions(c, {});
}

void Bddexpressionwood::constrain_expressions(const bdd& c, const std::list<int>& keep) {
  change_functions([&](const bdd& f) { return man->Bdd_constrain(f, c); });
  constants_propagation(keep);
}

void Bddexpressionwood::reduce_expressions_when_var_forgotten_by_exist_op(long index) {
  const bdd variable = man->Bdd_var_by_index(index);
  if (!man->Bdd_is_var(variable)) return;
  change_functions([&](const bdd& f) { return man->Bdd_exist(f, variable); });
  constants_propagation();
}

void Bddexpressionwood::reduce_expressions_when_var_forgotten_by_forall_op(long index) {
  const bdd variable = man->Bdd_var_by_index(index);
  if (!man->Bdd_is_var(variable)) return;
  change_functions([&](const bdd& f) { return man->Bdd_forall(f, variable); });
  constants_propagation();
}

void Bddexpressionwood::clean(const index_set& keep) {
  const index_set equations = Set_of_exp();
  for (long index : equations) {
    const Bddexpression* e = slot(index);
    if (e == nullptr) {
      std::cerr << "Warning in Bddexpressionwood::clean():\n  Expression for id var " << index
                << " should be existed ...\n";
    } else if (amont_dep_table[index].empty() && e->vars_dependance.empty() &&
               !keep.contains(index)) {
      delete_expression(index);
    }
  }
}

void Bddexpressionwood::clean(const std::list<long>& keep) {
  clean(index_set::from_unsorted({keep.begin(), keep.end()}));
}

bdd Bddexpressionwood::reduce_proposition_by_assertion() {
  for (long index : latest_sort()) {
    const Bddexpression& e = *exp_table[index];
    if (e.abstraction == 0 && !man->Bdd_is_tautology(e.bdd_exp))
      return man->Bdd_one_implicant(e.bdd_exp);
  }
  return man->Bdd_one();
}

long Bddexpressionwood::reduce_proposition_by_variable() const {
  const Bddexpression* first = nullptr;
  for (long index = 0; index < nb_var_bdd; ++index) {
    const Bddexpression* e = exp_table[index];
    if (e == nullptr || amont_dep_table[index].empty() || e->vars_dependance.empty()) continue;
    if (e->earliest_date < 0 || e->earliest_date > nb_level) continue;
    if (first == nullptr || e->earliest_date < first->earliest_date) first = e;
  }
  return first == nullptr ? -1 : first->vars_dependance.front();
}

}  // namespace kiva
