// The text of one equation for components: C#, the context of an explicit automaton, and calls of
// actions.

#include <algorithm>
#include <ostream>
#include <sstream>

#include "pert_exp/equation_code.h"

namespace kiva {

equation_code_texts csharp_equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts = c_equation_texts(manager, array, {}, "", "");
  texts.nodes.constant = "!false";
  return texts;
}

void Bddexpression::put_csharp(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, csharp_equation_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_csharp(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_csharp(out, array);
}

void put_wren_equation(std::ostream& out, const std::string& array, long index, const bdd& f,
                       bool brackets) {
  std::ostringstream sum;
  const std::string or_text = brackets ? ") || (" : " || ";
  f.manager_ref()->Print_wren_sop(or_text, " && ", "!", "", sum, f, array, 0);
  const bool around = brackets && sum.str().find(or_text) != std::string::npos;
  out << "   " << array << '[' << index << "]= " << (around ? "(" : "") << sum.str()
      << (around ? ");\n" : ";\n");
}

void Bddexpression::put_wren(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_wren_equation(out, array, my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_wren(std::ostream& out, const std::string& array) {
  for (long index : earliest_sort()) exp_table[index]->put_wren(out, array);
}

void Bddexpression::put_ino_grafcet(std::ostream& out, const std::string& array,
                                    const std::string& prefix) {
  put_c(out, array, {}, prefix, "");
}

void Bddexpression::put_ino_grafcet(std::ostream& out, const std::string& array,
                                    const std::string& prefix, int two_sided) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  const equation_code_texts texts = c_equation_texts(manager, array, {}, prefix, "");
  std::string condition;
  if (is_copy(bdd_exp)) {
    condition = texts.read(manager->Bdd_if_index(bdd_exp));
  } else {
    manager->Print_node_code(texts.nodes, out, bdd_exp.node());
    condition = (bdd_exp.link_type() == -1 ? "!" : "") + array + "[" +
                std::to_string(bdd_exp.node()->global_id()) + "]";
  }
  out << "  if(" << condition << ")\n  {\n     " << my_bddname()
      << (two_sided != 0 ? "_true();\n  }\n  else\n  {\n     " + my_bddname() + "_false();\n  }\n"
                         : "();\n  }\n");
}

void Bddexpressionwood::Put_ino_grafcet(std::ostream& out, const std::string& array,
                                        const std::list<std::string>& outputs,
                                        const std::string& prefix, const int* two_sided) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) {
    Bddexpression& e = *exp_table[index];
    if (std::find(outputs.begin(), outputs.end(), man->Name_var_by_index(index)) == outputs.end())
      e.put_ino_grafcet(out, array, prefix);
    else
      e.put_ino_grafcet(out, array, prefix, two_sided[index]);
  }
}

}  // namespace kiva
