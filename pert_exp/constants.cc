// Constants, put into their readers until nothing changes.
//
// The work goes in rounds. A round takes the equations that have just turned out constant, and
// reduces each of their readers once, by the product of all that it reads among them; readers that
// become constant are the next round. So each reading of a constant is worked off once, where
// passes over the whole wood would cost the length of the longest chain of constants times the
// wood. Whether an equation has readers is what was so at the start.

#include <algorithm>
#include <map>

#include "base/list.h"
#include "bdd/literal_list.h"
#include "pert_exp/wood.h"

namespace kiva {

void Bddexpressionwood::internal_global_build_dependances() {
  for (long index = 0; index < nb_var_bdd; ++index) amont_dep_table[index].clear();
  for (long index = 0; index < nb_var_bdd; ++index) {
    Bddexpression* e = exp_table[index];
    if (e == nullptr) continue;
    e->internal_build_dependances();
    enter_as_reader(index, e->vars_dependance);
  }
}

bool Bddexpressionwood::has_abstract_reader(long index) const {
  const index_set& readers = set_of_amont_dependances(index);
  return std::any_of(readers.begin(), readers.end(), [&](long reader) {
    const Bddexpression* e = slot(reader);
    return e != nullptr && e->abstraction != 0;
  });
}

std::vector<long> Bddexpressionwood::spread_constants() {
  const auto is_constant = [&](long index) {
    const Bddexpression* e = exp_table[index];
    return e != nullptr && e->abstraction == 0 && man->Bdd_is_tautology(e->bdd_exp);
  };
  std::vector<long> round, done;
  std::vector<char> met(nb_var_bdd, 0);
  const auto meet = [&](long index) {
    if (met[index] || amont_dep_table[index].empty() || !is_constant(index)) return;
    met[index] = 1;
    round.push_back(index);
  };
  for (long index = 0; index < nb_var_bdd; ++index) meet(index);

  while (!round.empty()) {
    std::sort(round.begin(), round.end());
    std::map<long, literal_list> read_by;
    for (long index : round) {
      const int value = man->Bdd_is_one_tautologic(exp_table[index]->bdd_exp);
      for (long reader : amont_dep_table[index]) {
        const Bddexpression* e = slot(reader);
        if (e != nullptr && e->abstraction == 0)
          read_by[reader].push_back(literal_code(index, value));
      }
    }
    done.insert(done.end(), round.begin(), round.end());
    round.clear();
    for (const auto& [reader, literals] : read_by) {
      bdd& f = exp_table[reader]->bdd_exp;
      f = man->Bdd_reduce(f, product_of(*man, literals));
      meet(reader);
    }
  }
  return done;
}

void Bddexpressionwood::constants_propagation(const std::list<int>& keep) {
  if (man == nullptr) return;
  const std::vector<long> done = spread_constants();
  if (done.empty()) return;
  for (long index : done) {
    if (!item_in(keep, exp_table[index]->usertype) && !has_abstract_reader(index))
      delete_expression(index);
  }
  internal_global_build_dependances();
}

void Bddexpressionwood::constants_propagation() {
  constants_propagation({});
}

int Bddexpressionwood::global_tautology() {
  constants_propagation();
  const index_set& equations = Set_of_exp();
  return std::all_of(equations.begin(), equations.end(), [&](long index) {
    return man->Bdd_is_tautology(exp_table[index]->bdd_exp) != 0;
  });
}

}  // namespace kiva
