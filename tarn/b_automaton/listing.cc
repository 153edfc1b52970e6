// An automaton for its developer.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"

namespace kiva {

std::ostream& operator<<(std::ostream& out, const b_automaton& automaton) {
  out << "state " << joined(automaton.state_vars_list(), ", ") << ";\ninputs "
      << joined(automaton.inputs_list(), ", ") << ";\noutputs "
      << joined(automaton.outputs_list(), ", ") << ";\nlocals "
      << joined(automaton.locals_list(), ", ") << ";\n\ninitial ";
  for (int k = 0; k < automaton.nb_state_vars(); ++k) {
    const int value = automaton.valeur_initiale_state_var(k);
    out << (k == 0 ? "" : " and ") << (value == 1 ? "" : "not ") << automaton.nom_state_var(k);
  }
  out << ";\n\ndefinitions\n";
  automaton.wood_associee()->Put_basic_doc(out);
  return out << "\nassertion " << automaton.bddtoString(automaton.assertion(), 1) << ";\ninvariant "
             << automaton.bddtoString(automaton.invariant(), 1) << ";\n";
}

void b_automaton::BAC_put(std::ostream& out) const {
  out << "to do !";
}

}  // namespace kiva
