// The text of one equation for people: definitions with or without nodes, sums of products, a
// formula of LaTeX, the diagram as a tree.

#include <ostream>

#include "pert_exp/equation_code.h"

namespace kiva {

equation_code_texts doc_equation_texts(bddpp_manager* manager, const std::string& prefix) {
  equation_code_texts texts;
  texts.nodes.table = prefix;
  texts.nodes.entry_open = "_";
  texts.nodes.entry_close = "";
  texts.nodes.or_text = " or ";
  texts.nodes.and_text = " and ";
  texts.nodes.not_open = "!";
  texts.nodes.constant = "true";
  texts.read = texts.left = [manager](long index) { return manager->Name_var_by_index(index); };
  return texts;
}

void put_doc_equation(std::ostream& out, const equation_code_texts& texts, long index,
                      const bdd& f) {
  if (f.manager_ref()->Bdd_is_tautology(f) == 0) {
    put_equation_code(out, texts, index, f);
    return;
  }
  out << texts.left(index) << texts.assign << (f.link_type() == 1 ? "true" : "false") << texts.end
      << '\n';
}

void put_undefined_doc(std::ostream& out, const std::string& name) {
  out << name << "   not defined!\n" << name << "= ???;\n";
}

void Bddexpression::put_doc(std::ostream& out, const std::string& prefix) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised())
    put_undefined_doc(out, my_bddname().empty() ? name : my_bddname());
  else
    put_doc_equation(out, doc_equation_texts(manager, prefix), my_index_var(), bdd_exp);
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

void Bddexpression::put_latex(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << '$' << my_bddname() << " = ";
  my_bdd_manager()->Print_sop(" + ", ".", "\\overline{", "}", out, bdd_exp, 1);
  out << "$\n";
}

void Bddexpression::put_tree(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) {
    put_undefined_doc(out, my_bddname().empty() ? name : my_bddname());
    return;
  }
  out << my_bddname() << " =\n";
  my_bdd_manager()->Print_bdd_structure(out, bdd_exp);
}

void Bddexpressionwood::Put_doc(std::ostream& out, const std::string& prefix) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_doc(out, prefix);
}

void Bddexpressionwood::Put_basic_doc(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_basic_doc(out);
}

void Bddexpressionwood::Put_latex(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_latex(out);
}

}  // namespace kiva
