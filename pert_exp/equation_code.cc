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

}  // namespace kiva
