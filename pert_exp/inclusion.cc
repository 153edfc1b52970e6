// One wood taken into another: every equation of the other, over variables with a suffix.

#include <numeric>

#include "pert_exp/wood.h"

namespace kiva {

index_set set_reencoding(const index_set& members, const long* table) {
  std::vector<long> images;
  for (long member : members) images.push_back(table[member]);
  return index_set::from_unsorted(std::move(images));
}

void Bddexpressionwood::Include_wood_instance(Bddexpressionwood& other, const std::string& suffix) {
  if (man == nullptr || other.man == nullptr) return;
  update_bdd_vars();
  other.update_bdd_vars();
  const bool shared = man == other.man;
  // With one manager a variable that no equation of the other uses stands for itself.
  std::vector<long> corr(other.nb_var_bdd);
  std::iota(corr.begin(), corr.end(), 0);
  const long other_vars = other.nb_var_bdd;
  for (long index : other.Set_of_index_used_variables()) {
    if (index >= 0 && index < other_vars)
      corr[index] = Index_new_var_last(other.Name_var_by_index(index) + suffix);
  }
  const auto renamed = [&](const index_set& members) {
    std::vector<long> known;
    for (long member : members) {
      if (member >= 0 && member < other_vars) known.push_back(member);
    }
    return set_reencoding(index_set::from_unsorted(std::move(known)), corr.data());
  };

  const index_set equations = other.Set_of_exp();
  for (long from_index : equations) {
    const Bddexpression& from = *other.exp_table[from_index];
    const long index = corr[from_index];
    // What stood here for the variable is replaced; an equation is no instance of itself.
    const Bddexpression* old = slot(index);
    if (old == &from) continue;
    const std::string name = from.name + suffix;
    const long early = from.earliest_date, late = other.latest_date_table[from_index];
    Bddexpression* e;
    if (from.abstraction == 0) {
      const bdd f = shared ? man->Bdd_replace_vars(from.bdd_exp, corr.data())
                           : Bdd_isomorphe(man, other.man, from.bdd_exp, corr.data());
      e = new Bddexpression(name, this, man->Bdd_var_by_index(index), f, early, late,
                            from.usertype);
    } else {
      const index_set deps = renamed(from.vars_dependance);
      index_set readers;
      if (shared) readers = renamed(other.amont_dep_table[from_index]);
      e = new Bddexpression(index, this, &deps, &readers, from.exp_def, early, late);
    }
    delete old;  // before anything else can fail: nobody has it now
    e->name = name;
    e->exp_def = from.exp_def;
    e->usertype = from.usertype;
    e->w = from.w;
  }
  other.update_bdd_vars();
  nb_level = std::max(nb_level, other.nb_level);
}

}  // namespace kiva
