// Equations as signal assignments of SystemC, each a sum of products.

#include <ostream>

#include "pert_exp/Bddexpression.h"

namespace kiva {

void Bddexpression::put_systemc(std::ostream& out) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << "    " << manager->Name_var_by_index(my_index_var()) << " <= ";
  manager->Print_sop(" || ", " && ", "! ", "", out, bdd_exp, 1);
  out << ";\n";
}

void Bddexpressionwood::Put_systemc(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_systemc(out);
}

}  // namespace kiva
