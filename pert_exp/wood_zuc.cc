// The equations of a wood as lines of a compiled module.

#include <ostream>

#include "pert_exp/Bddexpression.h"

namespace kiva {

namespace {

/// Number of the variable in the file; -1 for none. Variables made after the map have none.
long number_of(const long* map, long variables, long index) {
  return index >= 0 && index < variables ? map[index] : -1;
}

}  // namespace

void Bddexpressionwood::Put_zuc(std::ostream& os, long* map, int debug) {
  std::list<bdd> roots;
  for (long index : Set_of_exp()) {
    const Bddexpression* e = exp_table[index];
    if (e != nullptr && number_of(map, nb_var_bdd, index) != -1 && e->my_bdd_exp().initialised())
      roots.push_back(e->my_bdd_exp());
  }
  man->Print_bdds_list_by_nodes_list(os, roots, map);
  os << "expressions:\n";
  for (long index : Set_of_exp()) {
    Bddexpression* e = exp_table[index];
    if (e == nullptr) continue;
    const bool written = number_of(map, nb_var_bdd, index) != -1;
    if (debug != 0)
      os << (written ? "// expression " : "// no generate expression about:") << index << ":"
         << e->my_name() << (written ? "\n" : "\n\n");
    if (!written) continue;
    e->put_zuc(os, map);
    os << '\n';
  }
}

void Bddexpression::put_zuc(std::ostream& os, long* map) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised()) return;
  put_zuc_2_0_4(os, map);
  os << ",(";
  for (long dep : vars_dependance) os << map[dep] << ' ';
  os << ")";
}

void Bddexpression::put_zuc_0_3_0(std::ostream& os, long* map) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised()) return;
  os << earliest_date << ' ' << getLateDate() << '\n';
  if (bdd_exp.initialised()) my_bdd_manager()->ZUC_print(os, map, bdd_var, bdd_exp, 1);
}

void Bddexpression::put_zuc_2_0_4(std::ostream& os, long* map) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised()) return;
  os << earliest_date << ' ' << getLateDate() << ' ' << map[my_index_var()] << ":";
  if (bdd_exp.initialised()) {
    os << bdd_exp.node()->local_id() << "," << bdd_exp.link_type();
  } else {
    os << "-3,-3";
  }
}

}  // namespace kiva
