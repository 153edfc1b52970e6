// The text of one equation, for the targets in which a function is a list of nodes and an
// assignment.

#include "pert_exp/equation_code.h"

#include <algorithm>
#include <ostream>

namespace kiva {

bool is_copy(const bdd& f) {
  return f.initialised() && f.link_type() == 1 && f.manager_ref()->Bdd_is_var(f) != 0;
}

void put_equation_code(std::ostream& out, const equation_code_texts& texts, long index,
                       const bdd& f) {
  bddpp_manager* manager = f.manager_ref();
  if (is_copy(f)) {
    out << texts.left(index) << texts.assign << texts.read(manager->Bdd_if_index(f)) << texts.end
        << '\n';
    return;
  }
  manager->Print_node_code(texts.nodes, out, f.node());
  out << texts.left(index) << texts.assign << (f.link_type() == -1 ? texts.not_text : "")
      << texts.nodes.table << texts.nodes.entry_open
      << (texts.nodes.number ? texts.nodes.number(f.node()) : f.node()->global_id())
      << texts.nodes.entry_close << texts.end << '\n';
}

void put_blif_equation(std::ostream& out, const equation_code_texts& texts, long index,
                       const bdd& f) {
  bddpp_manager* manager = f.manager_ref();
  if (is_copy(f)) {
    out << ".names " << texts.read(manager->Bdd_if_index(f)) << ' ' << texts.left(index)
        << "\n1 1\n";
    return;
  }
  manager->Print_node_code_BLIF(texts.nodes, out, f.node());
  out << ".names " << texts.nodes.table << '_'
      << (texts.nodes.number ? texts.nodes.number(f.node()) : f.node()->global_id()) << ' '
      << texts.left(index) << (f.link_type() == -1 ? "\n0 1\n" : "\n1 1\n");
}

equation_code_texts c_equation_texts(bddpp_manager* manager, const std::string& array,
                                     const std::list<std::string>& outputs,
                                     const std::string& prefix, const std::string& suffix) {
  equation_code_texts texts;
  texts.nodes.table = array;
  texts.nodes.or_text = " || ";
  texts.nodes.and_text = " && ";
  texts.nodes.not_open = "!";
  texts.nodes.constant = "!0";
  texts.nodes.var_prefix = prefix;
  texts.nodes.var_suffix = suffix;
  texts.read = [=](long index) { return prefix + manager->Name_var_by_index(index) + suffix; };
  texts.left = [=, read = texts.read](long index) {
    const bool is_output = std::find(outputs.begin(), outputs.end(),
                                     manager->Name_var_by_index(index)) != outputs.end();
    return (is_output ? "  *" : "  ") + read(index);
  };
  return texts;
}

void Bddexpression::put_c(std::ostream& out, const std::string& array,
                          const std::list<std::string>& outputs, const std::string& prefix,
                          const std::string& suffix) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, c_equation_texts(my_bdd_manager(), array, outputs, prefix, suffix),
                    my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_c(std::ostream& out, const std::string& array,
                              const std::list<std::string>& outputs) {
  Put_c(out, array, outputs, "", "");
}

void Bddexpressionwood::Put_c(std::ostream& out, const std::string& array,
                              const std::list<std::string>& outputs, const std::string& prefix,
                              const std::string& suffix) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_c(out, array, outputs, prefix, suffix);
}

void Bddexpression::put_blif(std::ostream& out, const std::string& prefix) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  equation_code_texts texts;
  texts.nodes.table = prefix;
  texts.read = texts.left = [manager](long index) { return manager->Name_var_by_index(index); };
  put_blif_equation(out, texts, my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix) {
  Put_blif(out, prefix, nullptr);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix, const int* marks) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort())
    if (marks == nullptr || marks[index] != 0) exp_table[index]->put_blif(out, prefix);
}

}  // namespace kiva
