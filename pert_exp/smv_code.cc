// The text of one equation in SMV: a definition.

#include "pert_exp/equation_code.h"

namespace kiva {

equation_code_texts smv_equation_texts(bddpp_manager* manager) {
  equation_code_texts texts;
  texts.nodes = nusmv_node_texts("node");
  texts.read = [=](long index) { return manager->Name_var_by_index(index); };
  texts.left = [=](long index) { return "   " + manager->Name_var_by_index(index); };
  texts.assign = " := ";
  return texts;
}

}  // namespace kiva
