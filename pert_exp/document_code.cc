// The text of one equation for people: a sum of products, the diagram as a tree.

#include <ostream>

#include "pert_exp/equation_code.h"

namespace kiva {

void put_undefined_doc(std::ostream& out, const std::string& name) {
  out << name << "   not defined!\n" << name << "= ???;\n";
}

void Bddexpression::put_basic_doc(std::ostream& out) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) {
    put_undefined_doc(out, my_bddname().empty() ? name : my_bddname());
    return;
  }
  out << my_bddname() << " = ";
  if (manager->Bdd_is_tautology(bdd_exp) != 0)
    out << (bdd_exp.link_type() == 1 ? "true" : "false");
  else
    manager->Print_sop(" or ", " and ", "not ", "", out, bdd_exp, 1);
  out << ";\n";
}

void Bddexpression::put_tree(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) {
    put_undefined_doc(out, my_bddname().empty() ? name : my_bddname());
    return;
  }
  out << my_bddname() << " =\n";
  my_bdd_manager()->Print_bdd_structure(out, bdd_exp);
}

void Bddexpressionwood::Put_basic_doc(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_basic_doc(out);
}

}  // namespace kiva
