// The text of one equation in Esterel: a signal is emitted under a condition.

#include <ostream>

#include "pert_exp/equation_code.h"

namespace kiva {

void put_esterel_emission(std::ostream& out, const std::string& signal,
                          const std::string& condition) {
  out << "  present [" << condition << "] then\n    emit " << signal << "\n  end present\n";
}

void Bddexpression::put_esterel(std::ostream& out) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_esterel_emission(out, my_bddname(),
                       my_bdd_manager()->Print_sop_to_ESTEREL_String(bdd_exp, 0));
}

void Bddexpressionwood::Put_esterel(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_esterel(out);
}

}  // namespace kiva
