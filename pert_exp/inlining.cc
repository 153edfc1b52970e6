// Equations that are put into their readers and go.
//
// An equation can go when something reads it, it reads something, not itself, and all that read it
// are functions: an abstract reader reads the variable as such. After each step the readers of
// every variable are those that the functions tell, so that the next step sees the wood as it is.

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

Bddexpressionwood::Dependence_change Bddexpressionwood::exchange_function(Bddexpression& e,
                                                                          const bdd& f) {
  e.bdd_exp = f;
  const index_set before = std::exchange(e.vars_dependance, man->set_of_index_depend_on(f));
  const index_set& after = e.vars_dependance;
  Dependence_change change;
  std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                      std::back_inserter(change.lost));
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                      std::back_inserter(change.gained));
  return change;
}

void Bddexpressionwood::change_function(Bddexpression& e, long index, const bdd& f) {
  const auto [lost, gained] = exchange_function(e, f);
  for (long old : lost) {
    if (in_tables(old)) amont_dep_table[old].erase(index);
  }
  for (long now : gained) {
    if (in_tables(now)) add_reader(now, index);
  }
}

void Bddexpressionwood::inline_into_readers(long index) {
  const bdd variable = man->Bdd_var_by_index(index);
  const bdd function = exp_table[index]->bdd_exp;
  const index_set readers = amont_dep_table[index];
  for (long reader : readers) {
    Bddexpression* e = slot(reader);
    if (e == nullptr) {
      amont_dep_table[index].erase(reader);
    } else if (e->abstraction == 0) {
      change_function(*e, reader, man->Bdd_compose(e->bdd_exp, variable, function));
      // A reader of old, whose function had lost the variable before.
      amont_dep_table[index].erase(reader);
    }
  }
}

bool Bddexpressionwood::can_be_inlined(long index) const {
  const Bddexpression* e = slot(index);
  if (e == nullptr || e->abstraction != 0 || e->vars_dependance.empty()) return false;
  const index_set& readers = amont_dep_table[index];
  return !readers.empty() && !readers.contains(index) && !e->vars_dependance.contains(index);
}

void Bddexpressionwood::suppress_local(long index) {
  refuse_self_dependence(index);
  if (!can_be_inlined(index) || has_abstract_reader(index)) return;
  leave_as_reader(index, exp_table[index]->vars_dependance);
  inline_into_readers(index);
  delete_expression(index);
}

void Bddexpressionwood::suppress_local_that_shrinks(long index) {
  // No function of so many variables is large enough to matter.
  constexpr size_t most_variables = 12, most_readers = 8;
  if (!can_be_inlined(index) || has_abstract_reader(index)) return;
  const Bddexpression& e = *exp_table[index];
  const index_set& readers = amont_dep_table[index];
  if (readers.size() > most_readers) return;
  const bdd variable = man->Bdd_var_by_index(index);
  long before = man->Bdd_size(e.bdd_exp), after = 0;
  for (long reader : readers) {
    const Bddexpression* by = slot(reader);
    if (by == nullptr) continue;
    if (by->vars_dependance.size() + e.vars_dependance.size() > most_variables) return;
    before += man->Bdd_size(by->bdd_exp);
    after += man->Bdd_size(man->Bdd_compose(by->bdd_exp, variable, e.bdd_exp));
  }
  if (after <= before) suppress_local(index);
}

void Bddexpressionwood::useless_local(long index) {
  refuse_self_dependence(index);
  if (can_be_inlined(index)) inline_into_readers(index);
}

void Bddexpressionwood::drop_stale_readers() {
  for (long index = 0; index < nb_var_bdd; ++index) {
    amont_dep_table[index].erase_if([&](long reader) {
      const Bddexpression* e = slot(reader);
      return e == nullptr || !e->vars_dependance.contains(index);
    });
  }
}

void Bddexpressionwood::suppress_locals(const std::list<int>& keep) {
  for (long index = 0; index < nb_var_bdd; ++index) {
    if (can_be_inlined(index) && !item_in(keep, exp_table[index]->usertype)) suppress_local(index);
  }
  constants_propagation();
  drop_stale_readers();
}

void Bddexpressionwood::suppress_locals() {
  suppress_locals({});
}

}  // namespace kiva
