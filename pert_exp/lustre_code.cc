// The text of one equation in Lustre.

#include <ostream>

#include "pert_exp/equation_code.h"

namespace kiva {

equation_code_texts lustre_equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts;
  texts.nodes.table = array;
  texts.nodes.or_text = " or ";
  texts.nodes.and_text = " and ";
  texts.nodes.not_open = "not ";
  texts.nodes.constant = "not false";
  texts.read = [=](long index) { return manager->Name_var_by_index(index); };
  texts.left = [=](long index) { return "  " + manager->Name_var_by_index(index); };
  texts.not_text = "not ";
  return texts;
}

equation_code_texts lustre_arrayless_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts = lustre_equation_texts(manager, array);
  texts.nodes.entry_open = "_";
  texts.nodes.entry_close = "";
  return texts;
}

void Bddexpression::put_lustre(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, lustre_equation_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpression::put_lustre_arrayless(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, lustre_arrayless_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpression::put_lustre_compatibilite(std::ostream& out) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << "  " << my_bddname() << "= ";
  if (manager->Bdd_is_tautology(bdd_exp)) {
    out << (manager->Bdd_is_one_tautologic(bdd_exp) ? "true" : "false");
  } else {
    manager->Print_sop(" or ", " and ", "not ", "", out, bdd_exp, 0);
  }
  out << ";\n";
}

void Bddexpressionwood::Put_lustre(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_lustre(out, array);
}

void Bddexpressionwood::Put_lustre_arrayless(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_lustre_arrayless(out, array);
}

}  // namespace kiva
