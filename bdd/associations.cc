// Associations: a function that stands for a variable. An entry holds a node, taken without
// complement; a variable without association is associated with itself.

#include <iostream>

#include "base/process_end.h"
#include "bdd/bddpp.h"

namespace kiva {

void bddpp_manager::Bdd_assoc_bdd_to_var(const bdd& f, const bdd& v) {
  if (Bdd_is_tautology(v) && f == v) return;
  if (!Bdd_is_var(v)) {
    std::cerr << "error in bddpp_manager::Bdd_assoc_bdd_to_var():\n"
                 "     second parameter is not a var !\n"
                 "replace from: "
              << v << " by expression: " << f << '\n';
    end_process();
  }
  const auto association = [this](long id) { return bdd(this, 1, internal_assoc_var_table[id]); };
  const long v_id = v.node()->var_id();

  bdd value = f;
  for (long id : set_of_id_depend_on(f)) {
    const bdd variable = Bdd_var_by_id(id);
    if (!Bdd_depends_on(association(id), variable))
      value = Bdd_compose(value, variable, association(id));
  }
  internal_assoc_var_table[v_id] = value.node();
  if (Bdd_depends_on(value, v)) return;
  for (long id = 0; id < internal_bdd_vars; ++id) {
    if (id != v_id && Bdd_depends_on(association(id), v))
      internal_assoc_var_table[id] = Bdd_compose(association(id), v, value).node();
  }
}

bdd bddpp_manager::Bdd_follow_assoc(const bdd& f, int* loop) {
  *loop = -1;
  const auto association = [this](long id) { return bdd(this, 1, internal_assoc_var_table[id]); };
  if (Bdd_is_var(f)) {
    bdd value = association(f.node()->var_id());
    if (Bdd_depends_on(value, f)) *loop = static_cast<int>(Bdd_if_index(f));
    return value;
  }
  bdd result = f;
  for (long id : set_of_id_depend_on(f)) {
    const bdd variable = Bdd_var_by_id(id);
    if (Bdd_depends_on(association(id), variable)) {
      *loop = static_cast<int>(idtoindex(id));
    } else {
      result = Bdd_compose(result, variable, association(id));
    }
  }
  return result;
}

}  // namespace kiva
