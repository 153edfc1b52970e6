// Combinational cycles, broken by cases on a variable.
//
// Each member i of a cycle becomes a choice on x between two new equations, i's function where x
// holds and where it does not. What the new equations read of the members they read from their own
// side, so that a cycle that only closes through both values of x is open. Each round chooses the
// variable that the members read most, among the candidates that no equation computes within the
// instant, and each variable serves once.

#include <numeric>

#include "pert_exp/wood.h"

namespace kiva {

namespace {

/// `name`, behind which "_" is put until no variable bears it.
std::string free_name(const Bddexpressionwood& wood, std::string name) {
  while (wood.Index_var_by_name(name) >= 0) name += '_';
  return name;
}

}  // namespace

void Bddexpression::Shannon_expand(long x, long& then_index, long& else_index) {
  then_index = else_index = -3;
  bddpp_manager* const manager = my_bdd_manager();
  if (manager == nullptr || !bdd_exp.initialised() || x < 0 || x >= manager->Nb_bdd_vars()) return;
  const bdd variable = manager->Bdd_var_by_index(x);
  const std::string x_name = manager->Name_var_by_index(x);
  const auto cofactor = [&](const std::string& suffix, const bdd& literal) {
    const bdd var = pw->New_var_last(free_name(*pw, name + suffix));
    new Bddexpression(pw, var, manager->Bdd_cube_reduce(bdd_exp, literal), 0, 0);
    return var;
  };
  const bdd then_var = cofactor("_" + x_name, variable);
  const bdd else_var = cofactor("_not" + x_name, manager->Bdd_not(variable));
  setBddExp(manager->Bdd_ite(variable, then_var, else_var), 0, 0);
  then_index = manager->Index_var_by_bdd(then_var);
  else_index = manager->Index_var_by_bdd(else_var);
}

long Bddexpressionwood::most_read(const std::list<long>& loops, const index_set& open) const {
  std::vector<long> count(nb_var_bdd, 0);
  for (long index : loops) {
    const Bddexpression* e = slot(index);
    if (e == nullptr) continue;
    for (long dep : e->vars_dependance) {
      if (in_tables(dep)) ++count[dep];
    }
  }
  long chosen = -1;
  for (long index : open) {
    if (!in_tables(index) || count[index] == 0) continue;
    const Bddexpression* e = exp_table[index];
    if (e != nullptr && !e->vars_dependance.empty()) continue;
    if (chosen < 0 || count[index] > count[chosen]) chosen = index;
  }
  return chosen;
}

index_set Bddexpressionwood::loop_breaking(const index_set& candidates, int& ok) {
  update_bdd_vars();
  // Dates only rise: those of a cycle that is gone would stand in the way of the next dating.
  const auto loops_now = [&] {
    for (Bddexpression* e : exp_table) {
      if (e != nullptr) e->earliest_date = 0;
    }
    nb_level = 0;
    return loop_detection();
  };
  index_set open = candidates, added;
  ok = 1;
  for (std::list<long> loops = loops_now(); !loops.empty(); loops = loops_now()) {
    const long chosen = most_read(loops, open);
    if (chosen < 0) {
      ok = 0;
      break;
    }
    open.erase(chosen);

    struct pair {
      long then_index, else_index;
    };
    std::vector<pair> made;
    std::vector<std::pair<long, pair>> side_of;
    for (long index : loops) {
      pair sides{-3, -3};
      if (slot(index) == nullptr) continue;
      exp_table[index]->Shannon_expand(chosen, sides.then_index, sides.else_index);
      if (sides.then_index < 0) continue;
      side_of.push_back({index, sides});
      made.push_back(sides);
      added.insert(sides.then_index);
      added.insert(sides.else_index);
    }
    std::vector<long> then_table(nb_var_bdd);
    std::iota(then_table.begin(), then_table.end(), 0);
    std::vector<long> else_table = then_table;
    for (const auto& [index, sides] : side_of) {
      then_table[index] = sides.then_index;
      else_table[index] = sides.else_index;
    }
    const auto redirect = [&](long index, const std::vector<long>& table) {
      Bddexpression& e = *exp_table[index];
      e.setBddExp(man->Bdd_replace_vars(e.bdd_exp, table.data()), 0, 0);
    };
    for (const pair& sides : made) {
      redirect(sides.then_index, then_table);
      redirect(sides.else_index, else_table);
    }
  }
  return added;
}

}  // namespace kiva
