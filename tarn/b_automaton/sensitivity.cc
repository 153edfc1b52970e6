// On which inputs an output depends in a state: cases are split until every equation of the cone is
// constant. Equations are walked from the inputs on (latest_sort), and a value once found is known
// to the equations behind it.

#include <deque>
#include <iostream>

#include "tarn/b_automaton/b_automaton.h"

namespace kiva {

std::list<bdd> b_automaton::sensibilite_entrees(const bdd& state, long index, bool with_own) const {
  bddpp_manager* manager = manager_associe();
  const auto sum = [&](const bdd& f) { return bddtoString(f, 2); };
  std::cerr << "call sensibilite_entrees()\nSENSIBILITE ENTREES pour ETAT:\n" << sum(state) << '\n';
  index_set needed = wood_->up_dependances(index, 0, index_set());
  if (with_own) needed.insert(index);
  const std::list<long> order = wood_->latest_sort();
  std::deque<bdd> work = {manager->Bdd_one()};
  std::list<bdd> result;
  while (!work.empty()) {
    const bdd c = work.front();
    work.pop_front();
    bdd known = manager->Bdd_and(c, state);
    std::cerr << "---> " << work.size() << ": " << sum(c) << '\n';
    bool open = false;
    for (long j : order) {
      if (!needed.contains(j)) continue;
      const Bddexpression& e = *wood_->exp_by_index(j);
      if (e.getAbstraction() != 0) continue;
      const bdd r = manager->Bdd_reduce(e.my_bdd_exp(), known);
      if (manager->Bdd_is_tautology(r)) {
        known = manager->Bdd_and(
            known, r == manager->Bdd_one() ? e.my_bdd_var() : manager->Bdd_not(e.my_bdd_var()));
        continue;
      }
      std::cerr << "exp bloquante:" << e.my_bddname() << "= " << sum(e.my_bdd_exp())
                << "\napres reduction: " << sum(r) << '\n';
      const bdd v = manager->Bdd_if(r);
      work.push_back(manager->Bdd_and(v, c));
      work.push_back(manager->Bdd_and(manager->Bdd_not(v), c));
      open = true;
      break;
    }
    if (!open) result.push_back(c);
  }
  std::cerr << "sensibilite terminee ...\n";
  return result;
}

std::list<bdd> b_automaton::old_sensibilite_entrees(const bdd& state) const {
  bddpp_manager* manager = manager_associe();
  const auto sum = [&](const bdd& f) { return bddtoString(f, 2); };
  const auto copy = shared_copy();
  copy->reduce_expressions(state);
  if (copy->exp_number() == 0 || copy->global_tautology()) return {manager->Bdd_one()};
  const std::list<long> order = copy->latest_sort();
  std::deque<bdd> work = {manager->Bdd_one()};
  std::list<bdd> result;
  while (!work.empty()) {
    const bdd c = work.front();
    work.pop_front();
    bdd known = c;
    std::cerr << "---> " << work.size() << ": " << sum(c) << '\n';
    bool open = false;
    for (long j : order) {
      const Bddexpression& e = *copy->exp_by_index(j);
      if (e.getAbstraction() != 0) continue;
      // c need be no cube, and a condition that Bdd_reduce takes must be one.
      const bdd r = manager->Bdd_constrain(e.my_bdd_exp(), known);
      if (manager->Bdd_is_tautology(r)) {
        known = manager->Bdd_and(
            known, r == manager->Bdd_one() ? e.my_bdd_var() : manager->Bdd_not(e.my_bdd_var()));
        continue;
      }
      std::cerr << "evaluation impossible pour: ";
      manager->Print_debug_bdd(std::cerr, r);
      std::cerr << '\n';
      bdd m = manager->Bdd_one_implicant(r);
      if (manager->Bdds_excl(m, c)) m = manager->Bdd_one_implicant(manager->Bdd_and(r, c));
      for (const bdd& half : {manager->Bdd_and(m, c), manager->Bdd_and(manager->Bdd_not(m), c)}) {
        std::cerr << "   empilement de " << sum(half) << '\n';
        work.push_back(half);
      }
      open = true;
      break;
    }
    if (open) continue;
    std::cerr << "Adding :" << sum(c) << '\n';
    result.push_back(c);
  }
  return result;
}

}  // namespace kiva
